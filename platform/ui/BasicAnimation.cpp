#include "platform/ui/BasicAnimation.h"

namespace orv::ui {

ORV_DEFINE_CLASS(BasicAnimation, Animation)

std::shared_ptr<BasicAnimation> BasicAnimation::withKeyPath(std::string keyPath) {
    auto animation = rt::make<BasicAnimation>();
    animation->setKeyPath(std::move(keyPath));
    return animation;
}

std::optional<double> BasicAnimation::valueAtProgress(const std::string& keyPath, double progress,
                                                      double modelValue) const {
    if (keyPath != keyPath_) return std::nullopt;
    const double from = fromValue_.value_or(modelValue);
    const double to = toValue_ ? *toValue_ : byValue_ ? from + *byValue_ : modelValue;
    return from + (to - from) * progress;
}

}  // namespace orv::ui
