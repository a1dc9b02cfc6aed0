#include "frameworks/strand/kernels/ColorTable.h"

#include <algorithm>
#include <cmath>

#include "frameworks/strand/kernels/ParallelRows.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace orv::strand {

namespace {

constexpr int kN = ColorTable::kSize;
// Node steps along each axis, and to the far corner of a cell.
constexpr int kStepR = kN * kN, kStepG = kN, kStepB = 1, kStepAll = kStepR + kStepG + kStepB;
// A node component is the value times 4 (0 to 1020), so that an interpolation of weights
// summing to 256 divides back to 8 bits by a shift of 10.
constexpr float kNodeScale = 1020;

// The position of an 8-bit value on the grid, in 1/256ths of a cell: v · 32/255 · 256.
inline int gridPosition(int v) {
    return (v * 8224 + 128) >> 8;
}

// The grain's weight by (straight) luma in 1/256ths: about 0.35 at black and white, 1 in the
// midtones, as film shows it: 90 + l·(255 − l)/96.
inline int midtoneWeight(int luma) {
    return 90 + ((luma * (255 - luma) * 683) >> 16);
}

// One pixel through the table and the finish: unpremultiplied, interpolated between the four
// nodes of the tetrahedron of its cell that holds it, finished, premultiplied again.
inline void tablePixel(const uint32_t* nodes, const uint8_t* p, uint8_t* q, int x,
                       const ColorTable::Finish& finish) {
    const int a = p[3];
    int c[3] = {p[0], p[1], p[2]};
    if (a != 255) {
        for (int& v : c) v = a == 0 ? 0 : std::min(255, (v * 255 + a / 2) / a);
    }
    int cell[3], f[3];
    for (int i = 0; i < 3; ++i) {
        const int position = gridPosition(c[i]);
        cell[i] = std::min(position >> 8, kN - 2);
        f[i] = position - (cell[i] << 8);
    }
    const int base = cell[0] * kStepR + cell[1] * kStepG + cell[2];
    const int hi = std::max({f[0], f[1], f[2]}), lo = std::min({f[0], f[1], f[2]});
    const int mid = f[0] + f[1] + f[2] - hi - lo;
    // The tetrahedron walks from the cell's origin along the axis of the largest fraction, then
    // the middle one, to the far corner.
    const int stepHi = (f[0] >= f[1] && f[0] >= f[2]) ? kStepR : (f[1] >= f[2] ? kStepG : kStepB);
    const int stepLo = (f[2] <= f[1] && f[2] <= f[0]) ? kStepB : (f[1] <= f[0] ? kStepG : kStepR);
    const uint32_t corner[4] = {nodes[base], nodes[base + stepHi], nodes[base + kStepAll - stepLo],
                                nodes[base + kStepAll]};
    const int weight[4] = {256 - hi, hi - mid, mid - lo, lo};
    int v[3];
    for (int i = 0; i < 3; ++i) {
        int sum = 512;
        for (int k = 0; k < 4; ++k) {
            sum += static_cast<int>((corner[k] >> (10 * i)) & 1023) * weight[k];
        }
        v[i] = sum >> 10;
        v[i] = (c[i] * (256 - finish.weight) + v[i] * finish.weight + 128) >> 8;
    }
    if (finish.noise) {
        const int luma = (54 * v[0] + 183 * v[1] + 19 * v[2] + 128) >> 8;
        const int grain = (finish.noise[x] * finish.grain * midtoneWeight(luma)) >> 16;
        for (int& value : v) value = std::clamp(value + grain, 0, 255);
    }
    for (int i = 0; i < 3; ++i) {
        if (finish.shade) v[i] = (v[i] * finish.shade[x] + 128) >> 8;
        if (a != 255) {
            const unsigned w = static_cast<unsigned>(v[i] * a + 128);
            v[i] = static_cast<int>((w + (w >> 8)) >> 8);
        }
        q[i] = static_cast<uint8_t>(v[i]);
    }
    q[3] = static_cast<uint8_t>(a);
}

void tableRowScalar(const uint32_t* nodes, const uint8_t* in, uint8_t* out, int from, int count,
                    const ColorTable::Finish& finish) {
    for (int x = from; x < from + count; ++x) tablePixel(nodes, in + 4 * x, out + 4 * x, x, finish);
}

#if defined(__x86_64__)
// Eight pixels at a time: the same integer arithmetic as tablePixel, so both paths give the
// same bytes, with the node fetches as gathers. The small loops over channels and corners are
// unrolled so that their vectors stay in registers. A group holding any pixel that is not opaque
// goes through tablePixel.
#pragma GCC push_options
#pragma GCC target("avx2")

inline __m256i gridPosition8(__m256i v) {
    v = _mm256_and_si256(v, _mm256_set1_epi32(255));
    const __m256i scaled = _mm256_add_epi32(_mm256_slli_epi32(v, 13), _mm256_slli_epi32(v, 5));
    return _mm256_srli_epi32(_mm256_add_epi32(scaled, _mm256_set1_epi32(128)), 8);
}

inline __m256i interpolate8(const __m256i corner[4], const __m256i weight[4], int shift) {
    const __m256i mask = _mm256_set1_epi32(1023);
    __m256i sum = _mm256_set1_epi32(512);
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) {
        const __m256i value = _mm256_and_si256(_mm256_srli_epi32(corner[k], shift), mask);
        sum = _mm256_add_epi32(sum, _mm256_mullo_epi32(value, weight[k]));
    }
    return _mm256_srli_epi32(sum, 10);
}

