#pragma once
// Reads any picture we can decode (JPEG, PNG, WebP) from memory or a file, with its type, its
// metadata and its orientation tag, optionally reduced to a long side at decode time.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/codec/ImageMetadata.h"
#include "platform/codec/ImageType.h"
#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Image.h"

namespace orv::codec {

struct DecodedImage {
    gfx::BitmapPtr bitmap;  // R, G, B, A premultiplied, as stored (not turned by the orientation)
    ImageType type = ImageType::Unknown;
    ImageMetadata metadata;
    gfx::ImageOrientation orientation = gfx::ImageOrientation::Up;  // from EXIF where present
};

class ImageReader {
  public:
    ImageReader() = delete;

    // With maxLongSide > 0 the stored long side is brought down to at most maxLongSide: by the
    // DCT where the codec can, then by a smooth resample. Never enlarged. Nothing, with a logged
    // reason, for empty, unknown, truncated or corrupt data.
    static std::optional<DecodedImage> decode(const uint8_t* data, size_t size,
                                              int maxLongSide = 0);
    static std::optional<DecodedImage> readFile(const std::string& path, int maxLongSide = 0);

    // The whole file; nothing when it cannot be read.
    static std::optional<std::vector<uint8_t>> readAll(const std::string& path);
};

}  // namespace orv::codec
