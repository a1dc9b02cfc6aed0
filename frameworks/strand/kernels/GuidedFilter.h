#pragma once
// The guided filter (He, Sun and Tang) of colour planes guided by themselves, with one gain for
// all of them: in each window every plane becomes gain × plane + its bias, where the gain is
// near 1 if the planes' summed variance is well above epsilon (an edge in any colour stays,
// without colour fringes) and near 0 below it (flat areas take the local mean).

#include <vector>

#include "frameworks/strand/kernels/GaussianBlur.h"

namespace orv::strand {

class GuidedFilter {
  public:
    GuidedFilter() = delete;

    struct Coefficients {
        Plane gain;
        std::vector<Plane> bias;  // one a plane
    };

    // The box-averaged coefficients over (2 × radius + 1) windows of same-sized planes;
    // `epsilon` is a variance of one plane. They may be computed on reduced planes and
    // interpolated up (the fast guided filter).
    static Coefficients coefficients(const std::vector<const Plane*>& planes, int radius,
                                     float epsilon);
};

}  // namespace orv::strand
