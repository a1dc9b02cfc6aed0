#include "platform/gfx/BitmapOps.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

namespace orv::gfx {

namespace {

// ---- resampling
//
// Each axis gets a table of weights: every target pixel reads the same number of neighbouring
// source pixels (`taps`), starting at its own `start`, with weights that sum to kOne. A fixed
// tap count per axis keeps the inner loops free of per-pixel bounds, so they vectorise.
// The weights are non-negative, so no result can leave 0..255 and no clamping is needed.

constexpr int kWeightBits = 14;
constexpr int32_t kOne = 1 << kWeightBits;
// The vertical pass keeps 7 fractional bits in its signed 16-bit row (so 16-bit multiplies
// serve the horizontal pass), and the horizontal pass rounds once to the final byte.
constexpr int kMidShift = kWeightBits - 7;
constexpr int kOutShift = kWeightBits + 7;

struct AxisWeights {
    int taps = 0;
    std::vector<int> start;        // first source index of each target pixel
    std::vector<int16_t> weights;  // taps per target pixel
};

// Source coverage of target pixel i when reducing: the share of each source pixel inside
// [i·scale, (i+1)·scale), divided by the scale.
void areaWeights(int i, double scale, int& first, std::vector<double>& out) {
    const double lo = i * scale, hi = lo + scale;
    first = static_cast<int>(std::floor(lo));
    const int last = static_cast<int>(std::ceil(hi)) - 1;
    out.clear();
    for (int j = first; j <= last; ++j) {
        out.push_back((std::min<double>(hi, j + 1) - std::max<double>(lo, j)) / scale);
    }
}

// Linear interpolation between the two source pixels around target pixel i's centre.
void linearWeights(int i, double scale, int srcCount, int& first, std::vector<double>& out) {
    const double pos = std::clamp((i + 0.5) * scale - 0.5, 0.0, srcCount - 1.0);
    first = std::min(static_cast<int>(pos), srcCount - 1);
    const double f = pos - first;
    out.assign({1 - f, f});
}

// Rounds the running total rather than each weight, so every target pixel's weights sum to
// exactly kOne (a flat area stays exactly flat) and no weight is off by more than one unit,
// however many source pixels share a target pixel.
void quantise(const std::vector<double>& w, int16_t* out) {
    double total = 0;
    long previous = 0;
    for (size_t k = 0; k < w.size(); ++k) {
        total += w[k];
        const long rounded = k + 1 == w.size() ? kOne : std::lround(total * kOne);
        out[k] = static_cast<int16_t>(rounded - previous);
        previous = rounded;
    }
}

AxisWeights axisWeights(int srcCount, int dstCount) {
    const double scale = static_cast<double>(srcCount) / dstCount;
    const bool reducing = dstCount < srcCount;
    AxisWeights axis;
    axis.taps = std::min(srcCount, reducing ? static_cast<int>(std::ceil(scale)) + 1 : 2);
    axis.start.resize(dstCount);
    axis.weights.assign(static_cast<size_t>(dstCount) * axis.taps, 0);
    std::vector<double> w;
    for (int i = 0; i < dstCount; ++i) {
        int first = 0;
        if (reducing) {
            areaWeights(i, scale, first, w);
        } else {
            linearWeights(i, scale, srcCount, first, w);
        }
        // Drop coverage past the last source pixel (floating-point slack), then move the
        // window left where it would run off the end; its weights move right to match.
        while (first + static_cast<int>(w.size()) > srcCount) w.pop_back();
        const int start = std::min(first, srcCount - axis.taps);
        axis.start[i] = start;
        quantise(w, &axis.weights[static_cast<size_t>(i) * axis.taps + (first - start)]);
    }
    return axis;
}

// Both passes walk a row in blocks of a fixed length, so that their loops have a trip count the
// compiler knows and vectorise at -O2 without a scalar tail.
constexpr size_t kBlock = 128;

// 16-bit operands with a 32-bit product: the widening multiply every SIMD level has.
void accumulateBlock(const uint8_t* __restrict s, int16_t w, int32_t* __restrict acc) {
    for (size_t i = 0; i < kBlock; ++i) acc[i] += int32_t{w} * int16_t{s[i]};
}

void storeBlock(const int32_t* __restrict acc, int16_t* __restrict mid) {
    for (size_t i = 0; i < kBlock; ++i) mid[i] = static_cast<int16_t>(acc[i] >> kMidShift);
}

// One target row of the vertical pass: the weighted sum of `taps` source rows, kept with 7
// fractional bits. `mid` has room for a whole number of blocks.
void verticalRow(const Bitmap& src, const AxisWeights& v, int y, int16_t* mid) {
    const size_t n = 4 * static_cast<size_t>(src.width());
    const int16_t* w = &v.weights[static_cast<size_t>(y) * v.taps];
    alignas(64) int32_t acc[kBlock];
    alignas(64) uint8_t tail[kBlock] = {};
    for (size_t at = 0; at < n; at += kBlock) {
        const size_t len = std::min(kBlock, n - at);
        std::fill(acc, acc + kBlock, 1 << (kMidShift - 1));  // rounds the shift in storeBlock
        for (int k = 0; k < v.taps; ++k) {
            if (w[k] == 0) continue;
            const uint8_t* s = src.row(v.start[y] + k) + at;
            if (len < kBlock) s = static_cast<const uint8_t*>(std::memcpy(tail, s, len));
            accumulateBlock(s, w[k], acc);
        }
        storeBlock(acc, mid + at);
    }
}

// The horizontal pass works on blocks of target pixels. For each tap it first gathers the
// source pixel each target pixel reads into a contiguous block, so the multiply-adds run on
// plain arrays with weights laid out per channel.
constexpr int kBlockPixels = kBlock / 4;

struct RowPlan {
    int taps = 0;
    int blocks = 0;
    std::vector<int> start;        // per target pixel, padded to whole blocks
    std::vector<int16_t> weights;  // per block, per tap: one weight for each channel of a pixel
};

RowPlan rowPlan(const AxisWeights& axis, int width) {
    RowPlan plan;
    plan.taps = axis.taps;
    plan.blocks = (width + kBlockPixels - 1) / kBlockPixels;
    // Padding pixels read source pixel 0 with zero weight.
    plan.start.assign(static_cast<size_t>(plan.blocks) * kBlockPixels, 0);
    std::copy(axis.start.begin(), axis.start.end(), plan.start.begin());
    plan.weights.assign(plan.start.size() * plan.taps * 4, 0);
    for (int x = 0; x < width; ++x) {
        const size_t block = x / kBlockPixels, lane = 4 * static_cast<size_t>(x % kBlockPixels);
        for (int k = 0; k < plan.taps; ++k) {
            int16_t* w = &plan.weights[(block * plan.taps + k) * kBlock + lane];
            std::fill(w, w + 4, axis.weights[static_cast<size_t>(x) * plan.taps + k]);
        }
    }
    return plan;
}

void gatherBlock(const int16_t* mid, const int* start, int k, int16_t* __restrict out) {
    for (int p = 0; p < kBlockPixels; ++p) {
        std::memcpy(out + 4 * p, mid + 4 * static_cast<size_t>(start[p] + k), 4 * sizeof(int16_t));
    }
}

void multiplyAddBlock(const int16_t* __restrict s, const int16_t* __restrict w,
                      int32_t* __restrict acc) {
    for (size_t i = 0; i < kBlock; ++i) acc[i] += int32_t{w[i]} * s[i];
}

void narrowBlock(const int32_t* __restrict acc, uint8_t* __restrict out) {
    for (size_t i = 0; i < kBlock; ++i) out[i] = static_cast<uint8_t>(acc[i] >> kOutShift);
}

// One target row of the horizontal pass over the vertical pass's row; `out` has room for
// whole blocks.
void horizontalRow(const int16_t* mid, const RowPlan& plan, uint8_t* out) {
    alignas(64) int16_t gathered[kBlock];
    alignas(64) int32_t acc[kBlock];
    for (int b = 0; b < plan.blocks; ++b) {
        const int* start = &plan.start[static_cast<size_t>(b) * kBlockPixels];
        const int16_t* w = &plan.weights[static_cast<size_t>(b) * plan.taps * kBlock];
        std::fill(acc, acc + kBlock, 1 << (kOutShift - 1));  // rounds the shift in narrowBlock
        for (int k = 0; k < plan.taps; ++k, w += kBlock) {
            gatherBlock(mid, start, k, gathered);
            multiplyAddBlock(gathered, w, acc);
        }
        narrowBlock(acc, out + static_cast<size_t>(b) * kBlock);
    }
}

// ---- orientation

// Where the first displayed pixel comes from and how the source pointer moves for one step
// right and one step down in the displayed picture.
struct Walk {
    const uint8_t* origin;
    ptrdiff_t stepX;
    ptrdiff_t stepY;
};

Walk walkFor(const Bitmap& s, ImageOrientation o) {
    const int w = s.width(), h = s.height();
    const ptrdiff_t px = 4, row = static_cast<ptrdiff_t>(s.rowBytes());
    switch (o) {
        case ImageOrientation::Up:
            return {s.pixel(0, 0), px, row};
        case ImageOrientation::Down:
            return {s.pixel(w - 1, h - 1), -px, -row};
        // Turned a quarter counter-clockwise: the stored right column becomes the top row.
        case ImageOrientation::Left:
            return {s.pixel(w - 1, 0), row, -px};
        // Turned a quarter clockwise: the stored left column, read bottom up, is the top row.
        case ImageOrientation::Right:
            return {s.pixel(0, h - 1), -row, px};
        case ImageOrientation::UpMirrored:
            return {s.pixel(w - 1, 0), -px, row};
        case ImageOrientation::DownMirrored:
            return {s.pixel(0, h - 1), px, -row};
        // Mirrored then turned: a transpose and an anti-transpose.
        case ImageOrientation::LeftMirrored:
            return {s.pixel(0, 0), row, px};
        case ImageOrientation::RightMirrored:
            return {s.pixel(w - 1, h - 1), -row, -px};
    }
    return {s.pixel(0, 0), px, row};
}

// Copies in square tiles so that a quarter turn reads and writes within a few cache lines.
void copyWalk(const Walk& walk, Bitmap& out) {
    constexpr int kTile = 64;
    for (int ty = 0; ty < out.height(); ty += kTile) {
        const int yEnd = std::min(ty + kTile, out.height());
        for (int tx = 0; tx < out.width(); tx += kTile) {
            const int xEnd = std::min(tx + kTile, out.width());
            for (int y = ty; y < yEnd; ++y) {
                const uint8_t* s = walk.origin + y * walk.stepY + tx * walk.stepX;
                uint8_t* d = out.mutableRow(y) + 4 * static_cast<size_t>(tx);
                for (int x = tx; x < xEnd; ++x, s += walk.stepX, d += 4) std::memcpy(d, s, 4);
            }
        }
    }
}

}  // namespace

BitmapPtr BitmapOps::resized(const Bitmap& source, int width, int height) {
    if (width < 1 || height < 1 || source.width() < 1 || source.height() < 1) return nullptr;
    const RowPlan h = rowPlan(axisWeights(source.width(), width), width);
    const AxisWeights v = axisWeights(source.height(), height);
    const size_t n = 4 * static_cast<size_t>(source.width());
    std::vector<int16_t> mid((n + kBlock - 1) / kBlock * kBlock);
    std::vector<uint8_t> row(static_cast<size_t>(h.blocks) * kBlock);
    auto out = std::make_shared<Bitmap>(width, height, source.format());
    for (int y = 0; y < height; ++y) {
        verticalRow(source, v, y, mid.data());
        horizontalRow(mid.data(), h, row.data());
        std::memcpy(out->mutableRow(y), row.data(), 4 * static_cast<size_t>(width));
    }
    return out;
}

BitmapPtr BitmapOps::cropped(const Bitmap& source, int x, int y, int width, int height) {
    const int x0 = std::max(x, 0), y0 = std::max(y, 0);
    const int x1 = std::min<long long>(static_cast<long long>(x) + width, source.width());
    const int y1 = std::min<long long>(static_cast<long long>(y) + height, source.height());
    if (x1 <= x0 || y1 <= y0) return nullptr;
    auto out = std::make_shared<Bitmap>(x1 - x0, y1 - y0, source.format());
    for (int r = y0; r < y1; ++r) {
        std::memcpy(out->mutableRow(r - y0), source.pixel(x0, r), 4 * static_cast<size_t>(x1 - x0));
    }
    return out;
}

BitmapPtr BitmapOps::oriented(const Bitmap& source, ImageOrientation orientation) {
    const bool turn = isQuarterTurn(orientation);
    auto out = std::make_shared<Bitmap>(turn ? source.height() : source.width(),
                                        turn ? source.width() : source.height(), source.format());
    if (out->width() > 0 && out->height() > 0) copyWalk(walkFor(source, orientation), *out);
    return out;
}

void BitmapOps::swapRedBlueRow(const uint8_t* src, uint8_t* dst, int count, bool opaque) {
    static_assert(std::endian::native == std::endian::little, "pixels are read as words");
    // A pixel is one little-endian word: the first byte is its low 8 bits, the third the bits
    // from 16. Word operations on a fixed run of pixels vectorise; byte moves do not.
    const uint32_t alpha = opaque ? 0xFF000000u : 0;
    auto swap = [alpha](uint32_t v) {
        return (v & 0xFF00FF00u) | ((v >> 16) & 0xFFu) | ((v & 0xFFu) << 16) | alpha;
    };
    constexpr int kRun = 8;
    int i = 0;
    for (; i + kRun <= count; i += kRun) {
        uint32_t words[kRun];
        std::memcpy(words, src + 4 * static_cast<size_t>(i), sizeof words);
        for (uint32_t& w : words) w = swap(w);
        std::memcpy(dst + 4 * static_cast<size_t>(i), words, sizeof words);
    }
    for (; i < count; ++i) {
        uint32_t w;
        std::memcpy(&w, src + 4 * static_cast<size_t>(i), 4);
        w = swap(w);
        std::memcpy(dst + 4 * static_cast<size_t>(i), &w, 4);
    }
}

void BitmapOps::premultiplyRow(uint8_t* pixels, int count) {
    for (int i = 0; i < count; ++i, pixels += 4) {
        const unsigned a = pixels[3];
        for (int c = 0; c < 3; ++c) {
            // c·a/255 rounded to nearest, without a division.
            const unsigned v = pixels[c] * a + 128;
            pixels[c] = static_cast<uint8_t>((v + (v >> 8)) >> 8);
        }
    }
}

void BitmapOps::unpremultiplyRow(uint8_t* pixels, int count) {
    for (int i = 0; i < count; ++i, pixels += 4) {
        const unsigned a = pixels[3];
        for (int c = 0; c < 3; ++c) {
            const unsigned v = a == 0 ? 0 : (pixels[c] * 255u + a / 2) / a;
            pixels[c] = static_cast<uint8_t>(std::min(v, 255u));
        }
    }
}

}  // namespace orv::gfx
