#include "frameworks/strand/kernels/SkinSmooth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "frameworks/strand/kernels/GuidedFilter.h"
#include "frameworks/strand/kernels/ParallelRows.h"
#include "frameworks/strand/kernels/SkinMask.h"

namespace orv::strand {

namespace {

// The smoothing window's radius as a share of the shorter side, so that a preview and the
// full-size picture look alike; at least a few pixels for small pictures.
constexpr float kRadiusShare = 1.f / 150;
constexpr float kMinRadius = 2;
// The guided filter runs on a picture reduced so that its window is about this many pixels
// wide, and its coefficients are interpolated back up (the fast guided filter).
constexpr float kReducedRadius = 3;
// Epsilon is the square of the colour difference (0 to 1) that still counts as texture.
constexpr float kTextureBase = 0.02f, kTextureRange = 0.07f;
// Whitening: the lift of a soft curve on luma at its middle, and the pull towards grey.
constexpr float kFairLift = 0.5f, kFairWhiten = 0.2f;
// The ruddy flush: red up towards full, green and blue down in proportion.
constexpr float kRuddyRed = 0.12f, kRuddyGreen = 0.06f, kRuddyBlue = 0.03f;

// The reduced planes the work is done on: the guided filter's gain, its bias for red, green
// and blue, and the skin mask.
enum Quantity { kGain, kBiasR, kBiasG, kBiasB, kMask, kQuantities };
using Reduced = std::array<Plane, kQuantities>;

struct Strengths {
    float smoothing, fair, ruddy;
};

struct Scale {
    int factor;  // picture pixels a reduced pixel, each way
    int radius;  // of the guided filter's window, in reduced pixels
};

// Premultiplied colour and alpha, 0 to 1, box-averaged down by the scale's factor.
struct Colour {
    Plane red, green, blue, alpha;
};

inline float unit(float v) {
    return std::isfinite(v) ? std::clamp(v, 0.f, 1.f) : 0.f;
}

// Rounded and clamped to [0, high] after the conversion: a float clamp before it lets the
// compiler branch around the conversion, which stops the loop from vectorising.
inline uint8_t toByte(float v, int high) {
    return static_cast<uint8_t>(std::min(high, std::max(0, static_cast<int>(v + 0.5f))));
}

Plane planeOf(int width, int height) {
    return Plane{width, height, std::vector<float>(static_cast<size_t>(width) * height)};
}

Scale scaleFor(int width, int height) {
    const float radius = std::max(kMinRadius, std::min(width, height) * kRadiusShare);
    const int factor = std::max(1, static_cast<int>(std::lround(radius / kReducedRadius)));
    return {factor, std::max(1, static_cast<int>(std::lround(radius / factor)))};
}

void accumulateRow(const uint8_t* __restrict pixels, float* __restrict r, float* __restrict g,
                   float* __restrict b, float* __restrict a, int width) {
    for (int x = 0; x < width; ++x) {
        r[x] += pixels[4 * x];
        g[x] += pixels[4 * x + 1];
        b[x] += pixels[4 * x + 2];
        a[x] += pixels[4 * x + 3];
    }
}

// One reduced row from the column sums of `rows` picture rows.
void reduceRow(const std::array<std::vector<float>, 4>& sums, int width, int factor, int rows,
               Colour& out, size_t at) {
    const int reducedWidth = out.red.width;
    std::array<Plane*, 4> planes{&out.red, &out.green, &out.blue, &out.alpha};
    for (int i = 0; i < reducedWidth; ++i) {
        const int x0 = i * factor, x1 = std::min(width, x0 + factor);
        const float scale = 1.f / (255.f * static_cast<float>((x1 - x0) * rows));
        for (int c = 0; c < 4; ++c) {
            float total = 0;
            for (int x = x0; x < x1; ++x) total += sums[c][x];
            planes[c]->data[at + i] = total * scale;
        }
    }
}

Colour reduce(const gfx::Bitmap& src, int factor) {
    const int width = src.width(), height = src.height();
    const int rw = (width + factor - 1) / factor, rh = (height + factor - 1) / factor;
    Colour out{planeOf(rw, rh), planeOf(rw, rh), planeOf(rw, rh), planeOf(rw, rh)};
    ParallelRows::run(
        rh,
        [&](int begin, int end) {
            std::array<std::vector<float>, 4> sums;
            for (auto& s : sums) s.resize(width);
            for (int j = begin; j < end; ++j) {
                for (auto& s : sums) std::fill(s.begin(), s.end(), 0.f);
                const int y0 = j * factor, y1 = std::min(height, y0 + factor);
                for (int y = y0; y < y1; ++y)
                    accumulateRow(src.row(y), sums[0].data(), sums[1].data(), sums[2].data(),
                                  sums[3].data(), width);
                reduceRow(sums, width, factor, y1 - y0, out, static_cast<size_t>(j) * rw);
            }
        },
        4);
    return out;
}

// The guided filter's coefficients; with no smoothing they are never used.
void smoothingCoefficients(const Colour& colour, int radius, float smoothing, Reduced& out) {
    if (smoothing == 0) {
        for (int q = kGain; q <= kBiasB; ++q) out[q] = planeOf(colour.red.width, colour.red.height);
        return;
    }
    const float texture = kTextureBase + kTextureRange * smoothing;
    auto c = GuidedFilter::coefficients({&colour.red, &colour.green, &colour.blue}, radius,
                                        texture * texture);
    out[kGain] = std::move(c.gain);
    for (int i = 0; i < 3; ++i) out[kBiasR + i] = std::move(c.bias[i]);
}

// Where each picture column falls between two reduced columns.
struct Taps {
    std::vector<int> left, right;
    std::vector<float> weight;
};

Taps tapsFor(int width, int reducedWidth, int factor) {
    Taps taps{std::vector<int>(width), std::vector<int>(width), std::vector<float>(width)};
    for (int x = 0; x < width; ++x) {
        const float u = (x + 0.5f) / factor - 0.5f;
        const int left = std::clamp(static_cast<int>(std::floor(u)), 0, reducedWidth - 1);
        taps.left[x] = left;
        taps.right[x] = std::min(left + 1, reducedWidth - 1);
        taps.weight[x] = std::clamp(u - left, 0.f, 1.f);
    }
    return taps;
}

// The reduced rows a band needs, widened to the picture's width; the last two are kept, since
// consecutive picture rows share them.
class WideRows {
  public:
    WideRows(const Reduced& reduced, const Taps& taps, int width)
        : reduced_(reduced), taps_(taps), width_(width) {
        for (auto& row : rows_) row.resize(static_cast<size_t>(kQuantities) * width);
    }

