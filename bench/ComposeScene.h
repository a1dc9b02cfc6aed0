#pragma once
// The sticker composition the compose benchmarks time: ten stickers of the local package at
// fixed places and turns on the 12 MP photo (some reaching over its edges), and a water mark of
// a picture and a text at the bottom right. The inputs go to a folder once, so that the peer
// tools read the very same files:
//   sticker-NN.png   the sticker pictures as the package ships them
//   mark.png         the water mark's picture
//   mark-text.png    the water mark's text as our library draws it (the peers cannot lay out
//                    text the same way, so they stamp this picture instead)
//   layout.txt       per sticker: file, centre x, centre y, drawn width, drawn height, degrees
//                    clockwise, in photo pixels
//   marks.txt        per mark picture: file, left, top, in photo pixels, where ours stamps it

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvviews/widgets/sticker/OrvStickerFactory.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"

class OrvWaterMarkOption;

namespace orv::bench {

class ComposeScene {
  public:
    struct Placement {
        std::string file;
        double centerX = 0, centerY = 0, width = 0, height = 0, degrees = 0;
    };

    static constexpr const char* kMarkText = "OrvViews 演示";

    // Writes the inputs into `dir` (made when missing); the paths written, empty on failure.
    static std::vector<std::string> writeInputs(const std::string& dir);
    // The scene of a folder writeInputs filled; nothing when a file is missing or unreadable.
    static std::optional<ComposeScene> read(const std::string& dir);

    const std::vector<Placement>& placements() const { return placements_; }
    // New results on every call, because composing empties each sticker's picture.
    OrvStickerFactory::Results stickerResults(gfx::Size photoSize) const;
    // The water mark with the scene's picture (none: the text alone).
    static std::shared_ptr<OrvWaterMarkOption> waterMarkOption(const gfx::ImagePtr& picture);
    const gfx::ImagePtr& markPicture() const { return markPicture_; }

  private:
    std::vector<Placement> placements_;
    std::vector<gfx::ImagePtr> pictures_;
    gfx::ImagePtr markPicture_;
};

}  // namespace orv::bench
