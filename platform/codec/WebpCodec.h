#pragma once
// WebP files to and from bitmaps, on libwebp.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/gfx/Bitmap.h"

namespace orv::codec {

class WebpCodec {
  public:
    WebpCodec() = delete;

    static bool readSize(const uint8_t* data, size_t size, int* width, int* height);
    // R, G, B, A premultiplied; null, with a logged reason, for corrupt or truncated data.
    static gfx::BitmapPtr decode(const uint8_t* data, size_t size);
    // Lossy at a quality from 0 to 1 below 1, lossless at 1. Alpha is kept. Empty on failure.
    static std::vector<uint8_t> encode(const gfx::Bitmap& bitmap, double quality);
};

}  // namespace orv::codec
