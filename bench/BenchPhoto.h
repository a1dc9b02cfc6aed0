#pragma once
// The 12-megapixel photo the codec benchmarks work on: the bundled phone photo (4000 × 3000),
// or, without it, another bundled photo or a sample picture brought to that size with a light
// film grain, so that the JPEG has the fine detail of a camera's. Made once and kept under the
// build tree.

#include <string>

#include "platform/gfx/Bitmap.h"

namespace orv::bench {

class BenchPhoto {
  public:
    BenchPhoto() = delete;

    static constexpr int kWidth = 4000;
    static constexpr int kHeight = 3000;

    // The photo as a camera's JPEG (quality 92, 4:2:0) and as a binary PPM of the same pixels;
    // made on first use. Empty when no source picture can be read.
    static std::string jpegPath();
    static std::string ppmPath();

    // Opaque R, G, B, A pixels from a binary (P6, 8-bit) PPM; null when it is not one.
    static gfx::BitmapPtr readPpm(const std::string& path);
    static bool writePpm(const gfx::Bitmap& bitmap, const std::string& path);
};

}  // namespace orv::bench
