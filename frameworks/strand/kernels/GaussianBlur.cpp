#include "frameworks/strand/kernels/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstring>
#include <memory>

#include "frameworks/strand/kernels/CpuClones.h"
#include "frameworks/strand/kernels/ParallelRows.h"

namespace orv::strand {

namespace {

// Lines are filtered side by side, interleaved position by position: kLanes values of one
// position lie together (16 pixels of R, G, B, A, or 64 floats of a plane), so that every inner
// loop runs over a fixed count of contiguous values and vectorises. For the columns these are
// the values of a strip of adjacent columns in one row, as they lie in memory.
constexpr int kLanes = 64;
// Positions replicated beyond either end, for the recursions' look-back and look-ahead.
constexpr int kPad = 2;

// Above this sigma the recursion's poles come so near 1 that float loses levels; double keeps
// them exact to any practical size.
constexpr double kFloatSigmaLimit = 150;
// Below this sigma the neighbours' weights are under e^−50: the blur is a copy.
constexpr double kMinSigma = 0.1;
constexpr int kMaxBoxRadius = 1 << 24;

// The gaussian as a recursive filter of order four (Deriche): a causal and an anticausal part,
// each the sum of two second-order sections. Its cost does not depend on sigma and it is
// within a few hundredths of a level of the sampled gaussian from sigma 0.2 upwards.
template <typename T>
struct Recursion {
    T n0[2], n1[2];  // causal numerator
    T m1[2], m2[2];  // anticausal numerator
    T d1[2], d2[2];  // denominator, shared
    // Each section's output for a constant input of 1, to start at the replicated edges.
    T causalGain[2], anticausalGain[2];

    static Recursion make(double sigma) {
        // Deriche's fit of exp(−t² / 2) on t ≥ 0: a cos(ωt) + b sin(ωt), damped by e^(−λt).
        constexpr double kA[2] = {1.680, -0.6803}, kB[2] = {3.735, -0.2598};
        constexpr double kOmega[2] = {0.6318, 1.997}, kLambda[2] = {1.783, 1.723};
        double n0[2], n1[2], m1[2], m2[2], d1[2], d2[2], total = 0;
        for (int k = 0; k < 2; ++k) {
            const std::complex<double> pole =
                std::exp(std::complex<double>(-kLambda[k], kOmega[k]) / sigma);
            const std::complex<double> residue = std::complex<double>(kA[k], -kB[k]) / 2.0;
            n0[k] = 2 * residue.real();
            n1[k] = -2 * (residue * std::conj(pole)).real();
            d1[k] = -2 * pole.real();
            d2[k] = std::norm(pole);
            m1[k] = n1[k] - d1[k] * n0[k];
            m2[k] = -d2[k] * n0[k];
            total += (n0[k] + n1[k] + m1[k] + m2[k]) / (1 + d1[k] + d2[k]);
        }
        Recursion r;
        for (int k = 0; k < 2; ++k) {
            const double denominator = 1 + d1[k] + d2[k];
            r.n0[k] = T(n0[k] / total);
            r.n1[k] = T(n1[k] / total);
            r.m1[k] = T(m1[k] / total);
            r.m2[k] = T(m2[k] / total);
            r.d1[k] = T(d1[k]);
            r.d2[k] = T(d2[k]);
            r.causalGain[k] = T((n0[k] + n1[k]) / total / denominator);
            r.anticausalGain[k] = T((m1[k] + m2[k]) / total / denominator);
        }
        return r;
    }

    // `x` has kPad replicated positions before 0 and after n − 1; `y` gets the n results.
    // Inlined into the callers' processor-specific builds.
    [[gnu::always_inline]] void run(const T* __restrict x, T* __restrict y, int n) const {
        // The last three outputs of each section, used in turn.
        alignas(64) T ring[2][3][kLanes];
        for (int k = 0; k < 2; ++k) {
            for (int l = 0; l < kLanes; ++l) ring[k][1][l] = ring[k][2][l] = causalGain[k] * x[l];
        }
        const T a0 = n0[0], a1 = n1[0], b0 = n0[1], b1 = n1[1];
        const T ad1 = d1[0], ad2 = d2[0], bd1 = d1[1], bd2 = d2[1];
        for (int i = 0, now = 0; i < n; ++i, now = now == 2 ? 0 : now + 1) {
            const int last = now == 0 ? 2 : now - 1, before = last == 0 ? 2 : last - 1;
            causalStep(x + i * kLanes, x + (i - 1) * kLanes, ring[0][now], ring[0][last],
                       ring[0][before], ring[1][now], ring[1][last], ring[1][before],
                       y + i * kLanes, a0, a1, ad1, ad2, b0, b1, bd1, bd2);
        }
        const T* end = x + (n - 1) * kLanes;
        for (int k = 0; k < 2; ++k) {
            for (int l = 0; l < kLanes; ++l) {
                ring[k][1][l] = ring[k][2][l] = anticausalGain[k] * end[l];
            }
        }
        const T c1 = m1[0], c2 = m2[0], e1 = m1[1], e2 = m2[1];
        for (int i = n - 1, now = 0; i >= 0; --i, now = now == 2 ? 0 : now + 1) {
            const int last = now == 0 ? 2 : now - 1, before = last == 0 ? 2 : last - 1;
            anticausalStep(x + (i + 1) * kLanes, x + (i + 2) * kLanes, ring[0][now], ring[0][last],
                           ring[0][before], ring[1][now], ring[1][last], ring[1][before],
                           y + i * kLanes, c1, c2, ad1, ad2, e1, e2, bd1, bd2);
        }
    }

