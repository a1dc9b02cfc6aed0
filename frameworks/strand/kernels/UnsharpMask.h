#pragma once
// Sharpening by an unsharp mask: the picture plus amount × (picture − blurred), on colour only.

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class UnsharpMask {
  public:
    UnsharpMask() = delete;
    static gfx::BitmapPtr apply(const gfx::Bitmap& src, const SharpenSettings& settings);
};

}  // namespace orv::strand
