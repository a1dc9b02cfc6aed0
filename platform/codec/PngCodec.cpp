#include "platform/codec/PngCodec.h"

#include <png.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>

#include "platform/codec/DecodeLimits.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/rt/Log.h"

namespace orv::codec {

using gfx::Bitmap;
using gfx::BitmapOps;
using gfx::BitmapPtr;
using gfx::PixelFormat;

namespace {

// libpng reports fatal errors by longjmp; the message is kept here for the log line. Only plain
// C data lives in the frames a longjmp crosses.
struct PngErrors {
    char message[256] = "";
};

void onError(png_structp png, png_const_charp message) {
    auto* errors = static_cast<PngErrors*>(png_get_error_ptr(png));
    std::snprintf(errors->message, sizeof errors->message, "%s", message);
    png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp message) {
    rt::Log::debugf("png: %s", message);
}

// ---- decoding

struct MemoryReader {
    const uint8_t* data;
    size_t size;
    size_t offset;
};

void readFromMemory(png_structp png, png_bytep out, png_size_t length) {
    auto* reader = static_cast<MemoryReader*>(png_get_io_ptr(png));
    if (length > reader->size - reader->offset) png_error(png, "data ends early");
    std::memcpy(out, reader->data + reader->offset, length);
    reader->offset += length;
}

struct Decoded {
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    std::vector<uint8_t> pixels;  // R, G, B, A straight
    std::vector<png_bytep> rows;
};

// Asks libpng for 8-bit R, G, B, A rows whatever the file holds.
void requestRGBA8(png_structp png, png_infop info) {
    const int colorType = png_get_color_type(png, info);
    const int bitDepth = png_get_bit_depth(png, info);
    if (colorType == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
    if (colorType == PNG_COLOR_TYPE_GRAY && bitDepth < 8) png_set_expand_gray_1_2_4_to_8(png);
    const bool hasTransparency = png_get_valid(png, info, PNG_INFO_tRNS) != 0;
    if (hasTransparency) png_set_tRNS_to_alpha(png);
    if (bitDepth == 16) png_set_scale_16(png);
    if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA) {
        png_set_gray_to_rgb(png);
    }
    if (!(colorType & PNG_COLOR_MASK_ALPHA) && !hasTransparency) {
        png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
    }
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
}

// Everything that can longjmp happens in here; `out` is owned by the caller so that nothing with
// a destructor is skipped on the way back.
bool decodeInto(png_structp png, png_infop info, Decoded& out) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_user_limits(png, kMaxPictureSide, kMaxPictureSide);
    png_read_info(png, info);
    out.width = png_get_image_width(png, info);
    out.height = png_get_image_height(png, info);
    if (!acceptablePictureSize(out.width, out.height)) png_error(png, "picture too large");
    requestRGBA8(png, info);
    const size_t rowBytes = png_get_rowbytes(png, info);
    if (rowBytes != 4 * size_t{out.width}) png_error(png, "unexpected row layout");
    out.pixels.resize(rowBytes * out.height);
    out.rows.resize(out.height);
    for (png_uint_32 y = 0; y < out.height; ++y) out.rows[y] = out.pixels.data() + rowBytes * y;
    png_read_image(png, out.rows.data());
    png_read_end(png, nullptr);
    return true;
}

// ---- encoding

void writeToVector(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}

void flushNothing(png_structp) {}

bool isOpaque(const Bitmap& rgba) {
    for (int y = 0; y < rgba.height(); ++y) {
        const uint8_t* p = rgba.row(y);
        for (int x = 0; x < rgba.width(); ++x) {
            if (p[4 * x + 3] != 255) return false;
        }
    }
    return true;
}

// Straight-alpha R, G, B, A rows, or R, G, B rows for an opaque picture (a third smaller).
std::vector<uint8_t> straightRows(const Bitmap& rgba, bool opaque) {
    const int channels = opaque ? 3 : 4;
    const size_t rowBytes = size_t(rgba.width()) * channels;
    std::vector<uint8_t> out(rowBytes * rgba.height());
    for (int y = 0; y < rgba.height(); ++y) {
        const uint8_t* src = rgba.row(y);
        uint8_t* dst = out.data() + rowBytes * y;
        if (!opaque) {
            std::memcpy(dst, src, rowBytes);
            BitmapOps::unpremultiplyRow(dst, rgba.width());
            continue;
        }
        for (int x = 0; x < rgba.width(); ++x, src += 4, dst += 3) std::memcpy(dst, src, 3);
    }
    return out;
}

bool encodeInto(png_structp png, png_infop info, int width, int height, bool opaque,
                std::vector<png_bytep>& rows, std::vector<uint8_t>& out) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_write_fn(png, &out, writeToVector, flushNothing);
    png_set_IHDR(png, info, width, height, 8, opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    // Our PNGs are temporary (brush history, screenshots), so speed matters more than size: on
    // a photo, the fastest level with the left-neighbour filter writes in a third of the time of
    // level 3 with every filter tried, for a tenth more bytes.
    png_set_compression_level(png, 1);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_write_info(png, info);
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    return true;
}

}  // namespace

