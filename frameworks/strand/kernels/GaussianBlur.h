#pragma once
// Gaussian blur of R, G, B, A premultiplied pixels (alpha blurred alike, so edges against
// transparency stay right), and of single float planes for filters that blur a mask or a
// luminance. The edges repeat the border pixels. A sigma below 0.1 (no blur to speak of) or
// not a number copies.

#include <vector>

#include "platform/gfx/Bitmap.h"

namespace orv::strand {

// One channel of floats, row-major.
struct Plane {
    int width = 0, height = 0;
    std::vector<float> data;
    float& at(int x, int y) { return data[static_cast<size_t>(y) * width + x]; }
    float at(int x, int y) const { return data[static_cast<size_t>(y) * width + x]; }
};

class GaussianBlur {
  public:
    GaussianBlur() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, double sigma);
    static void applyInPlace(Plane& plane, double sigma);
    // The mean over a (2 × radius + 1) square, for box-based filters (guided filter).
    static void boxMeanInPlace(Plane& plane, int radius);
};

}  // namespace orv::strand
