#pragma once
// Keyed layer animations (the platform's CAAnimation family). An animation is added to a layer
// under a key; the layer notes when it began on the main loop's clock and asks it, while it runs,
// for the value of a key path ("transform.rotation", "opacity", "strokeStart", "strokeEnd") at
// the time elapsed. When its time is up the layer removes it (unless told to keep it) and calls
// onStop(true); a removal before that calls onStop(false).

#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/rt/Object.h"

namespace orv::ui {

// The platform's fill mode names.
inline constexpr const char* kFillModeRemoved = "removed";
inline constexpr const char* kFillModeForwards = "forwards";
inline constexpr const char* kFillModeBackwards = "backwards";
inline constexpr const char* kFillModeBoth = "both";

class Animation : public rt::Object {
    ORV_DECLARE_CLASS(Animation)
  public:
    using Ptr = std::shared_ptr<Animation>;
    using StopHandler = std::function<void(bool finished)>;

    // What a duration of 0 stands for, as on the platform.
    static constexpr double kDefaultDuration = 0.25;

    double duration() const { return duration_; }
    void setDuration(double seconds) { duration_ = seconds; }
    // How many cycles run; HUGE_VALF repeats for ever, 0 counts as one.
    double repeatCount() const { return repeatCount_; }
    void setRepeatCount(double count) { repeatCount_ = count; }
    bool isRemovedOnCompletion() const { return removedOnCompletion_; }
    void setRemovedOnCompletion(bool removed) { removedOnCompletion_ = removed; }
    const std::string& fillMode() const { return fillMode_; }
    void setFillMode(std::string mode) { fillMode_ = std::move(mode); }
    // The name of the timing curve; kept only, since the drawn values move linearly.
    const std::string& timingFunction() const { return timingFunction_; }
    void setTimingFunction(std::string name) { timingFunction_ = std::move(name); }
    const StopHandler& onStop() const { return onStop_; }
    void setOnStop(StopHandler handler) { onStop_ = std::move(handler); }

    // One cycle, and the whole run (infinite for an endless animation).
    double cycleDuration() const { return duration_ > 0 ? duration_ : kDefaultDuration; }
    double activeDuration() const;
    bool repeatsForever() const { return std::isinf(activeDuration()); }

    // The value this animation gives `keyPath` `elapsed` seconds after it began, or nothing when
    // it does not animate that key path at that time. `modelValue` stands in for a missing end.
    std::optional<double> valueForKeyPath(const std::string& keyPath, double elapsed,
                                          double modelValue) const;

  protected:
    // The value at `progress` (0 to 1) through one cycle.
    virtual std::optional<double> valueAtProgress(const std::string& keyPath, double progress,
                                                  double modelValue) const {
        return std::nullopt;
    }

  private:
    double duration_ = 0;
    double repeatCount_ = 0;
    bool removedOnCompletion_ = true;
    std::string fillMode_ = kFillModeRemoved;
    std::string timingFunction_;
    StopHandler onStop_;
};

}  // namespace orv::ui

// The rest of the family, so that one include brings them all.
#include "platform/ui/AnimationGroup.h"
#include "platform/ui/BasicAnimation.h"
#include "platform/ui/TransitionAnimation.h"
