#pragma once
// HDR look: local tone mapping (a base layer from an edge-aware blur of the log luminance is
// compressed, detail is kept and boosted).

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class LocalToneMap {
  public:
    LocalToneMap() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const HdrSettings& settings);
};

}  // namespace orv::strand
