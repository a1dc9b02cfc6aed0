#include "frameworks/core/OrvTSAnimation.h"

#include <algorithm>
#include <cmath>

#include "platform/rt/RunLoop.h"

ORV_DEFINE_CLASS(OrvTSAnimation, rt::Object)

double OrvKitTweenQuintEaseOut(double t) {
    const double rest = 1 - std::clamp(t, 0.0, 1.0);
    return 1 - std::pow(rest, 5);
}

double OrvKitTweenLinear(double t) {
    return std::clamp(t, 0.0, 1.0);
}

std::shared_ptr<OrvTSAnimation> OrvTSAnimation::animWithDuration(double seconds, OrvTSTween tween,
                                                                 Block block) {
    auto animation = rt::make<OrvTSAnimation>();
    animation->duration_ = std::max(0.0, seconds);
    animation->tween_ = tween ? tween : OrvKitTweenLinear;
    animation->block_ = std::move(block);
    return animation;
}

void OrvTSAnimation::start() {
    stop();
    if (!block_) return;
    rt::RunLoop& loop = rt::RunLoop::main();
    startTime_ = loop.now();
    // The timer holds the animation while it runs.
    auto self = std::static_pointer_cast<OrvTSAnimation>(shared_from_this());
    timer_ = loop.scheduleTimer(kFrameInterval, true, [self](rt::Timer&) { self->tick(); });
}

void OrvTSAnimation::stop() {
    if (!timer_) return;
    timer_->invalidate();
    timer_.reset();
}

void OrvTSAnimation::destory() {
    stop();
    block_ = nullptr;
}

void OrvTSAnimation::tick() {
    const double elapsed = rt::RunLoop::main().now() - startTime_;
    const double t = duration_ > 0 ? std::min(1.0, elapsed / duration_) : 1;
    // Keep the block alive through the call: it may destroy the animation.
    Block block = block_;
    if (block) block(*this, tween_(t));
    if (t >= 1) stop();
}
