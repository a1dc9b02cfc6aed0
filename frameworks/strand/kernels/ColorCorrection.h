#pragma once
// Levels from an analysis: each channel's black and white points stretched to 0 and 255 and its
// middle brought towards grey.

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class ColorCorrection {
  public:
    ColorCorrection() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const ColorCorrectionSettings& settings);
};

}  // namespace orv::strand