    static void causalStep(const T* __restrict x0, const T* __restrict x1, T* __restrict p0,
                           const T* __restrict p1, const T* __restrict p2, T* __restrict q0,
                           const T* __restrict q1, const T* __restrict q2, T* __restrict out, T a0,
                           T a1, T ad1, T ad2, T b0, T b1, T bd1, T bd2) {
        for (int l = 0; l < kLanes; ++l) {
            const T p = a0 * x0[l] + a1 * x1[l] - ad1 * p1[l] - ad2 * p2[l];
            const T q = b0 * x0[l] + b1 * x1[l] - bd1 * q1[l] - bd2 * q2[l];
            p0[l] = p;
            q0[l] = q;
            out[l] = p + q;
        }
    }

    static void anticausalStep(const T* __restrict x1, const T* __restrict x2, T* __restrict p0,
                               const T* __restrict p1, const T* __restrict p2, T* __restrict q0,
                               const T* __restrict q1, const T* __restrict q2, T* __restrict out,
                               T c1, T c2, T ad1, T ad2, T e1, T e2, T bd1, T bd2) {
        for (int l = 0; l < kLanes; ++l) {
            const T p = c1 * x1[l] + c2 * x2[l] - ad1 * p1[l] - ad2 * p2[l];
            const T q = e1 * x1[l] + e2 * x2[l] - bd1 * q1[l] - bd2 * q2[l];
            p0[l] = p;
            q0[l] = q;
            out[l] += p + q;
        }
    }
};

// The mean of each position's (2 × radius + 1) window, the edges repeated; running sums in
// double so that long lines do not drift.
struct BoxMean {
    int radius;

    [[gnu::always_inline]] void run(const float* __restrict x, float* __restrict y, int n) const {
        alignas(64) double sum[kLanes];
        const float* first = x;
        const float* last = x + (n - 1) * kLanes;
        const int inside = std::min(radius, n - 1);
        const double before = radius, after = std::max(0, radius - (n - 1));
        for (int l = 0; l < kLanes; ++l) sum[l] = before * first[l] + after * last[l];
        for (int i = 0; i <= inside; ++i) addLanes(x + i * kLanes, sum);
        const double scale = 1.0 / (2.0 * radius + 1.0);
        storeLanes(sum, scale, y);
        for (int i = 1; i < n; ++i) {
            const float* in = x + std::min(i + radius, n - 1) * kLanes;
            const float* out = x + std::max(i - radius - 1, 0) * kLanes;
            slideLanes(in, out, sum, scale, y + i * kLanes);
        }
    }

    static void addLanes(const float* __restrict x, double* __restrict sum) {
        for (int l = 0; l < kLanes; ++l) sum[l] += x[l];
    }
    static void storeLanes(const double* __restrict sum, double scale, float* __restrict y) {
        for (int l = 0; l < kLanes; ++l) y[l] = float(sum[l] * scale);
    }
    static void slideLanes(const float* __restrict in, const float* __restrict out,
                           double* __restrict sum, double scale, float* __restrict y) {
        for (int l = 0; l < kLanes; ++l) {
            sum[l] += double(in[l]) - double(out[l]);
            y[l] = float(sum[l] * scale);
        }
    }
};

// R, G, B, A bytes, four lanes a pixel. Results are rounded back to bytes and, in the last
// pass, each colour is kept at or below its alpha, which the filter's tiny negative lobes could
// otherwise break.
struct Bytes {
    using Value = uint8_t;
    static constexpr int kChannels = 4;

    template <typename T>
    static void toLanes(const uint8_t* __restrict in, T* __restrict x) {
        for (int l = 0; l < kLanes; ++l) x[l] = T(in[l]);
    }

