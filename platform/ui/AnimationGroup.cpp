#include "platform/ui/AnimationGroup.h"

namespace orv::ui {

ORV_DEFINE_CLASS(AnimationGroup, Animation)

std::optional<double> AnimationGroup::valueAtProgress(const std::string& keyPath, double progress,
                                                      double modelValue) const {
    const double elapsed = progress * cycleDuration();
    std::optional<double> value;
    for (const Animation::Ptr& child : animations_) {
        if (!child) continue;
        if (auto v = child->valueForKeyPath(keyPath, elapsed, value.value_or(modelValue))) {
            value = v;
        }
    }
    return value;
}

}  // namespace orv::ui
