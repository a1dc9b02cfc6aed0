#pragma once
// PNG files to and from bitmaps. Decoded pictures come out as R, G, B, A premultiplied whatever
// the file's colour type, bit depth or interlacing; encoded ones are written with straight alpha.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/gfx/Bitmap.h"

namespace orv::codec {

class PngCodec {
  public:
    PngCodec() = delete;

    // The PNG bytes of `bitmap` (any pixel format); empty when encoding fails.
    static std::vector<uint8_t> encode(const gfx::Bitmap& bitmap);
    // Writes through a temporary file renamed into place, so readers never see half a file.
    static bool writeFile(const gfx::Bitmap& bitmap, const std::string& path);

    // Null (with a logged reason) for anything that is not a complete, valid PNG.
    static gfx::BitmapPtr decode(const uint8_t* data, size_t size);
    static gfx::BitmapPtr readFile(const std::string& path);

    // True when the bytes start with the PNG signature.
    static bool hasSignature(const uint8_t* data, size_t size);
};

}  // namespace orv::codec
