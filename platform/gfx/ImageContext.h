#pragma once
// The image context views and composition draw pictures in (UIGraphicsBeginImageContext...):
// a bitmap context whose user space is y down in points, at a scale. Its pixels are
// size × scale, rounded up, R, G, B, A premultiplied, transparent at the start (or opaque
// black when asked opaque).

#include <memory>

#include "platform/gfx/BitmapContext.h"
#include "platform/gfx/Image.h"

namespace orv::gfx {

class ImageContext : public BitmapContext {
  public:
    // A scale of 0 or less means the main screen's scale is not known at this layer, so
    // callers pass it; 1 is used then.
    ImageContext(Size size, bool opaque = false, double scale = 1);

    Size size() const { return size_; }
    double scale() const { return scale_; }

    // UIGraphicsGetImageFromCurrentImageContext: the pixels now, as an image of this scale.
    ImagePtr image() const;
    // The same without a copy: the pixels move into the image and the context is left empty,
    // so nothing may be drawn afterwards (it would draw nothing). For the last picture of a big
    // composition.
    ImagePtr endImage();

  private:
    Size size_;
    double scale_;
};

}  // namespace orv::gfx
