#include "platform/gfx/AffineComposite.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace orv::gfx {

namespace {

constexpr int64_t kHalf = 0x8000;  // half a pixel in 16.16
constexpr uint32_t kAlphaByte = 0xff000000u;

// x × a / 255, rounded to nearest.
uint32_t mulUn8(uint32_t x, uint32_t a) {
    const uint32_t t = x * a + 128;
    return (t + (t >> 8)) >> 8;
}

uint32_t load32(const uint8_t* p) {
    uint32_t v;
    std::memcpy(&v, p, 4);
    return v;
}

void store32(uint8_t* p, uint32_t v) {
    std::memcpy(p, &v, 4);
}

uint32_t byteOf(uint32_t p, int k) {
    return (p >> (8 * k)) & 0xff;
}

// The 7-bit weight of the right (or lower) neighbour, from a coordinate less half a pixel.
uint32_t weightOf(int64_t v) {
    return static_cast<uint32_t>(v >> 9) & 127;
}

uint32_t over(uint32_t s, uint32_t d, uint32_t m) {
    const uint32_t keep = 255 - mulUn8(byteOf(s, 3), m);
    uint32_t out = 0;
    for (int k = 0; k < 4; ++k) {
        const uint32_t v = mulUn8(byteOf(s, k), m) + mulUn8(byteOf(d, k), keep);
        out |= std::min(v, 255u) << (8 * k);
    }
    return out;
}

uint32_t outReverse(uint32_t s, uint32_t d, uint32_t m) {
    const uint32_t keep = 255 - mulUn8(byteOf(s, 3), m);
    uint32_t out = 0;
    for (int k = 0; k < 4; ++k) out |= mulUn8(byteOf(d, k), keep) << (8 * k);
    return out;
}

uint64_t load64(const uint8_t* p) {
    uint64_t v;
    std::memcpy(&v, p, 8);
    return v;
}

// The first and one past the last nonzero mask value of a row; an empty span when all are zero.
// Eight at a time, the byte found by counting zero bits (bytes in memory order from the low
// ones).
std::pair<int, int> coveredSpan(const uint8_t* m, int n) {
    static_assert(std::endian::native == std::endian::little);
    int begin = 0, end = n;
    while (begin + 8 <= end && !load64(m + begin)) begin += 8;
    if (begin + 8 <= end) {
        begin += std::countr_zero(load64(m + begin)) / 8;
    } else {
        while (begin < end && !m[begin]) ++begin;
    }
    while (end - 8 >= begin && !load64(m + end - 8)) end -= 8;
    if (end - 8 >= begin) {
        end -= std::countl_zero(load64(m + end - 8)) / 8;
    } else {
        while (end > begin && !m[end - 1]) --end;
    }
    return {begin, end};
}

// The steps i in [begin, end) at which v + i × u lies in [0, limit), and a step or two more at
// either end.
std::pair<int, int> stepsWithin(int64_t v, int64_t u, int64_t limit, int begin, int end) {
    if (u == 0) return v >= 0 && v < limit ? std::pair{begin, end} : std::pair{begin, begin};
    const double a = -static_cast<double>(v) / u, b = static_cast<double>(limit - 1 - v) / u;
    auto step = [&](double i) { return static_cast<int>(std::clamp<double>(i, begin, end)); };
    return {step(std::min(a, b) - 1), step(std::max(a, b) + 2)};
}

// Coverage [begin, end) of a row times alpha.
void scaledCoverage(const uint8_t* mask, uint8_t alpha, int begin, int end, uint8_t* out) {
    const auto n = static_cast<size_t>(end - begin);
    if (!mask) {
        std::memset(out + begin, alpha, n);
    } else if (alpha == 255) {
        std::memcpy(out + begin, mask + begin, n);
    } else {
        for (int i = begin; i < end; ++i) out[i] = static_cast<uint8_t>(mulUn8(mask[i], alpha));
    }
}

#if defined(__x86_64__)

// A row of the box as the vector loop walks it, eight pixels at a time. Coordinates are 16.16,
// less half a pixel, and fit in 32 bits all along the row.
struct Walk {
    const uint8_t* picture;
    int32_t rowBytes, width, height;
    bool opaque;
    int64_t x, y;  // the row's first pixel
    int32_t ux, uy;
    uint8_t* coverage;  // the row's, times alpha: zero outside [begin, end)
    uint8_t* dest;
    int begin, end, insideBegin, insideEnd;
};

// The upper and lower neighbours of eight points, each 128-bit lane holding the left and right
// ones of two points (16 bytes): points 0, 1 | 4, 5 in `*01`, 2, 3 | 6, 7 in `*23`.
struct Neighbours {
    __m256i top01, top23, bottom01, bottom23;
};

// Eight points' samples as 16-bit lanes, laid out as their neighbours.
struct Samples {
    __m256i s01, s23;
};

// Picture coordinates of eight pixels in a row, or their offsets from the first.
struct Points {
    __m256i x, y;
};

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

// The left and right neighbours (8 bytes) of pixels a and b in one lane, c and d in the other.
[[gnu::always_inline]] inline __m256i pairsAt(const uint8_t* p, const int32_t* at, int a, int b,
                                              int c, int d) {
    const __m128i ab = _mm_set_epi64x(static_cast<int64_t>(load64(p + at[b])),
                                      static_cast<int64_t>(load64(p + at[a])));
    const __m128i cd = _mm_set_epi64x(static_cast<int64_t>(load64(p + at[d])),
                                      static_cast<int64_t>(load64(p + at[c])));
    return _mm256_inserti128_si256(_mm256_castsi128_si256(ab), cd, 1);
}

// Eight points whose neighbours all lie in the picture.
[[gnu::always_inline]] inline Neighbours neighboursInside(const Walk& w, const Points& p) {
    const __m256i at = _mm256_add_epi32(
        _mm256_mullo_epi32(_mm256_srai_epi32(p.y, 16), _mm256_set1_epi32(w.rowBytes)),
        _mm256_slli_epi32(_mm256_srai_epi32(p.x, 16), 2));
    alignas(32) int32_t top[8];
    _mm256_store_si256(reinterpret_cast<__m256i*>(top), at);
    const uint8_t* below = w.picture + w.rowBytes;
    return {pairsAt(w.picture, top, 0, 1, 4, 5), pairsAt(w.picture, top, 2, 3, 6, 7),
            pairsAt(below, top, 0, 1, 4, 5), pairsAt(below, top, 2, 3, 6, 7)};
}

[[gnu::always_inline]] inline __m256i clamped(__m256i v, int32_t last) {
    return _mm256_min_epi32(_mm256_max_epi32(v, _mm256_setzero_si256()), _mm256_set1_epi32(last));
}

// Any eight points, the picture's edge pixels going on outside it (pad).
[[gnu::always_inline]] inline Neighbours neighboursPadded(const Walk& w, const Points& p) {
    const __m256i one = _mm256_set1_epi32(1), stride = _mm256_set1_epi32(w.rowBytes);
    const __m256i ix = _mm256_srai_epi32(p.x, 16), iy = _mm256_srai_epi32(p.y, 16);
    const __m256i left = _mm256_slli_epi32(clamped(ix, w.width - 1), 2);
    const __m256i right = _mm256_slli_epi32(clamped(_mm256_add_epi32(ix, one), w.width - 1), 2);
    const __m256i upper = _mm256_mullo_epi32(clamped(iy, w.height - 1), stride);
    const __m256i lower =
        _mm256_mullo_epi32(clamped(_mm256_add_epi32(iy, one), w.height - 1), stride);
    const auto* base = reinterpret_cast<const int*>(w.picture);
    const __m256i tl = _mm256_i32gather_epi32(base, _mm256_add_epi32(upper, left), 1);
    const __m256i tr = _mm256_i32gather_epi32(base, _mm256_add_epi32(upper, right), 1);
    const __m256i bl = _mm256_i32gather_epi32(base, _mm256_add_epi32(lower, left), 1);
    const __m256i br = _mm256_i32gather_epi32(base, _mm256_add_epi32(lower, right), 1);
    return {_mm256_unpacklo_epi32(tl, tr), _mm256_unpackhi_epi32(tl, tr),
            _mm256_unpacklo_epi32(bl, br), _mm256_unpackhi_epi32(bl, br)};
}

[[gnu::always_inline]] inline bool allClear(const Neighbours& n) {
    const __m256i any =
        _mm256_or_si256(_mm256_or_si256(n.top01, n.top23), _mm256_or_si256(n.bottom01, n.bottom23));
    return _mm256_testz_si256(any, any);
}

// The same byte shuffle in both 128-bit lanes.
[[gnu::always_inline]] inline __m256i inBothLanes(const std::array<char, 16>& bytes) {
    const __m128i lane = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes.data()));
    return _mm256_broadcastsi128_si256(lane);
}

