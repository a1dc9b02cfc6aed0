#include "platform/ui/Animation.h"

#include <algorithm>

namespace orv::ui {

ORV_DEFINE_CLASS(Animation, rt::Object)

double Animation::activeDuration() const {
    if (std::isinf(repeatCount_)) return HUGE_VAL;
    return cycleDuration() * std::max(1.0, repeatCount_);
}

std::optional<double> Animation::valueForKeyPath(const std::string& keyPath, double elapsed,
                                                 double modelValue) const {
    const double cycle = cycleDuration();
    double progress;
    if (elapsed < 0) {
        if (fillMode_ != kFillModeBackwards && fillMode_ != kFillModeBoth) return std::nullopt;
        progress = 0;
    } else if (elapsed >= activeDuration()) {
        if (fillMode_ != kFillModeForwards && fillMode_ != kFillModeBoth) return std::nullopt;
        progress = 1;
    } else {
        progress = std::fmod(elapsed, cycle) / cycle;
    }
    return valueAtProgress(keyPath, progress, modelValue);
}

}  // namespace orv::ui
