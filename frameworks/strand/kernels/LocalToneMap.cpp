#include "frameworks/strand/kernels/LocalToneMap.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "frameworks/strand/kernels/FastMath.h"
#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/GuidedFilter.h"
#include "frameworks/strand/kernels/LinearAxis.h"
#include "frameworks/strand/kernels/PixelBlocks.h"
#include "platform/gfx/BitmapOps.h"

namespace orv::strand {

namespace {

// The base layer is smooth, so it is worked out on a copy whose shorter side has about this
// many pixels (the fast guided filter), over windows of this fraction of the shorter side.
constexpr int kBaseShorterSide = 256;
constexpr double kWindowOfShorterSide = 0.04;
// Variations of the log2 luminance below this variance (stops²) count as detail, above it as
// edges that the base keeps.
constexpr float kEdgeVariance = 0.1f;
// At full strength: the base's distance below the picture's mean brightness shrinks by 60 %
// (the shadows open), the distance above it by 25 % (the highlights keep most of their
// light); the detail is raised by 60 %, the saturation by 20 %.
constexpr float kShadowCompression = 0.6f, kHighlightCompression = 0.25f;
constexpr float kDetailBoost = 0.6f, kSaturationBoost = 0.2f;
// Log luminance is taken of luminance plus this, so black stays finite; gains stay within
// these many stops.
constexpr float kLuminanceFloor = 1.f / 256, kMaxStops = 4;

// The log2 luminance of the reduced picture, and its mean.
Plane logLuminance(const gfx::Bitmap& small, double& mean) {
    const int width = small.width(), height = small.height();
    Plane plane{width, height, std::vector<float>(size_t(width) * height)};
    PixelBlocks::run(width, height, [&](int y, int x, auto count) {
        PixelBlocks::Pixels<count()> px;
        PixelBlocks::load<count()>(small.pixel(x, y), px);
        float* out = &plane.at(x, y);
        PixelBlocks::straightLuma<count()>(px, out);
        for (int k = 0; k < count; ++k) out[k] = FastMath::log2(out[k] + kLuminanceFloor);
    });
    double sum = 0;
    for (float v : plane.data) sum += v;
    mean = sum / double(plane.data.size());
    return plane;
}

// The base layer is gain × l + bias with gain and bias smooth, so they are kept with each
// reduced row widened to the full width, and a full row mixes two of them.
struct Base {
    LinearAxis down;
    std::vector<float> gain, bias;

    Base(const GuidedFilter::Coefficients& c, int width, int height) : down(height, c.gain.height) {
        const LinearAxis across(width, c.gain.width);
        gain.resize(size_t(width) * c.gain.height);
        bias.resize(gain.size());
        for (int i = 0; i < c.gain.height; ++i) {
            widen(c.gain, i, across, &gain[size_t(i) * width]);
            widen(c.bias.front(), i, across, &bias[size_t(i) * width]);
        }
    }

    static void widen(const Plane& plane, int i, const LinearAxis& across, float* out) {
        for (size_t x = 0; x < across.lower.size(); ++x) {
            const float a = plane.at(across.lower[x], i), b = plane.at(across.upper[x], i);
            out[x] = a + (b - a) * across.share[x];
        }
    }
};

struct Curve {
    float mean, shadowSlope, highlightSlope, detailSlope, saturation;

    Curve(double mean, float strength)
        : mean(float(mean)),
          shadowSlope(1 - kShadowCompression * strength),
          highlightSlope(1 - kHighlightCompression * strength),
          detailSlope(1 + kDetailBoost * strength),
          saturation(1 + kSaturationBoost * strength) {}
};

// Rows of the base's gain and bias are g0 + (g1 − g0) t and b0 + (b1 − b0) t.
template <int N>
void toneBlock(const uint8_t* __restrict p, const float* __restrict g0, const float* __restrict g1,
               const float* __restrict b0, const float* __restrict b1, float t, const Curve& curve,
               uint8_t* __restrict q) {
    PixelBlocks::Pixels<N> px;
    PixelBlocks::load<N>(p, px);
    float l[N], base[N];
    PixelBlocks::straightLuma<N>(px, l);
    for (int k = 0; k < N; ++k) {
        l[k] = FastMath::log2(l[k] + kLuminanceFloor);
        base[k] = (g0[k] + (g1[k] - g0[k]) * t) * l[k] + b0[k] + (b1[k] - b0[k]) * t;
    }
    // The new log luminance less the old: the base pulled towards the mean, the detail raised.
    const float mean = curve.mean, shadow = curve.shadowSlope, highlight = curve.highlightSlope;
    const float detail = curve.detailSlope;
    float gain[N];
    for (int k = 0; k < N; ++k) {
        const float from = base[k] - mean;
        const float below = std::min(from, 0.f), above = std::max(from, 0.f);
        gain[k] = mean + below * shadow + above * highlight + (l[k] - base[k]) * detail - l[k];
    }
    for (int k = 0; k < N; ++k) gain[k] = std::clamp(gain[k], -kMaxStops, kMaxStops);
    for (int k = 0; k < N; ++k) gain[k] = FastMath::exp2(gain[k]);
    // The colours scaled by the gain, then moved away from the (scaled) luma.
    const float saturation = curve.saturation;
    float grey[N];
    PixelBlocks::luma<N>(px, grey);
    for (int k = 0; k < N; ++k) {
        grey[k] *= gain[k] * (1 - saturation);
        gain[k] *= saturation;
    }
    for (int k = 0; k < N; ++k) {
        px.r[k] = px.r[k] * gain[k] + grey[k];
        px.g[k] = px.g[k] * gain[k] + grey[k];
        px.b[k] = px.b[k] * gain[k] + grey[k];
    }
    PixelBlocks::store<N>(px, q);
}

}  // namespace

gfx::BitmapPtr LocalToneMap::apply(const gfx::Bitmap& src, const HdrSettings& settings) {
    const float strength = std::isnan(settings.strength) ? 0 : std::min(settings.strength, 1.f);
    const int width = src.width(), height = src.height();
    if (!(strength > 0) || width <= 0 || height <= 0) return std::make_shared<gfx::Bitmap>(src);

    const int factor = std::max(1, std::min(width, height) / kBaseShorterSide);
    gfx::BitmapPtr reduced;
    if (factor > 1) {
        reduced =
            gfx::BitmapOps::resized(src, std::max(1, width / factor), std::max(1, height / factor));
    }
    const gfx::Bitmap& small = reduced ? *reduced : src;
    double mean = 0;
    const Plane logL = logLuminance(small, mean);
    const int radius = std::max(
        1, int(std::lround(kWindowOfShorterSide * std::min(small.width(), small.height()))));
    const Base base(GuidedFilter::coefficients({&logL}, radius, kEdgeVariance), width, height);
    const Curve curve(mean, strength);
    auto out = std::make_shared<gfx::Bitmap>(width, height, src.format());
    PixelBlocks::run(width, height, [&](int y, int x, auto count) {
        const size_t i0 = size_t(base.down.lower[y]) * width + x;
        const size_t i1 = size_t(base.down.upper[y]) * width + x;
        toneBlock<count()>(src.pixel(x, y), &base.gain[i0], &base.gain[i1], &base.bias[i0],
                           &base.bias[i1], base.down.share[y], curve,
                           out->mutableRow(y) + 4 * size_t(x));
    });
    return out;
}

}  // namespace orv::strand
