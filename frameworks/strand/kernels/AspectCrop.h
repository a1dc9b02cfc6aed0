#pragma once
// The centred crop to a width-to-height ratio (the camera's frame); a ratio at or below 0 keeps the
// picture.

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class AspectCrop {
  public:
    AspectCrop() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, double ratio);
};

}  // namespace orv::strand
