#pragma once
// A colour look-up table over straight R, G, B: kSize³ nodes sampled from a colour function,
// applied to premultiplied pixels by tetrahedral interpolation, alpha kept. Any mix of curves,
// matrices and tints then costs the same single pass over the pixels, and what a look adds
// after its colours (a blend back toward the picture, grain, a vignette) rides along in it.

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class ColorTable {
  public:
    static constexpr int kSize = 33;
    // Changes a straight colour, each component in [0, 1], in place; called from several
    // threads at once.
    using Function = std::function<void(std::array<float, 3>& rgb)>;

    // What follows the table in the same pass, for one row, in this order.
    struct Finish {
        int weight = 256;  // of the table's colour against the pixel's own, in 1/256ths
        // Grain: a value in [−127, 127] for each pixel (null for none), scaled so that 127
        // adds `grain` / 256 × 127 levels to a midtone (less toward black and white).
        const int8_t* noise = nullptr;
        int grain = 0;
        // A multiplier of the colour for each pixel, in 1/256ths (null for none).
        const uint16_t* shade = nullptr;
    };

    // The luma (Rec. 709 weights) of a straight colour, for the functions' tone work.
    static float luma(const std::array<float, 3>& rgb) {
        return 0.2126f * rgb[0] + 0.7152f * rgb[1] + 0.0722f * rgb[2];
    }

    // The table of `function` (its results clamped to [0, 1]).
    explicit ColorTable(const Function& function);

    // `count` premultiplied R, G, B, A pixels from `in` through the table (and the finish) to
    // `out`.
    void applyRow(const uint8_t* in, uint8_t* out, int count) const;
    void applyRow(const uint8_t* in, uint8_t* out, int count, const Finish& finish) const;
    // A new bitmap of every pixel through the table.
    gfx::BitmapPtr apply(const gfx::Bitmap& src) const;

  private:
    // Each node 10 bits a component (four times the 8-bit value): R, then G, then B upwards.
    std::vector<uint32_t> nodes_;
};

}  // namespace orv::strand
