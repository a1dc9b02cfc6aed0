#pragma once
// How much a colour looks like skin, 0 to 1: a range test in YCbCr with soft edges, so that the
// smoothing and the tints fade in and out instead of drawing outlines.

#include "frameworks/strand/kernels/GaussianBlur.h"

namespace orv::strand {

class SkinMask {
  public:
    SkinMask() = delete;
    // The mask of premultiplied planes (0 to 1), weighted by coverage and slightly blurred.
    static Plane fromColour(const Plane& red, const Plane& green, const Plane& blue,
                            const Plane& alpha);
};

}  // namespace orv::strand
