#include "platform/gfx/Bitmap.h"

#include <cstring>

#include "platform/gfx/BitmapOps.h"
#include "platform/rt/Exception.h"

namespace orv::gfx {

namespace {

size_t tightRowBytes(int width) {
    return 4 * static_cast<size_t>(width > 0 ? width : 0);
}

size_t checkedRowBytes(int width, size_t rowBytes) {
    const size_t tight = tightRowBytes(width);
    if (rowBytes == 0) return tight;
    if (rowBytes < tight) throw rt::Exception("Bitmap: row bytes smaller than the width needs");
    return rowBytes;
}

bool isRedFirst(PixelFormat f) {
    return f == PixelFormat::RGBA8888Premultiplied;
}

// Copies one row while swapping red and blue and/or forcing alpha to opaque.
void convertRow(const uint8_t* src, uint8_t* dst, int width, bool swapRB, bool opaque) {
    if (swapRB) return BitmapOps::swapRedBlueRow(src, dst, width, opaque);
    for (int x = 0; x < width; ++x, src += 4, dst += 4) {
        dst[0] = src[0];
        dst[1] = src[1];
        dst[2] = src[2];
        dst[3] = opaque ? 255 : src[3];
    }
}

}  // namespace

int bytesPerPixel(PixelFormat) {
    return 4;
}

Bitmap::Bitmap(int width, int height, PixelFormat format, size_t rowBytes)
    : width_(width > 0 ? width : 0),
      height_(height > 0 ? height : 0),
      format_(format),
      rowBytes_(checkedRowBytes(width_, rowBytes)),
      pixels_(rowBytes_ * static_cast<size_t>(height_), 0) {}

Bitmap::Bitmap(int width, int height, PixelFormat format, size_t rowBytes,
               std::vector<uint8_t> pixels)
    : width_(width > 0 ? width : 0),
      height_(height > 0 ? height : 0),
      format_(format),
      rowBytes_(checkedRowBytes(width_, rowBytes)),
      pixels_(std::move(pixels)) {
    if (pixels_.size() < rowBytes_ * static_cast<size_t>(height_)) {
        throw rt::Exception("Bitmap: fewer pixel bytes than row bytes × height");
    }
}

std::shared_ptr<Bitmap> Bitmap::converted(PixelFormat format) const {
    auto out = std::make_shared<Bitmap>(width_, height_, format);
    const size_t tight = tightRowBytes(width_);
    if (format == format_) {
        for (int y = 0; y < height_; ++y) std::memcpy(out->mutableRow(y), row(y), tight);
        return out;
    }
    // Red and blue trade places between the R-first and B-first layouts; premultiplied colour
    // bytes carry over as they are into the opaque layout (the picture as over black).
    const bool swapRB = isRedFirst(format_) != isRedFirst(format);
    const bool opaque = format == PixelFormat::BGRX8888 || format_ == PixelFormat::BGRX8888;
    for (int y = 0; y < height_; ++y)
        convertRow(row(y), out->mutableRow(y), width_, swapRB, opaque);
    return out;
}

}  // namespace orv::gfx
