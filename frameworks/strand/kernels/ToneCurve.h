#pragma once
// A map of one channel's values in [0, 1] to [0, 1]: a smooth curve through control points
// (monotone cubic, so it never overshoots between them) or any function, kept as evenly spaced
// samples so that evaluating it costs one interpolated look-up.

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace orv::strand {

class ToneCurve {
  public:
    // The identity.
    ToneCurve();
    // Through `points` (x, y), x strictly increasing, all in [0, 1]; flat before the first and
    // after the last. Fewer than two points give the identity.
    static ToneCurve through(const std::vector<std::pair<float, float>>& points);
    // Samples of `function`, clamped to [0, 1].
    static ToneCurve sampled(const std::function<float(float)>& function);

    // The curve at x (x clamped to [0, 1]); inline, as tables are built from many of these.
    float operator()(float x) const {
        const float position = (x > 0 ? (x < 1 ? x : 1.0f) : 0.0f) * kSegments;  // NaN: 0
        const int i = std::min(static_cast<int>(position), kSegments - 1);
        return samples_[i] + (samples_[i + 1] - samples_[i]) * (position - i);
    }
    // The curve after `first` (this of first).
    ToneCurve after(const ToneCurve& first) const;

  private:
    static constexpr int kSegments = 1024;
    std::vector<float> samples_;  // kSegments + 1 values at x = i / kSegments
};

}  // namespace orv::strand
