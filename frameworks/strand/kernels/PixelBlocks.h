#pragma once
// Per-pixel loops that the compiler vectorises at -O2, where only loops of a count known at
// compile time are: each row is walked in blocks of kBlock pixels and the rest one by one,
// through the same body instantiated for both counts; the rows run on every core. With the
// helpers that every colour filter's block starts and ends with.

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "frameworks/strand/kernels/ParallelRows.h"

namespace orv::strand {

class PixelBlocks {
  public:
    PixelBlocks() = delete;

    static constexpr int kBlock = 16;
    template <int N>
    using Count = std::integral_constant<int, N>;

    // body(x, count) for pixels x .. x + count − 1 of a row of `width`; `count` is a Count<N>,
    // so `for (int k = 0; k < count; ++k)` has a constant trip count.
    template <typename Body>
    static void row(int width, const Body& body) {
        int x = 0;
        for (; x + kBlock <= width; x += kBlock) body(x, Count<kBlock>{});
        for (; x < width; ++x) body(x, Count<1>{});
    }

    // body(y, x, count) likewise for every row.
    template <typename Body>
    static void run(int width, int height, const Body& body) {
        ParallelRows::run(height, [&](int begin, int end) {
            for (int y = begin; y < end; ++y) {
                row(width, [&](int x, auto count) { body(y, x, count); });
            }
        });
    }

    // n R, G, B, A pixels as floats, a plane a channel, so that per-pixel arithmetic runs over
    // contiguous arrays.
    template <int N>
    struct Pixels {
        float r[N], g[N], b[N], a[N];
    };

    template <int N>
    static void load(const uint8_t* __restrict p, Pixels<N>& px) {
        float f[4 * N];
        for (int i = 0; i < 4 * N; ++i) f[i] = p[i];
        for (int k = 0; k < N; ++k) {
            px.r[k] = f[4 * k];
            px.g[k] = f[4 * k + 1];
            px.b[k] = f[4 * k + 2];
            px.a[k] = f[4 * k + 3];
        }
    }

    // Rounds, keeps each colour within 0 and the alpha (which the filters leave as loaded).
    template <int N>
    static void store(const Pixels<N>& px, uint8_t* __restrict q) {
        int c[3][N], a[N];
        for (int k = 0; k < N; ++k) {
            c[0][k] = int(px.r[k] + 0.5f);
            c[1][k] = int(px.g[k] + 0.5f);
            c[2][k] = int(px.b[k] + 0.5f);
            a[k] = int(px.a[k] + 0.5f);
        }
        for (int j = 0; j < 3; ++j) {
            for (int k = 0; k < N; ++k) c[j][k] = c[j][k] < 0 ? 0 : c[j][k] > a[k] ? a[k] : c[j][k];
        }
        for (int k = 0; k < N; ++k) {
            q[4 * k] = uint8_t(c[0][k]);
            q[4 * k + 1] = uint8_t(c[1][k]);
            q[4 * k + 2] = uint8_t(c[2][k]);
            q[4 * k + 3] = uint8_t(a[k]);
        }
    }

    // Rec. 601 luma, 0 to 255; of premultiplied colour it is premultiplied too.
    template <int N>
    static void luma(const Pixels<N>& px, float* __restrict out) {
        for (int k = 0; k < N; ++k) out[k] = 0.299f * px.r[k] + 0.587f * px.g[k] + 0.114f * px.b[k];
    }

    // The same, straight (0 to 1): premultiplied luma over alpha; 0 where transparent.
    template <int N>
    static void straightLuma(const Pixels<N>& px, float* __restrict out) {
        luma<N>(px, out);
        float alpha[N];  // a loop of its own, or the division gets a branch
        for (int k = 0; k < N; ++k) alpha[k] = std::max(px.a[k], 1.f);
        for (int k = 0; k < N; ++k) out[k] /= alpha[k];
    }
};

}  // namespace orv::strand