    // Rounds and saturates in whole numbers, which vectorise where float min and max don't.
    template <typename T>
    static void fromLanes(const T* __restrict y, bool clampToAlpha, uint8_t* __restrict out) {
        for (int l = 0; l < kLanes; ++l) {
            const int v = int(y[l] + T(0.5));
            out[l] = uint8_t(v < 0 ? 0 : v > 255 ? 255 : v);
        }
        if (!clampToAlpha) return;
        for (int g = 0; g < kLanes / 4; ++g) {
            uint8_t* pixel = out + 4 * g;
            const uint8_t alpha = pixel[3];
            pixel[0] = std::min(pixel[0], alpha);
            pixel[1] = std::min(pixel[1], alpha);
            pixel[2] = std::min(pixel[2], alpha);
            pixel[3] = alpha;
        }
    }
};

// Floats of a plane, one lane each.
struct Floats {
    using Value = float;
    static constexpr int kChannels = 1;

    template <typename T>
    static void toLanes(const float* __restrict in, T* __restrict x) {
        for (int l = 0; l < kLanes; ++l) x[l] = T(in[l]);
    }

    template <typename T>
    static void fromLanes(const T* __restrict y, bool, float* __restrict out) {
        for (int l = 0; l < kLanes; ++l) out[l] = float(y[l]);
    }
};

// The rows of a picture as lines: a group's lines are read a pixel from each row at a time,
// and written back the same way into `dst` (which may be `src`: a group is read whole first).
template <typename Kind>
struct Rows {
    using Value = typename Kind::Value;
    static constexpr int kChannels = Kind::kChannels;
    static constexpr int kLinesPerGroup = kLanes / kChannels;
    const Value* src;
    size_t srcStride;  // values a row
    Value* dst;
    size_t dstStride;

    template <typename T>
    [[gnu::always_inline]] void load(int first, int count, int n, T* __restrict x) const {
        const Value* lines[kLinesPerGroup];
        for (int g = 0; g < kLinesPerGroup; ++g) {
            lines[g] = src + srcStride * static_cast<size_t>(first + std::min(g, count - 1));
        }
        alignas(64) Value values[kLanes];
        for (int i = 0; i < n; ++i) {
            for (int g = 0; g < kLinesPerGroup; ++g) {
                std::memcpy(values + kChannels * g, lines[g] + kChannels * size_t(i),
                            sizeof(Value) * kChannels);
            }
            Kind::toLanes(values, x + i * kLanes);
        }
    }

    template <typename T>
    [[gnu::always_inline]] void store(int first, int count, int n, const T* __restrict y) const {
        alignas(64) Value values[kLanes];
        for (int i = 0; i < n; ++i) {
            Kind::fromLanes(y + i * kLanes, false, values);
            for (int g = 0; g < count; ++g) {
                std::memcpy(dst + dstStride * size_t(first + g) + kChannels * size_t(i),
                            values + kChannels * g, sizeof(Value) * kChannels);
            }
        }
    }
};

// The columns of a picture as lines, filtered in place: a group is a strip of adjacent
// columns, whose values in one row are contiguous lanes. The last pass.
template <typename Kind>
struct Columns {
    using Value = typename Kind::Value;
    static constexpr int kChannels = Kind::kChannels;
    static constexpr int kLinesPerGroup = kLanes / kChannels;
    Value* data;
    size_t stride;  // values a row
    bool clampToAlpha;

    template <typename T>
    [[gnu::always_inline]] void load(int first, int count, int n, T* __restrict x) const {
        alignas(64) Value values[kLanes] = {};
        for (int i = 0; i < n; ++i) {
            const Value* row = data + stride * size_t(i) + kChannels * size_t(first);
            if (count == kLinesPerGroup) {
                Kind::toLanes(row, x + i * kLanes);
            } else {
                std::memcpy(values, row, sizeof(Value) * kChannels * count);
                Kind::toLanes(values, x + i * kLanes);
            }
        }
    }

