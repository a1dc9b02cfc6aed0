#pragma once
// Holy light: the bright parts bloom (a blurred highlight layer screened over the picture).

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class Glow {
  public:
    Glow() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const HolyLightSettings& settings);
};

}  // namespace orv::strand