// left × (128 − w) + right × w in 16 bits, for the left and right neighbours of two pixels a
// lane (`pairs` bytes: left a, right a, left b, right b), as left × (127 − w) + right × w + left
// so that the weights fit in signed bytes; `w` holds a's (127 − w, w) in four byte pairs, then
// b's.
[[gnu::always_inline]] inline __m256i across(__m256i pairs, __m256i w) {
    static constexpr std::array<char, 16> kInterleaved{0, 4,  1, 5,  2,  6,  3,  7,
                                                       8, 12, 9, 13, 10, 14, 11, 15};
    static constexpr std::array<char, 16> kLefts{0, -1, 1, -1, 2,  -1, 3,  -1,
                                                 8, -1, 9, -1, 10, -1, 11, -1};
    const __m256i sum =
        _mm256_maddubs_epi16(_mm256_shuffle_epi8(pairs, inBothLanes(kInterleaved)), w);
    return _mm256_add_epi16(sum, _mm256_shuffle_epi8(pairs, inBothLanes(kLefts)));
}

// top × (128 − w) + bottom × w in 32 bits, the weights' 14 bits dropped, for two pixels a lane;
// `wa` and `wb` hold their (128 − w, w) pairs.
[[gnu::always_inline]] inline __m256i down(__m256i top, __m256i bottom, __m256i wa, __m256i wb) {
    const __m256i a = _mm256_madd_epi16(_mm256_unpacklo_epi16(top, bottom), wa);
    const __m256i b = _mm256_madd_epi16(_mm256_unpackhi_epi16(top, bottom), wb);
    return _mm256_packs_epi32(_mm256_srli_epi32(a, 14), _mm256_srli_epi32(b, 14));
}

