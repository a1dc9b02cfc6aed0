#pragma once
// Lays sticker results on a full-size photo: each sticker's picture, then its texts, in list
// order, at the place and turn the screen showed. Stateless; safe on any thread.

#include <memory>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvStickerText.h"
#include "orvviews/widgets/sticker/OrvStickerResult.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/gfx/ImageContext.h"

class OrvStickerFactory {
  public:
    using Results = std::vector<std::shared_ptr<OrvStickerResult>>;

    // The photo with the stickers drawn on it; the very same image when there is nothing to
    // draw. Each result's sticker picture is emptied once drawn.
    static gfx::ImagePtr megerStickers(const Results& stickers, const gfx::ImagePtr& image);

    static void appendLayout(const std::shared_ptr<OrvStickerResult>& result, gfx::Size size,
                             gfx::ImageContext& context);
    static void appendImageLayout(const std::shared_ptr<OrvStickerResult>& result, gfx::Size size,
                                  gfx::ImageContext& context, gfx::Size laySize);
    static void appendTextLayout(const std::shared_ptr<OrvStickerResult>& result, gfx::Size size,
                                 gfx::ImageContext& context, gfx::Size laySize);
    // `degree` is in radians.
    static void appenTextLayout(const std::shared_ptr<OrvStickerText>& text,
                                const gfx::Rect& parentRect, gfx::ImageContext& context,
                                double fontScale, double degree);
};
