#pragma once
// A wide gaussian blur (glows, blurred backgrounds) worked out on a copy reduced so that 2 to
// 4 pixels of sigma remain there, and read back at full size row by row with linear
// interpolation: within a few levels of the full-size blur away from the borders (a few more
// on hard edges), many times faster, and no full-size copy is made. Sigmas under 4 are done
// at full size.

#include <functional>
#include <optional>
#include <vector>

#include "frameworks/strand/kernels/LinearAxis.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class WideBlur {
  public:
    // `prepare`, if any, changes the picture before the blur, at the reduced size (a pixel-wise
    // change, which is close enough to making it before reducing when the blur is wide).
    using Prepare = std::function<gfx::BitmapPtr(const gfx::Bitmap&)>;
    WideBlur(const gfx::Bitmap& src, double sigma, const Prepare& prepare = {});

    // Row y of the blurred picture, R, G, B, A bytes of the full width: a row of the blurred
    // bitmap, or `scratch` filled.
    const uint8_t* row(int y, std::vector<uint8_t>& scratch) const;

  private:
    int width_ = 0;
    gfx::BitmapPtr blurred_;          // at full size, or reduced
    std::optional<LinearAxis> down_;  // when reduced
    std::vector<uint8_t> widened_;    // each reduced row widened to the full width
};

}  // namespace orv::strand
