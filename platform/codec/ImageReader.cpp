#include "platform/codec/ImageReader.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/codec/JpegCodec.h"
#include "platform/codec/PngCodec.h"
#include "platform/codec/WebpCodec.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/rt/Log.h"

namespace orv::codec {

using gfx::BitmapPtr;

namespace {

// No photo we handle comes near this; a larger file is a mistake, not a picture.
constexpr long kMaxFileBytes = 1L << 30;

// The bitmap brought down so that its long side is maxLongSide, keeping the aspect ratio.
BitmapPtr fitted(BitmapPtr bitmap, int maxLongSide) {
    const int longSide = std::max(bitmap->width(), bitmap->height());
    if (maxLongSide <= 0 || longSide <= maxLongSide) return bitmap;
    const double scale = double(maxLongSide) / longSide;
    const auto side = [&](int n) {
        return n == longSide ? maxLongSide : std::max(1, int(std::lround(n * scale)));
    };
    return gfx::BitmapOps::resized(*bitmap, side(bitmap->width()), side(bitmap->height()));
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

std::optional<DecodedImage> ImageReader::decode(const uint8_t* data, size_t size, int maxLongSide) {
    DecodedImage image;
    image.type = imageTypeOf(data, size);
    switch (image.type) {
        case ImageType::JPEG:
            image.metadata = ImageMetadata::fromJpeg(data, size);
            image.orientation =
                ImageMetadata::orientationFromExif(image.metadata.exifOrientation());
            image.bitmap = JpegCodec::decode(data, size, maxLongSide);
            break;
        case ImageType::PNG:
            image.bitmap = PngCodec::decode(data, size);
            break;
        case ImageType::WebP:
            image.bitmap = WebpCodec::decode(data, size);
            break;
        default:
            rt::Log::warnf("image: unsupported image type %s (%zu bytes)",
                           imageTypeName(image.type), size);
            return std::nullopt;
    }
    if (!image.bitmap) return std::nullopt;  // the codec has said why
    image.bitmap = fitted(std::move(image.bitmap), maxLongSide);
    if (!image.bitmap) return std::nullopt;
    return image;
}

std::optional<DecodedImage> ImageReader::readFile(const std::string& path, int maxLongSide) {
    const auto bytes = readAll(path);
    if (!bytes) return std::nullopt;
    return decode(bytes->data(), bytes->size(), maxLongSide);
}

std::optional<std::vector<uint8_t>> ImageReader::readAll(const std::string& path) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        rt::Log::warnf("image: cannot open %s: %s", path.c_str(), std::strerror(errno));
        return std::nullopt;
    }
    long length = -1;
    if (std::fseek(file.get(), 0, SEEK_END) == 0) length = std::ftell(file.get());
    if (length < 0 || length > kMaxFileBytes || std::fseek(file.get(), 0, SEEK_SET) != 0) {
        rt::Log::warnf("image: cannot read %s (%ld bytes)", path.c_str(), length);
        return std::nullopt;
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(length));
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
        rt::Log::warnf("image: short read of %s", path.c_str());
        return std::nullopt;
    }
    return bytes;
}

}  // namespace orv::codec
