#include "platform/gfx/Image.h"

namespace orv::gfx {

ORV_DEFINE_CLASS(Image, rt::Object)

std::shared_ptr<Image> Image::withBitmap(BitmapPtr bitmap, double scale,
                                         ImageOrientation orientation) {
    auto image = rt::make<Image>();
    image->initWithBitmap(std::move(bitmap), scale, orientation);
    return image;
}

void Image::initWithBitmap(BitmapPtr bitmap, double scale, ImageOrientation orientation) {
    bitmap_ = std::move(bitmap);
    scale_ = scale > 0 ? scale : 1;
    orientation_ = orientation;
}

std::shared_ptr<Image> Image::empty() {
    return rt::make<Image>();
}

bool isQuarterTurn(ImageOrientation o) {
    return o == ImageOrientation::Left || o == ImageOrientation::Right ||
           o == ImageOrientation::LeftMirrored || o == ImageOrientation::RightMirrored;
}

Size Image::size() const {
    if (!bitmap_) return {};
    const double w = bitmap_->width() / scale_, h = bitmap_->height() / scale_;
    return isQuarterTurn(orientation_) ? Size{h, w} : Size{w, h};
}

}  // namespace orv::gfx
