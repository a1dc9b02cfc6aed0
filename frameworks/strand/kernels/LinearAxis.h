#pragma once
// Where the pixels of a full-size axis fall between the pixel centres of a reduced one, for
// enlarging by linear interpolation: the lower neighbour and the upper one's share.

#include <algorithm>
#include <vector>

namespace orv::strand {

struct LinearAxis {
    std::vector<int> lower, upper;  // upper is lower + 1 but for the last reduced pixel
    std::vector<float> share;       // of the upper neighbour

    LinearAxis(int full, int reduced) : lower(full), upper(full), share(full) {
        const float scale = float(reduced) / float(full);
        for (int i = 0; i < full; ++i) {
            const float at = std::clamp((float(i) + 0.5f) * scale - 0.5f, 0.f, reduced - 1.f);
            lower[i] = std::min(int(at), reduced - 1);
            upper[i] = std::min(lower[i] + 1, reduced - 1);
            share[i] = at - float(lower[i]);
        }
    }
};

}  // namespace orv::strand
