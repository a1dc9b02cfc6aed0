#pragma once
// The frames of an animated picture side by side in one PNG, each with its duration under it.

#include <string>

#include "frameworks/core/OrvKit.h"
#include "orvviews/widgets/image/OrvGifImage.h"

namespace orvdemo {

class GifFrameSheet {
  public:
    GifFrameSheet() = delete;
    // Writes the sheet to `path`; false when there are no frames or it could not be written.
    static bool write(OrvGifImage& gif, const std::string& path);
};

}  // namespace orvdemo