    template <typename T>
    [[gnu::always_inline]] void store(int first, int count, int n, const T* __restrict y) const {
        alignas(64) Value values[kLanes];
        for (int i = 0; i < n; ++i) {
            Kind::fromLanes(y + i * kLanes, clampToAlpha, values);
            Value* row = data + stride * size_t(i) + kChannels * size_t(first);
            if (count == kLinesPerGroup) {
                std::memcpy(row, values, sizeof(values));  // a fixed size: inlined
            } else {
                std::memcpy(row, values, sizeof(Value) * kChannels * count);
            }
        }
    }
};

// Two buffers of the calling thread, kept from call to call: fresh ones of this size would
// come from the system each time and cost more in page faults than the filter itself.
template <typename T>
T* scratch(int which, size_t count) {
    thread_local std::vector<T> buffers[2];
    std::vector<T>& buffer = buffers[which];
    if (buffer.size() < count) buffer.resize(count);
    return buffer.data();
}

// Filters the groups [begin, end) of `lineCount` lines of `n` positions. Built for AVX2 as
// well, chosen at run time where the processor has it: twice the lanes an instruction.
template <typename T, typename Lines, typename Filter>
ORV_AVX2_CLONES void filterGroups(const Lines& lines, int lineCount, int n, const Filter& filter,
                                  int begin, int end) {
    T* x = scratch<T>(0, static_cast<size_t>(n + 2 * kPad) * kLanes);
    T* y = scratch<T>(1, static_cast<size_t>(n) * kLanes);
    T* inside = x + kPad * kLanes;
    for (int group = begin; group < end; ++group) {
        const int first = group * Lines::kLinesPerGroup;
        const int count = std::min(Lines::kLinesPerGroup, lineCount - first);
        lines.load(first, count, n, inside);
        for (int p = 1; p <= kPad; ++p) {
            std::copy_n(inside, kLanes, inside - p * kLanes);
            std::copy_n(inside + (n - 1) * kLanes, kLanes, inside + (n - 1 + p) * kLanes);
        }
        filter.run(inside, y, n);
        lines.store(first, count, n, y);
    }
}

// One pass over all lines on every core.
template <typename T, typename Lines, typename Filter>
void pass(const Lines& lines, int lineCount, int n, const Filter& filter) {
    const int groups = (lineCount + Lines::kLinesPerGroup - 1) / Lines::kLinesPerGroup;
    ParallelRows::run(
        groups,
        [&](int begin, int end) { filterGroups<T>(lines, lineCount, n, filter, begin, end); }, 1);
}

// The rows into `dst`, then the columns of `dst` in place.
template <typename T, typename Kind, typename Filter>
void filterRowsThenColumns(const typename Kind::Value* src, size_t srcStride,
                           typename Kind::Value* dst, size_t dstStride, int width, int height,
                           bool clampToAlpha, const Filter& filter) {
    pass<T>(Rows<Kind>{src, srcStride, dst, dstStride}, height, width, filter);
    pass<T>(Columns<Kind>{dst, dstStride, clampToAlpha}, width, height, filter);
}

template <typename T>
gfx::BitmapPtr blurBytes(const gfx::Bitmap& src, double sigma) {
    auto out = std::make_shared<gfx::Bitmap>(src.width(), src.height(), src.format());
    filterRowsThenColumns<T, Bytes>(
        src.data(), src.rowBytes(), out->mutableData(), out->rowBytes(), src.width(), src.height(),
        src.format() != gfx::PixelFormat::BGRX8888, Recursion<T>::make(sigma));
    return out;
}

template <typename T, typename Filter>
void filterPlane(Plane& plane, const Filter& filter) {
    const size_t stride = size_t(plane.width);
    filterRowsThenColumns<T, Floats>(plane.data.data(), stride, plane.data.data(), stride,
                                     plane.width, plane.height, false, filter);
}

bool isEmpty(int width, int height) {
    return width <= 0 || height <= 0;
}

// Beyond twice the longer side a wider blur looks the same; the cap keeps the poles apart
// from 1 for double.
double usableSigma(double sigma, int width, int height) {
    return std::min(sigma, 2.0 * std::max(width, height) + 1.0);
}

}  // namespace

gfx::BitmapPtr GaussianBlur::apply(const gfx::Bitmap& src, double sigma) {
    if (!(sigma >= kMinSigma) || isEmpty(src.width(), src.height())) {
        return std::make_shared<gfx::Bitmap>(src);
    }
    sigma = usableSigma(sigma, src.width(), src.height());
    return sigma <= kFloatSigmaLimit ? blurBytes<float>(src, sigma) : blurBytes<double>(src, sigma);
}

void GaussianBlur::applyInPlace(Plane& plane, double sigma) {
    if (!(sigma >= kMinSigma) || isEmpty(plane.width, plane.height)) return;
    sigma = usableSigma(sigma, plane.width, plane.height);
    if (sigma <= kFloatSigmaLimit) {
        filterPlane<float>(plane, Recursion<float>::make(sigma));
    } else {
        filterPlane<double>(plane, Recursion<double>::make(sigma));
    }
}

void GaussianBlur::boxMeanInPlace(Plane& plane, int radius) {
    if (radius <= 0 || isEmpty(plane.width, plane.height)) return;
    // Far beyond the plane the windows are all but the same; the cap keeps the indices in range.
    filterPlane<float>(plane, BoxMean{std::min(radius, kMaxBoxRadius)});
}

}  // namespace orv::strand