// Eight 16-bit lanes twice: x × a / 255, rounded to nearest.
[[gnu::always_inline]] inline __m256i mulUn8x16(__m256i x, __m256i a) {
    const __m256i t = _mm256_add_epi16(_mm256_mullo_epi16(x, a), _mm256_set1_epi16(128));
    return _mm256_mulhi_epu16(t, _mm256_set1_epi16(257));
}

// Two pixels a lane of 16-bit lanes, the source already times its coverage.
template <AffineComposite::Op op>
[[gnu::always_inline]] inline __m256i composed(__m256i s, __m256i d) {
    static constexpr std::array<char, 16> kAlphas{6,  7,  6,  7,  6,  7,  6,  7,
                                                  14, 15, 14, 15, 14, 15, 14, 15};
    const __m256i alpha = _mm256_shuffle_epi8(s, inBothLanes(kAlphas));
    const __m256i kept = mulUn8x16(d, _mm256_xor_si256(alpha, _mm256_set1_epi16(255)));
    if constexpr (op == AffineComposite::Op::Over) return _mm256_adds_epu16(kept, s);
    return kept;
}

// Eight samples (16-bit lanes: pixels 0, 1 | 4, 5 in `s01`, 2, 3 | 6, 7 in `s23`) composed onto
// `dest` through their coverage, a byte each in `m8`.
template <AffineComposite::Op op>
[[gnu::always_inline]] inline void composeOnto(uint8_t* dest, __m256i s01, __m256i s23,
                                               uint64_t m8) {
    const __m256i zero = _mm256_setzero_si256();
    if (m8 != ~uint64_t{0}) {
        static constexpr std::array<char, 16> kSpread{0, 0, 0, 0, 4,  4,  4,  4,
                                                      8, 8, 8, 8, 12, 12, 12, 12};
        const __m256i m =
            _mm256_shuffle_epi8(_mm256_cvtepu8_epi32(_mm_cvtsi64_si128(static_cast<int64_t>(m8))),
                                inBothLanes(kSpread));
        s01 = mulUn8x16(s01, _mm256_unpacklo_epi8(m, zero));
        s23 = mulUn8x16(s23, _mm256_unpackhi_epi8(m, zero));
    }
    auto* d = reinterpret_cast<__m256i*>(dest);
    const __m256i before = _mm256_loadu_si256(d);
    const __m256i lo = composed<op>(s01, _mm256_unpacklo_epi8(before, zero));
    const __m256i hi = composed<op>(s23, _mm256_unpackhi_epi8(before, zero));
    _mm256_storeu_si256(d, _mm256_packus_epi16(lo, hi));
}

