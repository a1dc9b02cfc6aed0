#include "frameworks/strand/kernels/SelectiveBlur.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "frameworks/strand/kernels/FastMath.h"
#include "frameworks/strand/kernels/ParallelRows.h"
#include "frameworks/strand/kernels/PixelBlocks.h"
#include "frameworks/strand/kernels/WideBlur.h"

namespace orv::strand {

namespace {

// The blur at full blur size, in fractions of the shorter side, so that a preview and the
// full-size picture look alike.
constexpr double kMaxSigmaOfShorterSide = 0.025;
// The soft edge between the sharp and the blurred part: half the focus radius, and at least
// this fraction of the shorter side.
constexpr float kFalloffOfRadius = 0.5f, kMinFalloffOfShorterSide = 0.05f;

float unit(float v, float fallback) {
    return std::isnan(v) ? fallback : std::clamp(v, 0.f, 1.f);
}

// Where the picture is blurred, from 0 (sharp) to 1, by the distance from the focus.
struct Focus {
    bool band;
    float cx, cy;  // pixels
    float nx, ny;  // the band's normal
    float radius;  // pixels
    float inverseFalloff;

    static Focus make(const ApertureSettings& s, int width, int height) {
        const float shorter = float(std::min(width, height));
        const float radius = unit(s.radius, 0.4f) * shorter;
        const float falloff =
            std::max(kFalloffOfRadius * radius, kMinFalloffOfShorterSide * shorter);
        const float angle = unit(s.degree, 0.5f) * std::numbers::pi_v<float>;
        return Focus{s.selective >= 0.5f,
                     float(unit(float(s.center.x), 0.5f) * width),
                     float(unit(float(s.center.y), 0.5f) * height),
                     -std::sin(angle),
                     std::cos(angle),
                     radius,
                     1 / std::max(falloff, 1.f)};
    }

    // The blur weights of n pixels from (x, y) rightwards.
    template <int N>
    void weights(int x, int y, float* __restrict w) const {
        const float dy = float(y) + 0.5f - cy;
        float d[N];
        if (band) {
            for (int k = 0; k < N; ++k) d[k] = std::fabs(nx * (float(x + k) + 0.5f - cx) + ny * dy);
        } else {
            for (int k = 0; k < N; ++k) {
                const float dx = float(x + k) + 0.5f - cx;
                d[k] = FastMath::sqrt(dx * dx + dy * dy);
            }
        }
        // A smooth step; clamped in a loop of its own, or the loop gets branches.
        const float r = radius, scale = inverseFalloff;
        for (int k = 0; k < N; ++k) w[k] = std::clamp((d[k] - r) * scale, 0.f, 1.f);
        for (int k = 0; k < N; ++k) w[k] = w[k] * w[k] * (3 - 2 * w[k]);
    }
};

// The tint laid over the blurred part, premultiplied by its own alpha; 0 alpha shows none.
struct Tint {
    float rgb[3];
    float alpha;

    static Tint make(const gfx::Color& c) {
        const float a = unit(float(c.a), 0);
        return Tint{{unit(float(c.r), 1) * a, unit(float(c.g), 1) * a, unit(float(c.b), 1) * a}, a};
    }
};

// Mixes the sharp and blurred pixels by the weights, then lays the tint atop (within the
// picture's alpha, which stays as it is).
template <int N>
void mixBlock(const uint8_t* __restrict sharp, const uint8_t* __restrict blurred,
              const float* __restrict w, const Tint& tint, uint8_t* __restrict out) {
    PixelBlocks::Pixels<N> s, b;
    PixelBlocks::load<N>(sharp, s);
    PixelBlocks::load<N>(blurred, b);
    float keep[N], cover[N];
    for (int k = 0; k < N; ++k) {
        keep[k] = 1 - tint.alpha * w[k];
        cover[k] = w[k] * s.a[k];
    }
    const float tr = tint.rgb[0], tg = tint.rgb[1], tb = tint.rgb[2];
    for (int k = 0; k < N; ++k) {
        s.r[k] = (s.r[k] + (b.r[k] - s.r[k]) * w[k]) * keep[k] + tr * cover[k];
        s.g[k] = (s.g[k] + (b.g[k] - s.g[k]) * w[k]) * keep[k] + tg * cover[k];
        s.b[k] = (s.b[k] + (b.b[k] - s.b[k]) * w[k]) * keep[k] + tb * cover[k];
    }
    PixelBlocks::store<N>(s, out);
}

}  // namespace

gfx::BitmapPtr SelectiveBlur::apply(const gfx::Bitmap& src, const ApertureSettings& settings) {
    const int width = src.width(), height = src.height();
    if (width <= 0 || height <= 0) return std::make_shared<gfx::Bitmap>(src);
    const double sigma =
        unit(settings.blurSize, 0) * kMaxSigmaOfShorterSide * std::min(width, height);
    const WideBlur blurred(src, sigma);
    const Focus focus = Focus::make(settings, width, height);
    const Tint tint = Tint::make(settings.color);
    auto out = std::make_shared<gfx::Bitmap>(width, height, src.format());
    ParallelRows::run(height, [&](int begin, int end) {
        std::vector<uint8_t> scratch;
        for (int y = begin; y < end; ++y) {
            const uint8_t* blurredRow = blurred.row(y, scratch);
            PixelBlocks::row(width, [&](int x, auto count) {
                float weight[count()];
                focus.weights<count()>(x, y, weight);
                mixBlock<count()>(src.pixel(x, y), blurredRow + 4 * size_t(x), weight, tint,
                                  out->mutableRow(y) + 4 * size_t(x));
            });
        }
    });
    return out;
}

}  // namespace orv::strand
