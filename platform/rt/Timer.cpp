#include "platform/rt/Timer.h"

#include "platform/rt/RunLoop.h"

namespace orv::rt {

ORV_DEFINE_CLASS(Timer, Object)

void Timer::schedule(RunLoop* loop, double interval, bool repeats, Fire fire) {
    loop_ = loop;
    interval_ = interval;
    repeats_ = repeats;
    {
        std::lock_guard lock(mutex_);
        fire_ = std::move(fire);
    }
    valid_ = true;
}

void Timer::invalidate() {
    if (!valid_.exchange(false)) return;
    Fire released;
    {
        std::lock_guard lock(mutex_);
        released = std::move(fire_);
        fire_ = nullptr;
    }
    if (loop_) loop_->cancelTimer(this);
    // `released` (and what it captured) goes here, outside both locks.
}

void Timer::fire() {
    Fire call;
    {
        std::lock_guard lock(mutex_);
        call = fire_;
    }
    if (call && isValid()) call(*this);
}

}  // namespace orv::rt
