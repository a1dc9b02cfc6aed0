#pragma once
// JPEG files to and from bitmaps, on the TurboJPEG API. Decoding can shrink by the DCT (1/2,
// 1/4, 1/8 ...) so that a large photo is read straight at about the size it is shown at.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/codec/ImageMetadata.h"
#include "platform/gfx/Bitmap.h"

namespace orv::codec {

class JpegCodec {
  public:
    JpegCodec() = delete;

    // The pixel size from the header; false for anything that is not a readable JPEG header.
    static bool readSize(const uint8_t* data, size_t size, int* width, int* height);

    // R, G, B, A (opaque) pixels. With minLongSide > 0 the decoder picks the smallest DCT scale
    // whose long side is still at least minLongSide (never larger than the stored size), so the
    // caller only has a small smooth reduction left. Null, with a logged reason, for corrupt or
    // truncated data.
    static gfx::BitmapPtr decode(const uint8_t* data, size_t size, int minLongSide = 0);

    // The JPEG of `bitmap` (any pixel format; translucent pixels are taken as over black) at a
    // quality from 0 to 1 (clamped), with the metadata's EXIF and ICC segments after the JFIF
    // header. Empty when encoding fails.
    static std::vector<uint8_t> encode(const gfx::Bitmap& bitmap, double quality,
                                       const ImageMetadata* metadata = nullptr);
};

}  // namespace orv::codec