// (a · (256 − w) + b · w + 128) / 256
inline __m256i mix8(__m256i a, __m256i b, __m256i w) {
    const __m256i sum =
        _mm256_add_epi32(_mm256_mullo_epi32(a, _mm256_sub_epi32(_mm256_set1_epi32(256), w)),
                         _mm256_mullo_epi32(b, w));
    return _mm256_srli_epi32(_mm256_add_epi32(sum, _mm256_set1_epi32(128)), 8);
}

// The finish of eight opaque pixels, as tablePixel does it.
inline void finish8(__m256i c[3], __m256i px, int x, const ColorTable::Finish& finish) {
    if (finish.weight != 256) {
        const __m256i weight = _mm256_set1_epi32(finish.weight);
#pragma GCC unroll 4
        for (int i = 0; i < 3; ++i) {
            const __m256i own =
                _mm256_and_si256(_mm256_srli_epi32(px, 8 * i), _mm256_set1_epi32(255));
            c[i] = mix8(own, c[i], weight);
        }
    }
    if (finish.noise) {
        const __m256i luma = _mm256_srli_epi32(
            _mm256_add_epi32(_mm256_add_epi32(_mm256_mullo_epi32(c[0], _mm256_set1_epi32(54)),
                                              _mm256_mullo_epi32(c[1], _mm256_set1_epi32(183))),
                             _mm256_add_epi32(_mm256_mullo_epi32(c[2], _mm256_set1_epi32(19)),
                                              _mm256_set1_epi32(128))),
            8);
        const __m256i spread =
            _mm256_mullo_epi32(luma, _mm256_sub_epi32(_mm256_set1_epi32(255), luma));
        const __m256i weight = _mm256_add_epi32(
            _mm256_set1_epi32(90),
            _mm256_srli_epi32(_mm256_mullo_epi32(spread, _mm256_set1_epi32(683)), 16));
        const __m256i noise = _mm256_cvtepi8_epi32(
            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(finish.noise + x)));
        const __m256i grain = _mm256_srai_epi32(
            _mm256_mullo_epi32(_mm256_mullo_epi32(noise, _mm256_set1_epi32(finish.grain)), weight),
            16);
#pragma GCC unroll 4
        for (int i = 0; i < 3; ++i) {
            c[i] = _mm256_min_epi32(
                _mm256_max_epi32(_mm256_add_epi32(c[i], grain), _mm256_setzero_si256()),
                _mm256_set1_epi32(255));
        }
    }
    if (finish.shade) {
        const __m256i shade = _mm256_cvtepu16_epi32(
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(finish.shade + x)));
#pragma GCC unroll 4
        for (int i = 0; i < 3; ++i) {
            c[i] = _mm256_srli_epi32(
                _mm256_add_epi32(_mm256_mullo_epi32(c[i], shade), _mm256_set1_epi32(128)), 8);
        }
    }
}

