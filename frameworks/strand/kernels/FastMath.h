#pragma once
// Square root, log2 and exp2 without calls or branches, so that per-pixel loops using them
// vectorise (the library functions set errno and are not inlined). Accurate to a few parts in
// a million over the ranges the filters use: far below one level of a byte.

#include <bit>
#include <cstdint>

namespace orv::strand {

class FastMath {
  public:
    FastMath() = delete;

    // For x ≥ 0.
    static float sqrt(float x) {
        // Half the exponent as the first guess, then Newton's steps.
        float y = std::bit_cast<float>(0x1FBD1DF5 + (std::bit_cast<uint32_t>(x) >> 1));
        y = 0.5f * (y + x / y);
        y = 0.5f * (y + x / y);
        return 0.5f * (y + x / y);
    }

    // For normal x > 0.
    static float log2(float x) {
        const uint32_t bits = std::bit_cast<uint32_t>(x);
        const float exponent = float(int(bits >> 23) - 127);
        // The mantissa m in [1, 2): log2 m = 2 atanh(t) / ln 2 with t = (m − 1) / (m + 1) < 1/3.
        const float m = std::bit_cast<float>((bits & 0x007FFFFFu) | 0x3F800000u);
        const float t = (m - 1) / (m + 1), t2 = t * t;
        const float series =
            t * (2.8853901f +
                 t2 * (0.9617967f + t2 * (0.5770780f + t2 * (0.4121986f + t2 * 0.3205989f))));
        return exponent + series;
    }

    // For x within ±126.
    static float exp2(float x) {
        const int whole = int(x) - (x < float(int(x)) ? 1 : 0);  // floor
        const float f = (x - float(whole)) * 0.69314718f;        // 2^frac = e^f, f in [0, ln 2)
        const float e =
            1 + f * (1 + f * (0.5f + f * (1.f / 6 + f * (1.f / 24 + f * (1.f / 120 + f / 720)))));
        return e * std::bit_cast<float>(uint32_t(whole + 127) << 23);
    }
};

}  // namespace orv::strand
