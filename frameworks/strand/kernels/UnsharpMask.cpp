#include "frameworks/strand/kernels/UnsharpMask.h"

#include <algorithm>
#include <cmath>

#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/PixelBlocks.h"

namespace orv::strand {

namespace {

// Full sharpness: 1.5 times the detail added back, taken at a sigma of 1.5 pixels (1 at the
// lightest setting). Detail is measured in pixels, not in fractions of the picture: it is the
// finest one the picture has at either size.
constexpr float kMaxAmount = 1.5f;
constexpr float kMinSigma = 1.0f, kSigmaRange = 0.5f;
// Differences below twice this many levels are taken in part only, so noise is not sharpened.
constexpr float kThreshold = 2.0f;

// Adds the luma detail, shaped against noise, to the colours.
template <int N>
void sharpenBlock(const uint8_t* __restrict p, const float* __restrict blurred, float amount,
                  uint8_t* __restrict q) {
    PixelBlocks::Pixels<N> px;
    PixelBlocks::load<N>(p, px);
    float lift[N];
    PixelBlocks::luma<N>(px, lift);
    for (int k = 0; k < N; ++k) {
        const float detail = lift[k] - blurred[k];
        const float taken = std::min(std::fabs(detail) * (0.5f / kThreshold), 1.f);
        lift[k] = amount * detail * taken;
    }
    for (int k = 0; k < N; ++k) {
        px.r[k] += lift[k];
        px.g[k] += lift[k];
        px.b[k] += lift[k];
    }
    PixelBlocks::store<N>(px, q);
}

// The luma of n pixels.
template <int N>
void lumaBlock(const uint8_t* __restrict p, float* __restrict luma) {
    PixelBlocks::Pixels<N> px;
    PixelBlocks::load<N>(p, px);
    PixelBlocks::luma<N>(px, luma);
}

}  // namespace

gfx::BitmapPtr UnsharpMask::apply(const gfx::Bitmap& src, const SharpenSettings& settings) {
    const float sharpness = std::isnan(settings.sharpness) ? 0 : std::min(settings.sharpness, 1.f);
    const int width = src.width(), height = src.height();
    if (!(sharpness > 0) || width <= 0 || height <= 0) return std::make_shared<gfx::Bitmap>(src);

    // Only the luma is sharpened: the colours all move by the same amount, so edges get no
    // coloured fringes, and one plane is blurred instead of four.
    Plane blurred{width, height, std::vector<float>(size_t(width) * height)};
    PixelBlocks::run(width, height, [&](int y, int x, auto count) {
        lumaBlock<count()>(src.pixel(x, y), &blurred.at(x, y));
    });
    GaussianBlur::applyInPlace(blurred, kMinSigma + kSigmaRange * sharpness);

    const float amount = kMaxAmount * sharpness;
    auto out = std::make_shared<gfx::Bitmap>(width, height, src.format());
    PixelBlocks::run(width, height, [&](int y, int x, auto count) {
        sharpenBlock<count()>(src.pixel(x, y), &blurred.at(x, y), amount,
                              out->mutableRow(y) + 4 * size_t(x));
    });
    return out;
}

}  // namespace orv::strand