// Without a finish (the common case) the loop carries no test of it.
template <bool kFinished>
void tableRowAvx2(const uint32_t* nodes, const uint8_t* in, uint8_t* out, int from, int count,
                  const ColorTable::Finish& finish) {
    const auto* table = reinterpret_cast<const int*>(nodes);
    const __m256i opaque = _mm256_set1_epi32(255), lastCell = _mm256_set1_epi32(kN - 2);
    const __m256i stepR = _mm256_set1_epi32(kStepR), stepG = _mm256_set1_epi32(kStepG);
    const __m256i stepB = _mm256_set1_epi32(kStepB), stepAll = _mm256_set1_epi32(kStepAll);
    int x = from;
    for (; x + 8 <= from + count; x += 8) {
        const __m256i px = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 4 * x));
        const __m256i alpha = _mm256_srli_epi32(px, 24);
        if (_mm256_movemask_epi8(_mm256_cmpeq_epi32(alpha, opaque)) != -1) {
            tableRowScalar(nodes, in, out, x, 8, finish);
            continue;
        }
        __m256i f[3], cell[3];
#pragma GCC unroll 4
        for (int c = 0; c < 3; ++c) {
            const __m256i position = gridPosition8(_mm256_srli_epi32(px, 8 * c));
            cell[c] = _mm256_min_epi32(_mm256_srli_epi32(position, 8), lastCell);
            f[c] = _mm256_sub_epi32(position, _mm256_slli_epi32(cell[c], 8));
        }
        // r · 33² + g · 33 + b, by shifts: r · (1024 + 64 + 1) + g · (32 + 1) + b.
        static_assert(kN == 33);
        const __m256i r = cell[0], g = cell[1];
        const __m256i base = _mm256_add_epi32(
            _mm256_add_epi32(_mm256_add_epi32(_mm256_slli_epi32(r, 10), _mm256_slli_epi32(r, 6)),
                             _mm256_add_epi32(r, _mm256_slli_epi32(g, 5))),
            _mm256_add_epi32(g, cell[2]));
        const __m256i hi = _mm256_max_epi32(f[0], _mm256_max_epi32(f[1], f[2]));
        const __m256i lo = _mm256_min_epi32(f[0], _mm256_min_epi32(f[1], f[2]));
        const __m256i mid = _mm256_sub_epi32(_mm256_add_epi32(f[0], _mm256_add_epi32(f[1], f[2])),
                                             _mm256_add_epi32(hi, lo));
        const __m256i gtGR = _mm256_cmpgt_epi32(f[1], f[0]), gtBR = _mm256_cmpgt_epi32(f[2], f[0]);
        const __m256i gtBG = _mm256_cmpgt_epi32(f[2], f[1]);
        const __m256i redHi = _mm256_or_si256(gtGR, gtBR);  // set where red is not the largest
        const __m256i stepHi =
            _mm256_blendv_epi8(stepR, _mm256_blendv_epi8(stepG, stepB, gtBG), redHi);
        const __m256i blueLo = _mm256_or_si256(gtBG, gtBR);  // set where blue is not the least
        const __m256i stepLo =
            _mm256_blendv_epi8(stepB, _mm256_blendv_epi8(stepG, stepR, gtGR), blueLo);
        const __m256i corner[4] = {
            _mm256_i32gather_epi32(table, base, 4),
            _mm256_i32gather_epi32(table, _mm256_add_epi32(base, stepHi), 4),
            _mm256_i32gather_epi32(table, _mm256_add_epi32(base, _mm256_sub_epi32(stepAll, stepLo)),
                                   4),
            _mm256_i32gather_epi32(table, _mm256_add_epi32(base, stepAll), 4)};
        const __m256i weight[4] = {_mm256_sub_epi32(_mm256_set1_epi32(256), hi),
                                   _mm256_sub_epi32(hi, mid), _mm256_sub_epi32(mid, lo), lo};
        __m256i c[3] = {interpolate8(corner, weight, 0), interpolate8(corner, weight, 10),
                        interpolate8(corner, weight, 20)};
        if (kFinished) finish8(c, px, x, finish);
        const __m256i rg = _mm256_or_si256(c[0], _mm256_slli_epi32(c[1], 8));
        const __m256i ba =
            _mm256_or_si256(_mm256_slli_epi32(c[2], 16), _mm256_slli_epi32(alpha, 24));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 4 * x), _mm256_or_si256(rg, ba));
    }
    tableRowScalar(nodes, in, out, x, from + count - x, finish);
}

