#include "orvviews/widgets/image/OrvKitImageCoder.h"

#include <vector>

#include "platform/gfx/BitmapContext.h"

namespace {

bool hasAlpha(const gfx::Bitmap& bitmap) {
    return bitmap.format() != gfx::PixelFormat::BGRX8888;
}

gfx::BitmapPtr drawnCopy(const gfx::Bitmap& image) {
    const auto format =
        hasAlpha(image) ? gfx::PixelFormat::BGRA8888Premultiplied : gfx::PixelFormat::BGRX8888;
    gfx::BitmapContext context(image.width(), image.height(), format);
    if (!context.data()) return nullptr;
    context.drawImage({0, 0, double(image.width()), double(image.height())}, image);
    return context.makeImage();
}

gfx::BitmapPtr privateCopy(const gfx::Bitmap& image) {
    if (image.rowBytes() == 0) return nullptr;
    std::vector<uint8_t> pixels(image.data(), image.data() + image.byteCount());
    return std::make_shared<gfx::Bitmap>(image.width(), image.height(), image.format(),
                                         image.rowBytes(), std::move(pixels));
}

}  // namespace

const OrvColorSpace* orvelCGColorSpaceGetDeviceRGB() {
    static const OrvColorSpace deviceRGB{"DeviceRGB"};
    return &deviceRGB;
}

gfx::BitmapPtr orvelCGImageCreateDecodedCopy(const gfx::BitmapPtr& image, bool decodeForDisplay) {
    if (!image || image->width() == 0 || image->height() == 0) return nullptr;
    return decodeForDisplay ? drawnCopy(*image) : privateCopy(*image);
}

gfx::ImagePtr orvelImageByDecoded(const gfx::ImagePtr& image) {
    if (!image || orvel_isDecodedForDisplay(*image) || !image->bitmap()) return image;
    auto decoded = orvelCGImageCreateDecodedCopy(image->bitmap(), true);
    if (!decoded) return image;
    auto result = rt::cast<gfx::Image>(image->getClass()->instantiate());
    if (result) {
        result->initWithBitmap(std::move(decoded), image->scale(), image->orientation());
    } else {
        result = image;
    }
    setOrvel_isDecodedForDisplay(*result, true);
    return result;
}

bool orvel_isDecodedForDisplay(const gfx::Image& image) {
    return image.isDecodedForDisplay();
}

void setOrvel_isDecodedForDisplay(gfx::Image& image, bool decoded) {
    image.setDecodedForDisplay(decoded);
}
