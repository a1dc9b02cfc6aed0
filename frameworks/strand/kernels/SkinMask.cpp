#include "frameworks/strand/kernels/SkinMask.h"

#include <algorithm>
#include <cmath>

#include "frameworks/strand/kernels/ParallelRows.h"

namespace orv::strand {

namespace {

// The skin cluster in Cb and Cr (0 to 255, full range) and the width of its soft edge.
constexpr float kCbLow = 77, kCbHigh = 127;
constexpr float kCrLow = 133, kCrHigh = 173;
constexpr float kSoftEdge = 8;
// Very dark pixels have no reliable chroma: they fade out below this luma.
constexpr float kLumaLow = 40, kLumaSoft = 20;

// v clamped to [0, 1] without comparisons, which the compiler would turn into branches around
// the smoothstep that follows, and the loop would not vectorise.
inline float clamp01(float v) {
    return 0.5f * (std::fabs(v) - std::fabs(v - 1) + 1);
}

inline float smooth(float t) {
    return t * t * (3 - 2 * t);
}

// 1 well inside [low, high], 0 outside, a smooth ramp of 2 × soft across each end.
inline float inside(float v, float low, float high, float soft) {
    const float rise = clamp01((v - low + soft) / (2 * soft));
    const float fall = clamp01((high + soft - v) / (2 * soft));
    return smooth(rise) * smooth(fall);
}

void maskRow(const float* __restrict r, const float* __restrict g, const float* __restrict b,
             const float* __restrict a, float* __restrict out, int width) {
    for (int x = 0; x < width; ++x) {
        // The colour under the alpha, 0 to 255; transparent pixels read as black. (Again no
        // max() against zero, which would branch around the division.)
        const float scale = 255.f / (a[x] + 1e-6f);
        const float red = r[x] * scale, green = g[x] * scale, blue = b[x] * scale;
        const float y = 0.299f * red + 0.587f * green + 0.114f * blue;
        const float cb = 128 - 0.168736f * red - 0.331264f * green + 0.5f * blue;
        const float cr = 128 + 0.5f * red - 0.418688f * green - 0.081312f * blue;
        const float dark = smooth(clamp01((y - kLumaLow + kLumaSoft) / (2 * kLumaSoft)));
        out[x] = inside(cb, kCbLow, kCbHigh, kSoftEdge) * inside(cr, kCrLow, kCrHigh, kSoftEdge) *
                 dark * clamp01(a[x]);
    }
}

}  // namespace

Plane SkinMask::fromColour(const Plane& red, const Plane& green, const Plane& blue,
                           const Plane& alpha) {
    Plane mask{red.width, red.height, std::vector<float>(red.data.size())};
    const int width = red.width;
    ParallelRows::run(red.height, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const size_t at = static_cast<size_t>(y) * width;
            maskRow(&red.data[at], &green.data[at], &blue.data[at], &alpha.data[at], &mask.data[at],
                    width);
        }
    });
    // Softens the mask's outline so that skin blends into what is not.
    GaussianBlur::boxMeanInPlace(mask, 1);
    return mask;
}

}  // namespace orv::strand
