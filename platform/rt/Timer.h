#pragma once
#include <atomic>
#include <functional>
#include <mutex>

#include "platform/rt/Object.h"

namespace orv::rt {

class RunLoop;

// A one-shot or repeating timer of a run loop, made by RunLoop::scheduleTimer. The loop holds a
// valid timer, and so whatever its closure captures (its target); invalidate() lets both go. A
// Timer made any other way is never scheduled and reads as invalid.
class Timer : public Object {
    ORV_DECLARE_CLASS(Timer)
  public:
    using Fire = std::function<void(Timer&)>;

    // Any thread. Stops further firings and releases the closure; harmless when repeated.
    void invalidate();
    bool isValid() const { return valid_.load(); }
    double interval() const { return interval_; }
    bool repeats() const { return repeats_; }

  private:
    friend class RunLoop;

    void schedule(RunLoop* loop, double interval, bool repeats, Fire fire);
    // Calls the closure once; a copy is called so that invalidate() from inside it is safe.
    void fire();

    RunLoop* loop_ = nullptr;
    double interval_ = 0;
    bool repeats_ = false;
    std::atomic<bool> valid_{false};
    mutable std::mutex mutex_;
    Fire fire_;
};

}  // namespace orv::rt
