#include "frameworks/strand/kernels/GuidedFilter.h"

#include <algorithm>

#include "frameworks/strand/kernels/ParallelRows.h"

namespace orv::strand {

namespace {

void addSquares(const float* __restrict in, float* __restrict sum, size_t count) {
    for (size_t i = 0; i < count; ++i) sum[i] += in[i] * in[i];
}

void subtractSquares(const float* __restrict in, float* __restrict sum, size_t count) {
    for (size_t i = 0; i < count; ++i) sum[i] -= in[i] * in[i];
}

// The summed variance becomes the gain.
void gainRow(float* __restrict variance, size_t count, float epsilon) {
    for (size_t i = 0; i < count; ++i) {
        const float v = std::max(0.f, variance[i]);
        variance[i] = v / (v + epsilon);
    }
}

// The window mean becomes the bias.
void biasRow(const float* __restrict gain, float* __restrict mean, size_t count) {
    for (size_t i = 0; i < count; ++i) mean[i] -= gain[i] * mean[i];
}

// Runs `row(first, count)` over every element of a plane's size, in bands of rows.
template <typename Row>
void eachBand(const Plane& plane, const Row& row) {
    const size_t width = static_cast<size_t>(plane.width);
    ParallelRows::run(plane.height,
                      [&](int begin, int end) { row(begin * width, (end - begin) * width); });
}

}  // namespace

GuidedFilter::Coefficients GuidedFilter::coefficients(const std::vector<const Plane*>& planes,
                                                      int radius, float epsilon) {
    Coefficients out;
    if (planes.empty()) return out;
    const Plane& first = *planes.front();
    out.gain = Plane{first.width, first.height, std::vector<float>(first.data.size())};
    for (const Plane* plane : planes) {
        out.bias.push_back(*plane);
        eachBand(first, [&](size_t at, size_t count) {
            addSquares(&plane->data[at], &out.gain.data[at], count);
        });
    }
    GaussianBlur::boxMeanInPlace(out.gain, radius);
    for (Plane& mean : out.bias) {
        GaussianBlur::boxMeanInPlace(mean, radius);
        eachBand(first, [&](size_t at, size_t count) {
            subtractSquares(&mean.data[at], &out.gain.data[at], count);
        });
    }
    // A flat window must not divide 0 by 0.
    const float summedEpsilon = std::max(epsilon * static_cast<float>(planes.size()), 1e-8f);
    eachBand(first, [&](size_t at, size_t count) {
        gainRow(&out.gain.data[at], count, summedEpsilon);
        for (Plane& mean : out.bias) biasRow(&out.gain.data[at], &mean.data[at], count);
    });
    GaussianBlur::boxMeanInPlace(out.gain, radius);
    for (Plane& bias : out.bias) GaussianBlur::boxMeanInPlace(bias, radius);
    return out;
}

}  // namespace orv::strand
