#pragma once
// The largest picture any decoder accepts. Larger ones are refused before anything is
// allocated, rather than risking an allocation that cannot succeed.

#include <cstdint>

namespace orv::codec {

constexpr uint32_t kMaxPictureSide = 1u << 15;
constexpr uint64_t kMaxPicturePixels = uint64_t{1} << 28;

inline bool acceptablePictureSize(int64_t width, int64_t height) {
    return width > 0 && height > 0 && width <= kMaxPictureSide && height <= kMaxPictureSide &&
           uint64_t(width) * uint64_t(height) <= kMaxPicturePixels;
}

}  // namespace orv::codec
