#pragma once
// A picture going through the pipe: R, G, B, A premultiplied pixels, orientation applied.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class ORPFPImage : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPImage)
  public:
    // The image's pixels upright (its orientation tag applied); no pixels for an image without
    // a bitmap. The scale is kept for getUIImage.
    static std::shared_ptr<ORPFPImage> initWithUIImage(const gfx::ImagePtr& image);
    static std::shared_ptr<ORPFPImage> withBitmap(gfx::BitmapPtr bitmap, double scale = 1);

    // The pipe's rotation for a picture with this tag: quarter turns clockwise (0 to 3), plus 4
    // when mirrored.
    static unsigned long rotationModeWithImageOrientation(gfx::ImageOrientation orientation);

    const gfx::BitmapPtr& bitmap() const { return bitmap_; }
    double scale() const { return scale_; }
    // The pixels as an image of the original scale, upright; null without pixels.
    gfx::ImagePtr getUIImage() const;

  private:
    gfx::BitmapPtr bitmap_;
    double scale_ = 1;
};