[[gnu::always_inline]] inline Samples bilinear(const Neighbours& n, const Points& p) {
    // Each pixel's weights: (127 − wx, wx) as bytes, (128 − wy, wy) as 16-bit halves.
    const __m256i low7 = _mm256_set1_epi32(127);
    const __m256i wx = _mm256_and_si256(_mm256_srli_epi32(p.x, 9), low7);
    const __m256i wy = _mm256_and_si256(_mm256_srli_epi32(p.y, 9), low7);
    const __m256i wxs = _mm256_or_si256(_mm256_slli_epi32(wx, 8), _mm256_sub_epi32(low7, wx));
    const __m256i wys =
        _mm256_or_si256(_mm256_slli_epi32(wy, 16), _mm256_sub_epi32(_mm256_set1_epi32(128), wy));
    static constexpr std::array<char, 16> kWx01{0, 1, 0, 1, 0, 1, 0, 1, 4, 5, 4, 5, 4, 5, 4, 5};
    static constexpr std::array<char, 16> kWx23{8,  9,  8,  9,  8,  9,  8,  9,
                                                12, 13, 12, 13, 12, 13, 12, 13};
    const __m256i wx01 = _mm256_shuffle_epi8(wxs, inBothLanes(kWx01));
    const __m256i wx23 = _mm256_shuffle_epi8(wxs, inBothLanes(kWx23));
    return {down(across(n.top01, wx01), across(n.bottom01, wx01), _mm256_shuffle_epi32(wys, 0x00),
                 _mm256_shuffle_epi32(wys, 0x55)),
            down(across(n.top23, wx23), across(n.bottom23, wx23), _mm256_shuffle_epi32(wys, 0xaa),
                 _mm256_shuffle_epi32(wys, 0xff))};
}

// Pixels [at, at + 8) of the row; `steps` holds 0 to 7 steps along it.
template <AffineComposite::Op op>
[[gnu::always_inline]] inline void composeEight(const Walk& w, int at, const Points& steps) {
    const uint64_t m8 = load64(w.coverage + at);
    if (!m8) return;
    const Points p{_mm256_add_epi32(
                       _mm256_set1_epi32(static_cast<int32_t>(w.x + int64_t{at} * w.ux)), steps.x),
                   _mm256_add_epi32(
                       _mm256_set1_epi32(static_cast<int32_t>(w.y + int64_t{at} * w.uy)), steps.y)};
    const bool inside = at >= w.insideBegin && at + 8 <= w.insideEnd;
    const Neighbours n = inside ? neighboursInside(w, p) : neighboursPadded(w, p);
    if (!w.opaque && allClear(n)) return;  // nothing to draw (or to erase with)
    Samples s = bilinear(n, p);
    if (w.opaque) {
        const __m256i alpha = _mm256_set1_epi64x(int64_t{255} << 48);
        s = {_mm256_or_si256(s.s01, alpha), _mm256_or_si256(s.s23, alpha)};
    }
    composeOnto<op>(w.dest + 4 * static_cast<size_t>(at), s.s01, s.s23, m8);
}

