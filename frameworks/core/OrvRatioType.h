#pragma once
// The crop and camera frame ratios. Each ratio type is one bit, so that a tool's choice of
// ratios is a mask: the full frame (no fixed ratio), then 1:1, 2:3, 3:4, 9:16, 3:2, 4:3 and
// 16:9, width to height.

#include <vector>

class OrvRatioType {
  public:
    OrvRatioType() = delete;

    enum : long {
        kFull = 1,
        k1x1 = 2,
        k2x3 = 4,
        k3x4 = 8,
        k9x16 = 16,
        k3x2 = 32,
        k4x3 = 64,
        k16x9 = 128,
    };
    // The full frame and the square and portrait ratios.
    static constexpr long kDefaultMask = 31;

    // The types whose bit is set, in ascending order; other bits are ignored.
    static std::vector<long> ratioTypes(long mask);
    // The members that are ratio types, in their order; a type listed twice is kept once, so
    // that a ratio bar never shows the same choice twice.
    static std::vector<long> validRatioTypes(const std::vector<long>& types);
    // Width over height; 0 for the full frame and for anything that is not a type.
    static float ratio(long type);
    // The ratio of the mask's first type; 0 for a mask without one.
    static float firstRatio(long mask);
    static std::vector<long> orvOrvKitRatioDefaultTypes();
    // The type of the nearest fixed ratio, measured as a factor so that a ratio and its inverse
    // are treated alike; the full frame for a ratio of 0 or less.
    static long radioType(float ratio);
    // The main screen's short side over its long side; 0 for a screen without a size.
    static double minScreenRatio();
    // The mask's type after `currentType` in ascending order, wrapping round; its first type
    // when `currentType` is not in it; 0 for a mask without types.
    static long nextRatioType(long mask, long currentType);
};
