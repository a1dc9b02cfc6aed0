#include "frameworks/strand/kernels/ToneCurve.h"

#include <algorithm>
#include <cmath>

namespace orv::strand {

namespace {

// Fritsch–Carlson tangents: the cubic Hermite pieces through them stay within the values of
// their ends, so a curve of increasing points is increasing too.
std::vector<float> monotoneTangents(const std::vector<std::pair<float, float>>& p) {
    const size_t n = p.size();
    std::vector<float> secant(n - 1), tangent(n);
    for (size_t i = 0; i + 1 < n; ++i) {
        secant[i] = (p[i + 1].second - p[i].second) / (p[i + 1].first - p[i].first);
    }
    tangent[0] = secant[0];
    tangent[n - 1] = secant[n - 2];
    for (size_t i = 1; i + 1 < n; ++i) {
        tangent[i] = secant[i - 1] * secant[i] <= 0 ? 0 : (secant[i - 1] + secant[i]) / 2;
    }
    for (size_t i = 0; i + 1 < n; ++i) {
        if (secant[i] == 0) {
            tangent[i] = tangent[i + 1] = 0;
            continue;
        }
        const float a = tangent[i] / secant[i], b = tangent[i + 1] / secant[i];
        const float length = std::hypot(a, b);
        if (length > 3) {
            tangent[i] = 3 * a / length * secant[i];
            tangent[i + 1] = 3 * b / length * secant[i];
        }
    }
    return tangent;
}

float hermite(const std::pair<float, float>& p0, const std::pair<float, float>& p1, float m0,
              float m1, float x) {
    const float h = p1.first - p0.first, t = (x - p0.first) / h;
    const float t2 = t * t, t3 = t2 * t;
    return (2 * t3 - 3 * t2 + 1) * p0.second + (t3 - 2 * t2 + t) * h * m0 +
           (-2 * t3 + 3 * t2) * p1.second + (t3 - t2) * h * m1;
}

}  // namespace

ToneCurve::ToneCurve() : samples_(kSegments + 1) {
    for (int i = 0; i <= kSegments; ++i) samples_[i] = static_cast<float>(i) / kSegments;
}

ToneCurve ToneCurve::through(const std::vector<std::pair<float, float>>& points) {
    if (points.size() < 2) return {};
    const std::vector<float> tangent = monotoneTangents(points);
    return sampled([&](float x) {
        if (x <= points.front().first) return points.front().second;
        if (x >= points.back().first) return points.back().second;
        size_t i = 0;
        while (points[i + 1].first < x) ++i;
        return hermite(points[i], points[i + 1], tangent[i], tangent[i + 1], x);
    });
}

ToneCurve ToneCurve::sampled(const std::function<float(float)>& function) {
    ToneCurve curve;
    for (int i = 0; i <= kSegments; ++i) {
        const float y = function(static_cast<float>(i) / kSegments);
        curve.samples_[i] = std::isnan(y) ? 0 : std::clamp(y, 0.0f, 1.0f);
    }
    return curve;
}

ToneCurve ToneCurve::after(const ToneCurve& first) const {
    ToneCurve curve;
    for (int i = 0; i <= kSegments; ++i) curve.samples_[i] = (*this)(first.samples_[i]);
    return curve;
}

}  // namespace orv::strand
