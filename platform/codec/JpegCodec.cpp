#include "platform/codec/JpegCodec.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <string_view>

#include "platform/codec/DecodeLimits.h"
#include "platform/codec/JpegSegments.h"
#include "platform/rt/Log.h"

namespace orv::codec {

using gfx::Bitmap;
using gfx::BitmapPtr;
using gfx::PixelFormat;

namespace {

// A segment's 16-bit length counts its own two bytes; an ICC chunk also carries a 14-byte header.
constexpr size_t kMaxSegmentPayload = 65533;
constexpr auto& kIccHeader = JpegSegments::kIccHeader;
constexpr size_t kMaxIccChunk = kMaxSegmentPayload - sizeof kIccHeader - 2;

struct HandleDeleter {
    void operator()(void* handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, HandleDeleter>;

struct Header {
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colorspace = 0;
};

// The smallest reduction whose long side still reaches minLongSide; 1/1 when none does (or
// when no reduction is asked for). Enlarging factors are never chosen.
tjscalingfactor pickScale(int width, int height, int minLongSide) {
    tjscalingfactor best{1, 1};
    const int longSide = std::max(width, height);
    if (minLongSide <= 0 || minLongSide >= longSide) return best;
    int count = 0;
    const tjscalingfactor* factors = tjGetScalingFactors(&count);
    for (int i = 0; factors && i < count; ++i) {
        const tjscalingfactor f = factors[i];
        if (f.num >= f.denom) continue;
        const int scaled = TJSCALED(longSide, f);
        if (scaled >= minLongSide && scaled < TJSCALED(longSide, best)) best = f;
    }
    return best;
}

// TurboJPEG reports recoverable problems as warnings, with a filled-in picture. Those about
// headers and markers leave every pixel intact, and files that carry them (stray bytes before a
// marker are common) are photos like any other. Those about the data itself (a bad code, data
// that ends early) leave a grey or garbled remainder, which we do not pass off as the photo.
bool isHarmlessWarning(tjhandle handle) {
    static constexpr std::string_view kHarmless[] = {
        "extraneous bytes before marker", "unknown JFIF revision", "Unknown Adobe color transform",
        "bad ICC marker", "Invalid SOS parameters for sequential"};
    if (tjGetErrorCode(handle) != TJERR_WARNING) return false;
    const std::string_view message = tjGetErrorStr2(handle);
    return std::any_of(std::begin(kHarmless), std::end(kHarmless), [&](std::string_view h) {
        return message.find(h) != std::string_view::npos;
    });
}

bool readHeader(tjhandle handle, const uint8_t* data, size_t size, Header* header) {
    const int result =
        tjDecompressHeader3(handle, data, static_cast<unsigned long>(size), &header->width,
                            &header->height, &header->subsampling, &header->colorspace);
    return result == 0 || isHarmlessWarning(handle);
}

// Decodes into `bitmap` (sized to the scaled picture). The first warning stops the decoder, so
// that a file cut short (or a few bytes claiming a huge picture) fails at once instead of being
// filled in to its full size; a file whose warning is harmless is decoded again, to the end.
// TurboJPEG keeps only the first warning, so that second pass cannot tell whether the data also
// ends early: the caller has made sure that the end marker is there.
bool decompressInto(tjhandle handle, const uint8_t* data, size_t size, Bitmap& bitmap,
                    int pixelFormat, int flags) {
    const auto decompress = [&](int extraFlags) {
        return tjDecompress2(handle, data, static_cast<unsigned long>(size), bitmap.mutableData(),
                             bitmap.width(), static_cast<int>(bitmap.rowBytes()), bitmap.height(),
                             pixelFormat, flags | extraFlags);
    };
    if (decompress(TJFLAG_STOPONWARNING) == 0) return true;
    if (!isHarmlessWarning(handle)) {
        rt::Log::warnf("jpeg: cannot decode (%zu bytes): %s", size, tjGetErrorStr2(handle));
        return false;
    }
    rt::Log::debugf("jpeg: decoding despite: %s", tjGetErrorStr2(handle));
    if (decompress(0) == 0 || isHarmlessWarning(handle)) return true;
    rt::Log::warnf("jpeg: cannot decode (%zu bytes): %s", size, tjGetErrorStr2(handle));
    return false;
}

// Four-channel JPEGs come out as inverted C, M, Y, K (the convention of the files that carry
// them); over white paper with no colour profile, each channel is c × k.
void cmykToRgba(uint8_t* pixels, size_t count) {
    for (size_t i = 0; i < count; ++i, pixels += 4) {
        const unsigned k = pixels[3];
        for (int c = 0; c < 3; ++c) pixels[c] = static_cast<uint8_t>((pixels[c] * k + 127) / 255);
        pixels[3] = 255;
    }
}

int tjPixelFormat(PixelFormat format) {
    switch (format) {
        case PixelFormat::RGBA8888Premultiplied:
            return TJPF_RGBA;
        case PixelFormat::BGRA8888Premultiplied:
            return TJPF_BGRA;
        case PixelFormat::BGRX8888:
            return TJPF_BGRX;
    }
    return TJPF_RGBA;
}

int tjQuality(double quality) {
    if (!(quality >= 0)) quality = 0;  // NaN too
    return static_cast<int>(std::clamp(std::lround(quality * 100), 1L, 100L));
}

void appendSegment(std::vector<uint8_t>& out, uint8_t marker, const uint8_t* head, size_t headSize,
                   const uint8_t* body, size_t bodySize) {
    const size_t length = 2 + headSize + bodySize;
    out.insert(out.end(), {0xFF, marker, uint8_t(length >> 8), uint8_t(length & 0xFF)});
    out.insert(out.end(), head, head + headSize);
    out.insert(out.end(), body, body + bodySize);
}

// The APP1 EXIF and APP2 ICC segments, ready to go in after the JFIF header. A block too large
// for its segments is left out rather than written broken.
std::vector<uint8_t> metadataSegments(const ImageMetadata& metadata) {
    std::vector<uint8_t> out;
    const auto& exif = metadata.exif();
    if (exif.size() > kMaxSegmentPayload) {
        rt::Log::warnf("jpeg: EXIF block of %zu bytes left out (too large)", exif.size());
    } else if (!exif.empty()) {
        appendSegment(out, 0xE1, nullptr, 0, exif.data(), exif.size());
    }
    const auto& icc = metadata.iccProfile();
    const size_t chunks = (icc.size() + kMaxIccChunk - 1) / kMaxIccChunk;
    if (chunks > 255) {
        rt::Log::warnf("jpeg: ICC profile of %zu bytes left out (too large)", icc.size());
        return out;
    }
    for (size_t i = 0; i < chunks; ++i) {
        const size_t offset = i * kMaxIccChunk;
        uint8_t head[sizeof kIccHeader + 2];
        std::memcpy(head, kIccHeader, sizeof kIccHeader);
        head[sizeof kIccHeader] = static_cast<uint8_t>(i + 1);
        head[sizeof kIccHeader + 1] = static_cast<uint8_t>(chunks);
        appendSegment(out, 0xE2, head, sizeof head, icc.data() + offset,
                      std::min(kMaxIccChunk, icc.size() - offset));
    }
    return out;
}

// Where the metadata goes: after the JFIF APP0 segment when there is one, else after SOI.
size_t insertionPoint(const uint8_t* jpeg, size_t size) {
    if (size >= 6 && jpeg[2] == 0xFF && jpeg[3] == 0xE0) {
        const size_t end = 4 + (size_t{jpeg[4]} << 8 | jpeg[5]);
        if (end <= size) return end;
    }
    return 2;
}

}  // namespace

bool JpegCodec::readSize(const uint8_t* data, size_t size, int* width, int* height) {
    Handle handle(tjInitDecompress());
    Header header;
    if (!handle || !data || size == 0 || !readHeader(handle.get(), data, size, &header))
        return false;
    if (width) *width = header.width;
    if (height) *height = header.height;
    return true;
}

BitmapPtr JpegCodec::decode(const uint8_t* data, size_t size, int minLongSide) {
    Handle handle(tjInitDecompress());
    Header header;
    if (!data || size == 0) {
        rt::Log::warnf("jpeg: no data to decode");
        return nullptr;
    }
    if (!handle || !readHeader(handle.get(), data, size, &header)) {
        rt::Log::warnf("jpeg: unreadable header (%zu bytes): %s", size,
                       tjGetErrorStr2(handle.get()));
        return nullptr;
    }
    if (!acceptablePictureSize(header.width, header.height)) {
        rt::Log::warnf("jpeg: refusing a picture of %dx%d pixels", header.width, header.height);
        return nullptr;
    }
    // Checked before anything is allocated, and needed because the decoder's own report of
    // data that ends early can be hidden behind an earlier, harmless warning.
    if (!JpegSegments::hasEndAfterScan(data, size)) {
        rt::Log::warnf("jpeg: data ends early (%zu bytes)", size);
        return nullptr;
    }
    const tjscalingfactor scale = pickScale(header.width, header.height, minLongSide);
    const int width = TJSCALED(header.width, scale);
    const int height = TJSCALED(header.height, scale);
    // The fast integer IDCT only costs accuracy we are about to average away; at full size the
    // accurate one is kept. Scan limits guard against files built to make decoding endless.
    int flags = TJFLAG_LIMITSCANS;
    if (scale.num != scale.denom) flags |= TJFLAG_FASTDCT;
    const bool cmyk = header.colorspace == TJCS_CMYK || header.colorspace == TJCS_YCCK;

    auto bitmap = std::make_shared<Bitmap>(width, height);
    if (!decompressInto(handle.get(), data, size, *bitmap, cmyk ? TJPF_CMYK : TJPF_RGBA, flags)) {
        return nullptr;
    }
    if (cmyk) cmykToRgba(bitmap->mutableData(), size_t(width) * height);
    return bitmap;
}

std::vector<uint8_t> JpegCodec::encode(const Bitmap& bitmap, double quality,
                                       const ImageMetadata* metadata) {
    if (!acceptablePictureSize(bitmap.width(), bitmap.height())) {
        rt::Log::warnf("jpeg: cannot encode a %dx%d bitmap", bitmap.width(), bitmap.height());
        return {};
    }
    Handle handle(tjInitCompress());
    if (!handle) {
        rt::Log::warnf("jpeg: %s", tjGetErrorStr2(nullptr));
        return {};
    }
    const int q = tjQuality(quality);
    // Near the top of the scale the caller asks for fidelity, and halving the colour
    // resolution would be the largest loss left, so colour keeps full resolution there.
    const int subsampling = q >= 90 ? TJSAMP_444 : TJSAMP_420;
    // TurboJPEG would pick the fast forward DCT below quality 96; the accurate one is both more
    // faithful and, with its wider SIMD, no slower.
    const int flags = TJFLAG_ACCURATEDCT;
    unsigned char* jpeg = nullptr;
    unsigned long jpegSize = 0;
    const int result = tjCompress2(
        handle.get(), bitmap.data(), bitmap.width(), static_cast<int>(bitmap.rowBytes()),
        bitmap.height(), tjPixelFormat(bitmap.format()), &jpeg, &jpegSize, subsampling, q, flags);
    std::unique_ptr<unsigned char, void (*)(unsigned char*)> owned(jpeg, tjFree);
    if (result != 0) {
        rt::Log::warnf("jpeg: encoding failed: %s", tjGetErrorStr2(handle.get()));
        return {};
    }
    const size_t at = insertionPoint(jpeg, jpegSize);
    std::vector<uint8_t> out;
    const std::vector<uint8_t> segments =
        metadata ? metadataSegments(*metadata) : std::vector<uint8_t>{};
    out.reserve(jpegSize + segments.size());
    out.insert(out.end(), jpeg, jpeg + at);
    out.insert(out.end(), segments.begin(), segments.end());
    out.insert(out.end(), jpeg + at, jpeg + jpegSize);
    return out;
}

}  // namespace orv::codec
