#pragma once
// The aperture: blur outside a focused circle or band, with a soft edge, and the translucent mask
// over the blurred part.

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class SelectiveBlur {
  public:
    SelectiveBlur() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const ApertureSettings& settings);
};

}  // namespace orv::strand
