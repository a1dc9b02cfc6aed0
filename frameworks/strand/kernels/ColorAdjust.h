#pragma once
// The seven colour adjustments in their fixed order.

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class ColorAdjust {
  public:
    ColorAdjust() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const ColorAdjustSettings& settings);
};

}  // namespace orv::strand
