#pragma once
// Animations that run together on the group's clock: each child's time starts with the group's
// cycle, and a child that animates the same key path as an earlier one wins over it.

#include <memory>
#include <vector>

#include "platform/ui/Animation.h"

namespace orv::ui {

class AnimationGroup : public Animation {
    ORV_DECLARE_CLASS(AnimationGroup)
  public:
    const std::vector<Animation::Ptr>& animations() const { return animations_; }
    void setAnimations(std::vector<Animation::Ptr> animations) {
        animations_ = std::move(animations);
    }

  protected:
    std::optional<double> valueAtProgress(const std::string& keyPath, double progress,
                                          double modelValue) const override;

  private:
    std::vector<Animation::Ptr> animations_;
};

}  // namespace orv::ui
