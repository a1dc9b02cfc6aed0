#pragma once
// Face reshaping: eyes enlarged and cheeks thinned by local warps around each face's landmarks; no
// faces, no change.

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class FaceWarp {
  public:
    FaceWarp() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const PlasticSettings& settings);
};

}  // namespace orv::strand
