#include "frameworks/strand/kernels/Glow.h"

#include <algorithm>
#include <cmath>

#include "frameworks/strand/kernels/ParallelRows.h"
#include "frameworks/strand/kernels/PixelBlocks.h"
#include "frameworks/strand/kernels/WideBlur.h"

namespace orv::strand {

namespace {

// The bloom spreads over this fraction of the shorter side (its sigma), whatever the size.
constexpr double kSpreadOfShorterSide = 0.03;
// Light above this luma blooms: 0.8 at the lightest strength, 0.35 at full.
constexpr float kThresholdAtNone = 0.8f, kThresholdRange = 0.45f;
// The bloom's gain at full brightness.
constexpr float kMaxGain = 2.5f;

float unit(float v) {
    return std::isnan(v) ? 0 : std::clamp(v, 0.f, 1.f);
}

// The light above the threshold, in its own colour: each pixel scaled by how far its straight
// luma rises over the threshold (towards white, all of it). Opaque, so the blur's alpha
// clamp leaves it alone.
template <int N>
void highlightBlock(const uint8_t* __restrict p, float threshold, uint8_t* __restrict q) {
    PixelBlocks::Pixels<N> px;
    PixelBlocks::load<N>(p, px);
    float share[N];
    PixelBlocks::straightLuma<N>(px, share);
    const float scale = 1 / (1 - threshold);
    for (int k = 0; k < N; ++k) share[k] = std::clamp((share[k] - threshold) * scale, 0.f, 1.f);
    for (int k = 0; k < N; ++k) {
        px.r[k] *= share[k];
        px.g[k] *= share[k];
        px.b[k] *= share[k];
        px.a[k] = 255;
    }
    PixelBlocks::store<N>(px, q);
}

gfx::BitmapPtr highlights(const gfx::Bitmap& src, float threshold) {
    auto out = std::make_shared<gfx::Bitmap>(src.width(), src.height(), src.format());
    PixelBlocks::run(src.width(), src.height(), [&](int y, int x, auto count) {
        highlightBlock<count()>(src.pixel(x, y), threshold, out->mutableRow(y) + 4 * size_t(x));
    });
    return out;
}

// Screen of the bloom over the picture: in straight colour C + G − C·G, which premultiplied
// is c + G·(a − c), so the light stays within the picture's alpha.
template <int N>
void screenBlock(const uint8_t* __restrict p, const uint8_t* __restrict light, float gain,
                 uint8_t* __restrict q) {
    PixelBlocks::Pixels<N> px, g;
    PixelBlocks::load<N>(p, px);
    PixelBlocks::load<N>(light, g);
    for (int k = 0; k < N; ++k) {
        g.r[k] = std::min(g.r[k] * gain, 1.f);
        g.g[k] = std::min(g.g[k] * gain, 1.f);
        g.b[k] = std::min(g.b[k] * gain, 1.f);
    }
    for (int k = 0; k < N; ++k) {
        px.r[k] += g.r[k] * (px.a[k] - px.r[k]);
        px.g[k] += g.g[k] * (px.a[k] - px.g[k]);
        px.b[k] += g.b[k] * (px.a[k] - px.b[k]);
    }
    PixelBlocks::store<N>(px, q);
}

}  // namespace

gfx::BitmapPtr Glow::apply(const gfx::Bitmap& src, const HolyLightSettings& settings) {
    const float strength = unit(settings.strength), brightness = unit(settings.brightness);
    const int width = src.width(), height = src.height();
    if (strength <= 0 || brightness <= 0 || width <= 0 || height <= 0) {
        return std::make_shared<gfx::Bitmap>(src);
    }
    const float threshold = kThresholdAtNone - kThresholdRange * strength;
    const WideBlur bloom(
        src, kSpreadOfShorterSide * std::min(width, height),
        [&](const gfx::Bitmap& picture) { return highlights(picture, threshold); });
    const float gain = kMaxGain * brightness / 255;
    auto out = std::make_shared<gfx::Bitmap>(width, height, src.format());
    ParallelRows::run(height, [&](int begin, int end) {
        std::vector<uint8_t> scratch;
        for (int y = begin; y < end; ++y) {
            const uint8_t* light = bloom.row(y, scratch);
            PixelBlocks::row(width, [&](int x, auto count) {
                screenBlock<count()>(src.pixel(x, y), light + 4 * size_t(x), gain,
                                     out->mutableRow(y) + 4 * size_t(x));
            });
        }
    });
    return out;
}

}  // namespace orv::strand
