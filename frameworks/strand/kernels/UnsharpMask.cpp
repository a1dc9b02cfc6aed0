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
// Rows a band of the luma plane holds, and how far beyond it (in sigmas) the band reads so that
// the blur's tails are the same as over the whole picture.
constexpr int kBandRows = 256;
constexpr double kHaloSigmas = 8;

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
    // coloured fringes, and one plane is blurred instead of four. The plane is made and blurred
    // a band of rows at a time, with enough rows beyond the band that the blur's tails reach
    // nothing it doesn't see: a full-size float plane would weigh as much as the picture.
    const double sigma = kMinSigma + kSigmaRange * sharpness;
    const int halo = static_cast<int>(std::ceil(kHaloSigmas * sigma));
    const float amount = kMaxAmount * sharpness;
    auto out = std::make_shared<gfx::Bitmap>(width, height, src.format());
    Plane blurred{width, 0, {}};
    for (int top = 0; top < height; top += kBandRows) {
        const int rows = std::min(kBandRows, height - top);
        const int from = std::max(0, top - halo), to = std::min(height, top + rows + halo);
        blurred.height = to - from;
        blurred.data.resize(size_t(width) * blurred.height);
        PixelBlocks::run(width, blurred.height, [&](int y, int x, auto count) {
            lumaBlock<count()>(src.pixel(x, from + y), &blurred.at(x, y));
        });
        GaussianBlur::applyInPlace(blurred, sigma);
        PixelBlocks::run(width, rows, [&](int y, int x, auto count) {
            sharpenBlock<count()>(src.pixel(x, top + y), &blurred.at(x, top + y - from), amount,
                                  out->mutableRow(top + y) + 4 * size_t(x));
        });
    }
    return out;
}

}  // namespace orv::strand