    // Row `j` widened, without evicting the row `keep`.
    const float* row(int j, int keep) {
        for (int s = 0; s < 2; ++s)
            if (index_[s] == j) return rows_[s].data();
        const int slot = index_[0] == keep ? 1 : 0;
        index_[slot] = j;
        for (int q = 0; q < kQuantities; ++q)
            widen(reduced_[q].data.data() + static_cast<size_t>(j) * reduced_[q].width,
                  rows_[slot].data() + static_cast<size_t>(q) * width_);
        return rows_[slot].data();
    }

  private:
    void widen(const float* in, float* __restrict out) const {
        const int* left = taps_.left.data();
        const int* right = taps_.right.data();
        const float* weight = taps_.weight.data();
        for (int x = 0; x < width_; ++x)
            out[x] = in[left[x]] + weight[x] * (in[right[x]] - in[left[x]]);
    }

    const Reduced& reduced_;
    const Taps& taps_;
    const int width_;
    std::array<std::vector<float>, 2> rows_;
    std::array<int, 2> index_{-1, -1};
};

void blendRows(const float* __restrict upper, const float* __restrict lower, float weight,
               float* __restrict out, size_t count) {
    for (size_t i = 0; i < count; ++i) out[i] = upper[i] + weight * (lower[i] - upper[i]);
}

// One picture row: the guided filter's output blended in by mask × smoothing (on premultiplied
// colour, kept within alpha), then whitening and flush on the colour under the alpha.
void toneRow(const uint8_t* __restrict src, uint8_t* __restrict dst, const float* __restrict line,
             int width, Strengths s) {
    const float* __restrict gain = line + static_cast<size_t>(kGain) * width;
    const float* __restrict biasR = line + static_cast<size_t>(kBiasR) * width;
    const float* __restrict biasG = line + static_cast<size_t>(kBiasG) * width;
    const float* __restrict biasB = line + static_cast<size_t>(kBiasB) * width;
    const float* __restrict mask = line + static_cast<size_t>(kMask) * width;
    constexpr float kByte = 1.f / 255;
    for (int x = 0; x < width; ++x) {
        const float alpha = src[4 * x + 3] * kByte;
        const float m = mask[x];
        const float blend = m * s.smoothing;
        float r = src[4 * x] * kByte, g = src[4 * x + 1] * kByte, b = src[4 * x + 2] * kByte;
        r = std::clamp(r + blend * (gain[x] * r + biasR[x] - r), 0.f, alpha);
        g = std::clamp(g + blend * (gain[x] * g + biasG[x] - g), 0.f, alpha);
        b = std::clamp(b + blend * (gain[x] * b + biasB[x] - b), 0.f, alpha);
        // Not max(alpha, 1/255), which would branch around the division: colour under a zero
        // alpha is 0 already, and 1e-6 is far too small to change a byte.
        const float unpremultiply = 1 / (alpha + 1e-6f);
        r *= unpremultiply, g *= unpremultiply, b *= unpremultiply;
        const float luma = 0.299f * r + 0.587f * g + 0.114f * b;
        const float fair = s.fair * m, lift = kFairLift * luma * (1 - luma);
        r += fair * (lift + kFairWhiten * (luma - r));
        g += fair * (lift + kFairWhiten * (luma - g));
        b += fair * (lift + kFairWhiten * (luma - b));
        const float flush = s.ruddy * m;
        r += flush * kRuddyRed * (1 - r);
        g -= flush * kRuddyGreen * g;
        b -= flush * kRuddyBlue * b;
        const float premultiply = alpha * 255;
        dst[4 * x] = toByte(r * premultiply, src[4 * x + 3]);
        dst[4 * x + 1] = toByte(g * premultiply, src[4 * x + 3]);
        dst[4 * x + 2] = toByte(b * premultiply, src[4 * x + 3]);
        dst[4 * x + 3] = src[4 * x + 3];
    }
}

gfx::BitmapPtr render(const gfx::Bitmap& src, int factor, const Reduced& reduced, Strengths s) {
    const int width = src.width(), height = src.height(), reducedHeight = reduced[kMask].height;
    auto out = std::make_shared<gfx::Bitmap>(width, height, src.format());
    const Taps taps = tapsFor(width, reduced[kMask].width, factor);
    ParallelRows::run(height, [&](int begin, int end) {
        WideRows wide(reduced, taps, width);
        std::vector<float> line(static_cast<size_t>(kQuantities) * width);
        for (int y = begin; y < end; ++y) {
            const float v = (y + 0.5f) / factor - 0.5f;
            const int upper = std::clamp(static_cast<int>(std::floor(v)), 0, reducedHeight - 1);
            const int lower = std::min(upper + 1, reducedHeight - 1);
            const float* upperRow = wide.row(upper, lower);
            const float* lowerRow = wide.row(lower, upper);
            blendRows(upperRow, lowerRow, std::clamp(v - upper, 0.f, 1.f), line.data(),
                      line.size());
            toneRow(src.row(y), out->mutableRow(y), line.data(), width, s);
        }
    });
    return out;
}

}  // namespace

gfx::BitmapPtr SkinSmooth::apply(const gfx::Bitmap& src, const SkinSettings& settings) {
    const Strengths s{unit(settings.smoothing), unit(settings.fair), unit(settings.ruddy)};
    if (src.width() < 1 || src.height() < 1 || (s.smoothing == 0 && s.fair == 0 && s.ruddy == 0))
        return std::make_shared<gfx::Bitmap>(src);
    const Scale scale = scaleFor(src.width(), src.height());
    const Colour colour = reduce(src, scale.factor);
    Reduced reduced;
    reduced[kMask] = SkinMask::fromColour(colour.red, colour.green, colour.blue, colour.alpha);
    smoothingCoefficients(colour, scale.radius, s.smoothing, reduced);
    return render(src, scale.factor, reduced, s);
}

}  // namespace orv::strand
