#include "platform/codec/WebpCodec.h"

#include <webp/decode.h>
#include <webp/encode.h>

#include <algorithm>

#include "platform/codec/DecodeLimits.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/rt/Log.h"

namespace orv::codec {

using gfx::Bitmap;
using gfx::BitmapOps;
using gfx::BitmapPtr;
using gfx::PixelFormat;

namespace {

// Straight-alpha R, G, B, A rows, which is what libwebp wants to encode.
std::vector<uint8_t> straightPixels(const Bitmap& bitmap) {
    const auto rgba = bitmap.converted(PixelFormat::RGBA8888Premultiplied);
    const size_t rowBytes = 4 * size_t(rgba->width());
    std::vector<uint8_t> out(rowBytes * rgba->height());
    for (int y = 0; y < rgba->height(); ++y) {
        uint8_t* row = out.data() + rowBytes * y;
        std::copy_n(rgba->row(y), rowBytes, row);
        BitmapOps::unpremultiplyRow(row, rgba->width());
    }
    return out;
}

struct PictureGuard {
    WebPPicture* picture;
    ~PictureGuard() { WebPPictureFree(picture); }
};

struct WriterGuard {
    WebPMemoryWriter* writer;
    ~WriterGuard() { WebPMemoryWriterClear(writer); }
};

}  // namespace

bool WebpCodec::readSize(const uint8_t* data, size_t size, int* width, int* height) {
    int w = 0, h = 0;
    if (!data || !WebPGetInfo(data, size, &w, &h)) return false;
    if (width) *width = w;
    if (height) *height = h;
    return true;
}

BitmapPtr WebpCodec::decode(const uint8_t* data, size_t size) {
    WebPDecoderConfig config;
    if (!data || size == 0 || !WebPInitDecoderConfig(&config)) {
        rt::Log::warnf("webp: no data to decode");
        return nullptr;
    }
    VP8StatusCode status = WebPGetFeatures(data, size, &config.input);
    if (status != VP8_STATUS_OK) {
        rt::Log::warnf("webp: unreadable header (%zu bytes, status %d)", size, int(status));
        return nullptr;
    }
    const int width = config.input.width;
    const int height = config.input.height;
    if (!acceptablePictureSize(width, height)) {
        rt::Log::warnf("webp: refusing a %dx%d picture", width, height);
        return nullptr;
    }
    if (config.input.has_animation) {
        rt::Log::warnf("webp: animated WebP is not supported");
        return nullptr;
    }
    // libwebp allocates the output only once the stream's own headers hold up, so a few bytes
    // claiming a huge picture cost nothing; the one copy out of its buffer is cheap beside
    // decoding.
    config.output.colorspace = MODE_rgbA;  // premultiplied, as our bitmaps are
    status = WebPDecode(data, size, &config);
    const WebPRGBABuffer& rgba = config.output.u.RGBA;
    BitmapPtr bitmap;
    if (status == VP8_STATUS_OK && rgba.rgba && rgba.stride == 4 * width) {
        bitmap = std::make_shared<Bitmap>(width, height, PixelFormat::RGBA8888Premultiplied, 0,
                                          std::vector<uint8_t>(rgba.rgba, rgba.rgba + rgba.size));
    }
    WebPFreeDecBuffer(&config.output);
    if (!bitmap) {
        rt::Log::warnf("webp: cannot decode (%zu bytes, status %d)", size, int(status));
        return nullptr;
    }
    return bitmap;
}

std::vector<uint8_t> WebpCodec::encode(const Bitmap& bitmap, double quality) {
    WebPConfig config;
    WebPPicture picture;
    if (!WebPConfigInit(&config) || !WebPPictureInit(&picture)) return {};
    if (!(quality >= 0)) quality = 0;  // NaN too
    if (quality >= 1) {
        config.lossless = 1;
        config.exact = 1;  // keep colour under transparent pixels as it is
    } else {
        config.quality = static_cast<float>(quality * 100);
    }
    if (bitmap.width() <= 0 || bitmap.height() <= 0 || bitmap.width() > WEBP_MAX_DIMENSION ||
        bitmap.height() > WEBP_MAX_DIMENSION) {
        rt::Log::warnf("webp: cannot encode a %dx%d bitmap", bitmap.width(), bitmap.height());
        return {};
    }
    picture.use_argb = config.lossless;
    picture.width = bitmap.width();
    picture.height = bitmap.height();
    PictureGuard pictureGuard{&picture};
    const std::vector<uint8_t> pixels = straightPixels(bitmap);
    if (!WebPPictureImportRGBA(&picture, pixels.data(), 4 * bitmap.width())) {
        rt::Log::warnf("webp: out of memory importing %dx%d pixels", bitmap.width(),
                       bitmap.height());
        return {};
    }
    WebPMemoryWriter writer;
    WebPMemoryWriterInit(&writer);
    WriterGuard writerGuard{&writer};
    picture.writer = WebPMemoryWrite;
    picture.custom_ptr = &writer;
    if (!WebPEncode(&config, &picture)) {
        rt::Log::warnf("webp: encoding failed (error %d)", int(picture.error_code));
        return {};
    }
    return std::vector<uint8_t>(writer.mem, writer.mem + writer.size);
}

}  // namespace orv::codec
