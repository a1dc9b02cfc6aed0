#pragma once
// The kinds of encoded picture we recognise, told apart by their first bytes.

#include <cstddef>
#include <cstdint>

namespace orv::codec {

enum class ImageType : unsigned {
    Unknown = 0,
    JPEG = 1,
    JPEG2000 = 2,
    BMP = 3,
    GIF = 4,
    PNG = 5,
    WebP = 6,
};

// The type by magic bytes. Up to 16 bytes are looked at; shorter data is read as if padded
// with zeros, so a few bytes never read past the end.
ImageType imageTypeOf(const uint8_t* data, size_t size);

// "jpeg", "png", ... for log lines.
const char* imageTypeName(ImageType type);

}  // namespace orv::codec
