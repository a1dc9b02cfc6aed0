#pragma once
// A picture as the views and the library see it: a bitmap (or none, for the zero-size
// placeholder) with a scale, an orientation tag and a size in points that honours both.

#include <memory>
#include <string>

#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

namespace orv::gfx {

// The EXIF-like orientation tag of a picture, with the platform's numbering.
enum class ImageOrientation {
    Up = 0,
    Down = 1,
    Left = 2,
    Right = 3,
    UpMirrored = 4,
    DownMirrored = 5,
    LeftMirrored = 6,
    RightMirrored = 7,
};

class Image : public rt::Object {
    ORV_DECLARE_CLASS(Image)
  public:
    static std::shared_ptr<Image> withBitmap(BitmapPtr bitmap, double scale = 1,
                                             ImageOrientation orientation = ImageOrientation::Up);
    // The zero-size placeholder: no bitmap, size {0, 0}.
    static std::shared_ptr<Image> empty();

    const BitmapPtr& bitmap() const { return bitmap_; }
    double scale() const { return scale_; }
    ImageOrientation orientation() const { return orientation_; }
    // Pixel size divided by the scale, width and height exchanged for the left/right tags.
    Size size() const;

    // Set once the pixels were turned into the form the renderer draws without conversion, so
    // that nobody decodes them again.
    bool isDecodedForDisplay() const { return decodedForDisplay_; }
    void setDecodedForDisplay(bool decoded) { decodedForDisplay_ = decoded; }

    // Gives an instance made through its class (a subclass of Image) its picture.
    void initWithBitmap(BitmapPtr bitmap, double scale, ImageOrientation orientation);

  protected:
    BitmapPtr bitmap_;
    double scale_ = 1;
    ImageOrientation orientation_ = ImageOrientation::Up;
    bool decodedForDisplay_ = false;
};

using ImagePtr = std::shared_ptr<Image>;

// True for the tags that turn the picture a quarter (its width and height trade places).
bool isQuarterTurn(ImageOrientation orientation);

}  // namespace orv::gfx
