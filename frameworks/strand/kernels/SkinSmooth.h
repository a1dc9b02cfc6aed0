#pragma once
// Skin smoothing: an edge-preserving (guided) filter applied where the colour is skin, with
// whitening and a ruddy tint.

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class SkinSmooth {
  public:
    SkinSmooth() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const SkinSettings& settings);
};

}  // namespace orv::strand
