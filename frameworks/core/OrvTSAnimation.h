#pragma once
// A duration-based ticker on the main run loop: from start() it calls its block about 60 times a
// second with the eased progress of the time gone by, from just above 0 to exactly 1, and then
// stops by itself. The block may stop or destroy the animation; the animation holds itself while
// it runs, so the caller may keep only a weak reference. Main thread only.

#include <functional>
#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"
#include "platform/rt/Timer.h"

// An easing curve: the time gone by, 0 to 1, to the progress shown.
using OrvTSTween = double (*)(double);

// Fast at first, then settling: 1 − (1 − t)^5.
double OrvKitTweenQuintEaseOut(double t);
double OrvKitTweenLinear(double t);

class OrvTSAnimation : public rt::Object {
    ORV_DECLARE_CLASS(OrvTSAnimation)
  public:
    static constexpr double kFrameInterval = 1.0 / 60;
    using Block = std::function<void(OrvTSAnimation& animation, double step)>;

    static std::shared_ptr<OrvTSAnimation> animWithDuration(double seconds, OrvTSTween tween,
                                                            Block block);

    // Starts again from the beginning when running.
    void start();
    // Stops where it is; start() runs it again from the beginning.
    void stop();
    // Stops for good and lets the block go.
    void destory();
    bool isRunning() const { return timer_ != nullptr; }
    double duration() const { return duration_; }

  private:
    void tick();

    double duration_ = 0;
    OrvTSTween tween_ = nullptr;
    Block block_;
    double startTime_ = 0;
    std::shared_ptr<rt::Timer> timer_;
};
