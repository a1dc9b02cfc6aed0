#pragma once
// Darkens the corners from a distance outwards, smoothly.

#include <cstdint>

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class Vignette {
  public:
    // The tool filter: `start` 1 is none, lower starts nearer the centre.
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const VignetteSettings& settings);

    // A fall that begins at `start` (in half diagonals from the centre) and goes on smoothly
    // until the colour is multiplied by 1 − `depth` (0 to 1).
    Vignette(float start, float depth);
    // The colour multipliers of row `y` of a width × height picture, in 1/256ths: 256 inside
    // `start`, falling outside it.
    void shadeRow(uint16_t* shade, int width, int y, int height) const;

  private:
    // The fall runs over the squared distance, from start² to (start + fade)², so that no
    // square root stands in the way of vectorising.
    float from_;
    float scale_;
    float depth_;
};

}  // namespace orv::strand