// The covered span eight at a time. The last eight end with the span (or, in a short row, start
// with the row), those of them composed already taken out of the coverage.
template <AffineComposite::Op op>
void composeRowAvx2(const Walk& w) {
    const __m256i lanes = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    const Points steps{_mm256_mullo_epi32(lanes, _mm256_set1_epi32(w.ux)),
                       _mm256_mullo_epi32(lanes, _mm256_set1_epi32(w.uy))};
    int at = w.begin;
    for (; at + 8 <= w.end; at += 8) composeEight<op>(w, at, steps);
    if (at == w.end) return;
    const int last = std::max(w.end - 8, 0);
    std::memset(w.coverage + last, 0, static_cast<size_t>(at - last));
    composeEight<op>(w, last, steps);
}

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif

}  // namespace

bool AffineComposite::vectorised() {
#if defined(__x86_64__)
    static const bool avx2 = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("avx2");
    }();
    return avx2;
#else
    return false;
#endif
}

AffineComposite::AffineComposite(const Picture& picture, const pixman_transform_t& boxToPicture,
                                 Op op, uint8_t alpha)
    : picture_(picture), op_(op), alpha_(alpha) {
    const auto& m = boxToPicture.matrix;
    ux_ = m[0][0];
    uy_ = m[1][0];
    vx_ = m[0][1];
    vy_ = m[1][1];
    // Pixel centres sit at half a pixel in both directions; the half-pixel products are
    // rounded once, as pixman rounds them.
    auto start = [](int64_t right, int64_t down, int64_t shift) {
        return shift + (((right + down) * kHalf + kHalf) >> 16) - kHalf;
    };
    x0_ = start(m[0][0], m[0][1], m[0][2]);
    y0_ = start(m[1][0], m[1][1], m[1][2]);
}

void AffineComposite::run(const Target& target, const Mask& mask) const {
    if (alpha_ == 0 || target.width <= 0 || !picture_.pixels || picture_.width < 1 ||
        picture_.height < 1) {
        return;
    }
    const auto width = static_cast<size_t>(target.width);
    std::vector<uint8_t> coverage(width);
    for (int j = 0; j < target.height; ++j) {
        const uint8_t* maskRow = mask.pixels ? mask.pixels + mask.rowBytes * j : nullptr;
        const auto [begin, end] =
            maskRow ? coveredSpan(maskRow, target.width) : std::pair{0, target.width};
        if (begin >= end) continue;
        std::fill(coverage.begin(), coverage.end(), 0);
        scaledCoverage(maskRow, alpha_, begin, end, coverage.data());
        composeRow(j, coverage.data(), target.pixels + target.rowBytes * j, begin, end,
                   target.width);
    }
}

void AffineComposite::composeRow(int j, uint8_t* coverage, uint8_t* dest, int begin, int end,
                                 int width) const {
    const int64_t x = x0_ + vx_ * j, y = y0_ + vy_ * j;
#if defined(__x86_64__)
    if (vectorised() && width >= 8 && walkFits(x, y, width)) {
        const auto [insideBegin, insideEnd] = insideRun(x, y, begin, end);
        const Walk w{.picture = picture_.pixels,
                     .rowBytes = static_cast<int32_t>(picture_.rowBytes),
                     .width = picture_.width,
                     .height = picture_.height,
                     .opaque = picture_.opaque,
                     .x = x,
                     .y = y,
                     .ux = static_cast<int32_t>(ux_),
                     .uy = static_cast<int32_t>(uy_),
                     .coverage = coverage,
                     .dest = dest,
                     .begin = begin,
                     .end = end,
                     .insideBegin = insideBegin,
                     .insideEnd = insideEnd};
        (op_ == Op::Over ? composeRowAvx2<Op::Over> : composeRowAvx2<Op::OutReverse>)(w);
        return;
    }
#endif
    composeEach(x + begin * ux_, y + begin * uy_, coverage + begin,
                dest + 4 * static_cast<size_t>(begin), end - begin);
}

