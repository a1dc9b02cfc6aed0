#include "platform/gfx/ImageContext.h"

#include <cmath>

namespace orv::gfx {

namespace {

double usableScale(double scale) {
    return scale > 0 && std::isfinite(scale) ? scale : 1;
}

// Pixels for a length in points, rounded up; the tolerance keeps 100 × 0.3 × 10 from
// becoming 301 pixels through rounding noise.
int pixelExtent(double points, double scale) {
    const double pixels = std::ceil(points * scale - 1e-9);
    return pixels >= 1 && pixels < (1 << 30) ? static_cast<int>(pixels) : 0;
}

}  // namespace

ImageContext::ImageContext(Size size, bool opaque, double scale)
    : BitmapContext(pixelExtent(size.width, usableScale(scale)),
                    pixelExtent(size.height, usableScale(scale))),
      size_(size),
      scale_(usableScale(scale)) {
    // Points, y down from the top left.
    setBaseTransform(AffineTransform::translation(0, height()).scaled(scale_, -scale_));
    if (opaque) {
        saveGState();
        setBlendMode(BlendMode::Copy);
        setFillColor(Color::black());
        fillRect({0, 0, width() / scale_, height() / scale_});
        restoreGState();
    }
}

ImagePtr ImageContext::image() const {
    return Image::withBitmap(makeImage(), scale_);
}

ImagePtr ImageContext::endImage() {
    return Image::withBitmap(takeBitmap(), scale_);
}

}  // namespace orv::gfx