void tableRowAvx2Dispatch(const uint32_t* nodes, const uint8_t* in, uint8_t* out, int from,
                          int count, const ColorTable::Finish& finish) {
    const bool finished = finish.weight != 256 || finish.noise || finish.shade;
    (finished ? tableRowAvx2<true> : tableRowAvx2<false>)(nodes, in, out, from, count, finish);
}

#pragma GCC pop_options

#endif

using TableRow = void (*)(const uint32_t*, const uint8_t*, uint8_t*, int, int,
                          const ColorTable::Finish&);

TableRow tableRow() {
#if defined(__x86_64__)
    static const TableRow row = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("avx2") ? tableRowAvx2Dispatch : tableRowScalar;
    }();
    return row;
#else
    return tableRowScalar;
#endif
}

uint32_t nodeValue(const std::array<float, 3>& rgb) {
    uint32_t node = 0;
    for (int i = 0; i < 3; ++i) {
        const float v = std::isnan(rgb[i]) ? 0 : std::clamp(rgb[i], 0.0f, 1.0f);
        node |= static_cast<uint32_t>(std::lround(v * kNodeScale)) << (10 * i);
    }
    return node;
}

}  // namespace

ColorTable::ColorTable(const Function& function) : nodes_(kN * kN * kN) {
    ParallelRows::run(
        kN,
        [&](int begin, int end) {
            for (int r = begin; r < end; ++r) {
                for (int g = 0; g < kN; ++g) {
                    for (int b = 0; b < kN; ++b) {
                        std::array<float, 3> rgb = {static_cast<float>(r) / (kN - 1),
                                                    static_cast<float>(g) / (kN - 1),
                                                    static_cast<float>(b) / (kN - 1)};
                        function(rgb);
                        nodes_[r * kStepR + g * kStepG + b] = nodeValue(rgb);
                    }
                }
            }
        },
        1);
}

void ColorTable::applyRow(const uint8_t* in, uint8_t* out, int count) const {
    applyRow(in, out, count, Finish{});
}

void ColorTable::applyRow(const uint8_t* in, uint8_t* out, int count, const Finish& finish) const {
    tableRow()(nodes_.data(), in, out, 0, count, finish);
}

gfx::BitmapPtr ColorTable::apply(const gfx::Bitmap& src) const {
    auto out = std::make_shared<gfx::Bitmap>(src.width(), src.height());
    ParallelRows::run(src.height(), [&](int begin, int end) {
        for (int y = begin; y < end; ++y) applyRow(src.row(y), out->mutableRow(y), src.width());
    });
    return out;
}

}  // namespace orv::strand