bool PngCodec::hasSignature(const uint8_t* data, size_t size) {
    return data && size >= 8 && png_sig_cmp(data, 0, 8) == 0;
}

std::vector<uint8_t> PngCodec::encode(const Bitmap& bitmap) {
    if (bitmap.width() <= 0 || bitmap.height() <= 0) {
        rt::Log::warnf("png: nothing to encode in a %dx%d bitmap", bitmap.width(), bitmap.height());
        return {};
    }
    const auto rgba = bitmap.converted(PixelFormat::RGBA8888Premultiplied);
    const bool opaque = isOpaque(*rgba);
    std::vector<uint8_t> pixels = straightRows(*rgba, opaque);
    const size_t rowBytes = size_t(rgba->width()) * (opaque ? 3 : 4);
    std::vector<png_bytep> rows(rgba->height());
    for (int y = 0; y < rgba->height(); ++y) rows[y] = pixels.data() + rowBytes * y;

    PngErrors errors;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &errors, onError, onWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    std::vector<uint8_t> out;
    const bool ok = info && encodeInto(png, info, rgba->width(), rgba->height(), opaque, rows, out);
    png_destroy_write_struct(&png, &info);
    if (!ok) {
        rt::Log::warnf("png: encoding failed: %s", errors.message);
        return {};
    }
    return out;
}

bool PngCodec::writeFile(const Bitmap& bitmap, const std::string& path) {
    const std::vector<uint8_t> bytes = encode(bitmap);
    if (bytes.empty()) return false;
    std::string temp = path + ".XXXXXX";
    const int fd = ::mkstemp(temp.data());
    if (fd < 0) {
        rt::Log::warnf("png: cannot create a file beside %s: %s", path.c_str(),
                       std::strerror(errno));
        return false;
    }
    size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + written, bytes.size() - written);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        written += static_cast<size_t>(n);
    }
    // mkstemp makes the file private; a picture file is as readable as any other.
    bool ok = written == bytes.size() && ::fchmod(fd, 0644) == 0;
    if (::close(fd) != 0) ok = false;
    ok = ok && std::rename(temp.c_str(), path.c_str()) == 0;
    if (!ok) {
        rt::Log::warnf("png: cannot write %s: %s", path.c_str(), std::strerror(errno));
        std::remove(temp.c_str());
    }
    return ok;
}

BitmapPtr PngCodec::decode(const uint8_t* data, size_t size) {
    if (!hasSignature(data, size)) {
        rt::Log::warnf("png: not PNG data (%zu bytes)", size);
        return nullptr;
    }
    PngErrors errors;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &errors, onError, onWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    MemoryReader reader{data, size, 0};
    Decoded decoded;
    bool ok = false;
    if (info) {
        png_set_read_fn(png, &reader, readFromMemory);
        ok = decodeInto(png, info, decoded);
    }
    png_destroy_read_struct(&png, &info, nullptr);
    if (!ok) {
        rt::Log::warnf("png: cannot decode (%zu bytes): %s", size, errors.message);
        return nullptr;
    }
    for (png_uint_32 y = 0; y < decoded.height; ++y) {
        BitmapOps::premultiplyRow(decoded.rows[y], static_cast<int>(decoded.width));
    }
    return std::make_shared<Bitmap>(
        static_cast<int>(decoded.width), static_cast<int>(decoded.height),
        PixelFormat::RGBA8888Premultiplied, 0, std::move(decoded.pixels));
}

BitmapPtr PngCodec::readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        rt::Log::warnf("png: cannot open %s", path.c_str());
        return nullptr;
    }
    const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in),
                                     std::istreambuf_iterator<char>()};
    return decode(bytes.data(), bytes.size());
}

}  // namespace orv::codec
