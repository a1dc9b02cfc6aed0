#include "frameworks/strand/ORPFPImage.h"

#include "platform/gfx/BitmapOps.h"

ORV_DEFINE_CLASS(ORPFPImage, rt::Object)

std::shared_ptr<ORPFPImage> ORPFPImage::initWithUIImage(const gfx::ImagePtr& image) {
    if (!image || !image->bitmap()) return withBitmap(nullptr, image ? image->scale() : 1);
    gfx::BitmapPtr bitmap = image->bitmap();
    if (image->orientation() != gfx::ImageOrientation::Up)
        bitmap = gfx::BitmapOps::oriented(*bitmap, image->orientation());
    return withBitmap(std::move(bitmap), image->scale());
}

std::shared_ptr<ORPFPImage> ORPFPImage::withBitmap(gfx::BitmapPtr bitmap, double scale) {
    // The filters read tight R, G, B, A premultiplied rows; anything else is copied into that.
    if (bitmap && (bitmap->format() != gfx::PixelFormat::RGBA8888Premultiplied ||
                   bitmap->rowBytes() != 4 * static_cast<size_t>(bitmap->width())))
        bitmap = bitmap->converted(gfx::PixelFormat::RGBA8888Premultiplied);
    auto out = rt::make<ORPFPImage>();
    out->bitmap_ = std::move(bitmap);
    out->scale_ = scale > 0 ? scale : 1;
    return out;
}

gfx::ImagePtr ORPFPImage::getUIImage() const {
    return bitmap_ ? gfx::Image::withBitmap(bitmap_, scale_) : nullptr;
}

unsigned long ORPFPImage::rotationModeWithImageOrientation(gfx::ImageOrientation orientation) {
    using O = gfx::ImageOrientation;
    switch (orientation) {
        case O::Up:
            return 0;
        case O::Right:
            return 1;
        case O::Down:
            return 2;
        case O::Left:
            return 3;
        case O::UpMirrored:
            return 4;
        case O::RightMirrored:
            return 5;
        case O::DownMirrored:
            return 6;
        case O::LeftMirrored:
            return 7;
    }
    return 0;
}
