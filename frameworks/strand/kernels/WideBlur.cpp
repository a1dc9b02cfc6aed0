#include "frameworks/strand/kernels/WideBlur.h"

#include <algorithm>
#include <cmath>

#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/ParallelRows.h"
#include "frameworks/strand/kernels/PixelBlocks.h"
#include "platform/gfx/BitmapOps.h"

namespace orv::strand {

namespace {

// The sigma left to blur at the reduced size, in its pixels: enough that linear interpolation
// shows no steps.
constexpr double kReducedSigma = 2;

// Linear interpolation of bytes in 8-bit fixed point: share 0 to 256 of `b`.
template <int N>
void mixBytes(const uint8_t* __restrict a, const uint8_t* __restrict b, int share,
              uint8_t* __restrict out) {
    for (int i = 0; i < 4 * N; ++i)
        out[i] = uint8_t((a[i] * (256 - share) + b[i] * share + 128) >> 8);
}

}  // namespace

WideBlur::WideBlur(const gfx::Bitmap& src, double sigma, const Prepare& prepare)
    : width_(src.width()) {
    const int width = src.width(), height = src.height();
    const int factor = std::isfinite(sigma) ? int(std::min(sigma / kReducedSigma, 1e6)) : 0;
    if (factor < 2 || width <= 0 || height <= 0) {
        const gfx::BitmapPtr prepared = prepare ? prepare(src) : nullptr;
        blurred_ = GaussianBlur::apply(prepared ? *prepared : src, sigma);
        return;
    }
    const int smallWidth = std::max(1, (width + factor / 2) / factor);
    const int smallHeight = std::max(1, (height + factor / 2) / factor);
    gfx::BitmapPtr small = gfx::BitmapOps::resized(src, smallWidth, smallHeight);
    if (prepare) small = prepare(*small);
    // The reduction's box (variance f²/12) and the enlargement's tent (f²/6) blur as well.
    const double rest = std::sqrt(std::max(sigma * sigma - factor * factor / 4.0, 1.0)) / factor;
    blurred_ = GaussianBlur::apply(*small, rest);
    down_.emplace(height, smallHeight);

    const LinearAxis across(width, smallWidth);
    const size_t stride = 4 * size_t(width);
    widened_.resize(stride * smallHeight);
    ParallelRows::run(smallHeight, [&](int begin, int end) {
        for (int i = begin; i < end; ++i) {
            const uint8_t* in = blurred_->row(i);
            uint8_t* out = widened_.data() + stride * i;
            for (int x = 0; x < width; ++x) {
                mixBytes<1>(in + 4 * size_t(across.lower[x]), in + 4 * size_t(across.upper[x]),
                            int(across.share[x] * 256 + 0.5f), out + 4 * size_t(x));
            }
        }
    });
}

const uint8_t* WideBlur::row(int y, std::vector<uint8_t>& scratch) const {
    if (!down_) return blurred_->row(y);
    const LinearAxis& down = *down_;
    const size_t stride = 4 * size_t(width_);
    const uint8_t* a = widened_.data() + stride * down.lower[y];
    const uint8_t* b = widened_.data() + stride * down.upper[y];
    const int share = int(down.share[y] * 256 + 0.5f);
    scratch.resize(stride);
    uint8_t* out = scratch.data();
    PixelBlocks::row(width_, [&](int x, auto count) {
        mixBytes<count()>(a + 4 * size_t(x), b + 4 * size_t(x), share, out + 4 * size_t(x));
    });
    return out;
}

}  // namespace orv::strand
