#include "frameworks/strand/kernels/Vignette.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "frameworks/strand/kernels/CpuClones.h"
#include "frameworks/strand/kernels/ParallelRows.h"

namespace orv::strand {

namespace {

// The width of the fall, in half diagonals, and how much of the colour the tool filter takes at
// most (the colour multiplied by 0.4 is about a sixth of its light).
constexpr float kFade = 0.7f;
constexpr float kToolDepth = 0.6f;
// Pixels a step of the inner loops: a fixed count lets them vectorise at -O2.
constexpr int kChunk = 16;
// Steps of the fall (finer than the 1/256ths of the multiplier).
constexpr int kSteps = 1024;

// Four bytes of each pixel multiplied: the colours by its shade, alpha by 1.
void scaleChunk(uint8_t* __restrict px, const uint16_t* __restrict shade) {
    uint16_t factor[4 * kChunk];
    for (int i = 0; i < kChunk; ++i) {
        factor[4 * i] = factor[4 * i + 1] = factor[4 * i + 2] = shade[i];
        factor[4 * i + 3] = 256;
    }
    for (int i = 0; i < 4 * kChunk; ++i) {
        px[i] = static_cast<uint8_t>((px[i] * factor[i] + 128) >> 8);
    }
}

void scaleRow(uint8_t* px, const uint16_t* shade, int width) {
    int x = 0;
    for (; x + kChunk <= width; x += kChunk) scaleChunk(px + 4 * x, shade + x);
    for (; x < width; ++x) {
        for (int c = 0; c < 3; ++c)
            px[4 * x + c] = static_cast<uint8_t>((px[4 * x + c] * shade[x] + 128) >> 8);
    }
}

}  // namespace

Vignette::Vignette(float start, float depth) {
    start = std::isnan(start) ? 1 : std::max(start, 0.0f);
    from_ = start * start;
    scale_ = 1 / ((start + kFade) * (start + kFade) - from_);
    depth_ = std::isnan(depth) ? 0 : std::clamp(depth, 0.0f, 1.0f);
}

ORV_AVX2_CLONES void Vignette::shadeRow(uint16_t* shade, int width, int y, int height) const {
    const float cx = width / 2.0f, cy = height / 2.0f;
    const float scale = 1 / std::max(std::sqrt(cx * cx + cy * cy), 0.5f);
    const float dy = (static_cast<float>(y) + 0.5f - cy) * scale;
    // Locals, so the loop need not reload them through `shade`; the clamp in integers, which
    // vectorise where float comparisons (NaN-aware) would not.
    const float from = from_ - dy * dy, fall = scale_ * kSteps, depth = depth_;
    for (int x = 0; x < width; x += kChunk) {
        uint16_t chunk[kChunk];
        for (int i = 0; i < kChunk; ++i) {
            const float dx = (static_cast<float>(x + i) + 0.5f - cx) * scale;
            const int step = static_cast<int>((dx * dx - from) * fall);
            const float t = static_cast<float>(std::min(std::max(step, 0), kSteps)) / kSteps;
            chunk[i] = static_cast<uint16_t>((1 - depth * t * t * (3 - 2 * t)) * 256 + 0.5f);
        }
        std::memcpy(shade + x, chunk, sizeof(uint16_t) * std::min(kChunk, width - x));
    }
}

gfx::BitmapPtr Vignette::apply(const gfx::Bitmap& src, const VignetteSettings& settings) {
    const float start = settings.start;
    if (!(start < 1)) return std::make_shared<gfx::Bitmap>(src);  // 1 (none) and NaN
    const Vignette vignette(std::max(start, 0.0f), kToolDepth);
    const int width = src.width(), height = src.height();
    auto out = std::make_shared<gfx::Bitmap>(width, height);
    ParallelRows::run(height, [&](int begin, int end) {
        std::vector<uint16_t> shade(width);
        for (int y = begin; y < end; ++y) {
            uint8_t* row = out->mutableRow(y);
            std::memcpy(row, src.row(y), 4 * static_cast<size_t>(width));
            vignette.shadeRow(shade.data(), width, y, height);
            scaleRow(row, shade.data(), width);
        }
    });
    return out;
}

}  // namespace orv::strand