bool AffineComposite::walkFits(int64_t x, int64_t y, int width) const {
    constexpr int64_t kStepLimit = int64_t{1} << 27;
    auto fits = [](int64_t v) { return v > INT32_MIN && v < INT32_MAX; };
    return std::abs(ux_) < kStepLimit && std::abs(uy_) < kStepLimit && fits(x) && fits(y) &&
           fits(x + ux_ * (width - 1)) && fits(y + uy_ * (width - 1)) &&
           picture_.rowBytes * static_cast<size_t>(picture_.height) < INT32_MAX;
}

std::pair<int, int> AffineComposite::insideRun(int64_t x, int64_t y, int begin, int end) const {
    const auto [xBegin, xEnd] = stepsWithin(x, ux_, int64_t{picture_.width - 1} << 16, begin, end);
    const auto [yBegin, yEnd] = stepsWithin(y, uy_, int64_t{picture_.height - 1} << 16, begin, end);
    int first = std::max(xBegin, yBegin), last = std::min(xEnd, yEnd);
    // Where all four neighbours lie in the picture is an interval, so its ends decide.
    while (first < last && !inside(x + first * ux_, y + first * uy_)) ++first;
    while (last > first && !inside(x + (last - 1) * ux_, y + (last - 1) * uy_)) --last;
    return {first, std::max(first, last)};
}

bool AffineComposite::inside(int64_t x, int64_t y) const {
    return static_cast<uint64_t>(x >> 16) < static_cast<uint64_t>(picture_.width - 1) &&
           static_cast<uint64_t>(y >> 16) < static_cast<uint64_t>(picture_.height - 1);
}

void AffineComposite::composeEach(int64_t x, int64_t y, const uint8_t* coverage, uint8_t* dest,
                                  int n) const {
    const uint32_t fill = picture_.opaque ? kAlphaByte : 0;
    for (int i = 0; i < n; ++i, x += ux_, y += uy_) {
        if (!coverage[i]) continue;
        uint8_t* d = dest + 4 * static_cast<size_t>(i);
        const uint32_t s = sample(x, y) | fill;
        store32(d, op_ == Op::Over ? over(s, load32(d), coverage[i])
                                   : outReverse(s, load32(d), coverage[i]));
    }
}

uint32_t AffineComposite::sample(int64_t x, int64_t y) const {
    // Outside the picture its edge pixels go on (pad).
    auto column = [&](int64_t v) { return 4 * std::clamp<int64_t>(v, 0, picture_.width - 1); };
    auto row = [&](int64_t v) {
        return picture_.pixels + picture_.rowBytes * std::clamp<int64_t>(v, 0, picture_.height - 1);
    };
    const uint8_t* upper = row(y >> 16);
    const uint8_t* lower = row((y >> 16) + 1);
    const int64_t left = column(x >> 16), right = column((x >> 16) + 1);
    const uint32_t tl = load32(upper + left), tr = load32(upper + right);
    const uint32_t bl = load32(lower + left), br = load32(lower + right);
    const uint32_t wx = weightOf(x), wy = weightOf(y);
    uint32_t out = 0;
    for (int k = 0; k < 4; ++k) {
        const uint32_t top = byteOf(tl, k) * (128 - wx) + byteOf(tr, k) * wx;
        const uint32_t bottom = byteOf(bl, k) * (128 - wx) + byteOf(br, k) * wx;
        out |= ((top * (128 - wy) + bottom * wy) >> 14) << (8 * k);
    }
    return out;
}

}  // namespace orv::gfx
