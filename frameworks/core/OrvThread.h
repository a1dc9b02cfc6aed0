#pragma once
// A block run off the main thread, then a completion on the main thread with what the block
// returned. The task keeps itself alive until the completion has run, so a caller may drop the
// object it gets back.

#include <atomic>
#include <functional>
#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvThread : public rt::Object {
    ORV_DECLARE_CLASS(OrvThread)
  public:
    using Start = std::function<std::shared_ptr<rt::Object>()>;
    using Completed = std::function<void(std::shared_ptr<rt::Object>)>;

    // Starts at once on a new thread. An exception that leaves `start` is raised again on the
    // main thread (out of the run loop's turn) in place of the completion. Both blocks are let
    // go once they have run, so they may capture the task itself.
    static std::shared_ptr<OrvThread> initWithStart(Start start, Completed completed);

    // True once the main thread has taken the result: inside the completion and after it.
    bool isFinished() const;

  private:
    void run();
    void finish(std::shared_ptr<rt::Object> result, std::exception_ptr failure);
    Start start_;
    Completed completed_;
    std::atomic<bool> finished_{false};
};
