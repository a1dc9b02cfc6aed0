#pragma once
// The main run loop: one FIFO of tasks plus time-based sources (delayed tasks, named performs,
// timers), served on the main thread in order. Every hop to the main thread, whatever the
// mechanism (post, mainQueue().async, a timer, an animation tick), goes through this one queue,
// so mixed mechanisms keep their order of submission.
//
// The main thread is the thread that first asks for RunLoop::main(). Tests and scripted sessions
// put a ManualClock in place: then time moves only in runFor()/runUntilTime(), which fire
// delayed work in time order, while other threads still run for real and post as they please.
//
// One turn of the loop runs the tasks that were queued when it began, then the delayed items
// that are due (earliest first, equal times in order of submission). run*() drain turns until
// nothing is ready, so tasks posted by what runs are served before the call returns.

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/rt/Clock.h"
#include "platform/rt/Object.h"
#include "platform/rt/Timer.h"

namespace orv::rt {

template <class T>
class NoDestructor;

class RunLoop {
  public:
    using Task = std::function<void()>;

    // The main run loop, made at first use and bound to the thread that made it.
    static RunLoop& main();
    static bool hasMain();
    static bool isMainThread();

    // The clock of all deadlines. Replacing it keeps pending delayed work at the same distance
    // from "now" that it had on the old clock. Set it before other threads use the loop.
    void setClock(std::shared_ptr<Clock> clock);
    Clock& clock() const;
    double now() const;

    // Any thread. Runs on the main thread after everything posted before it.
    void post(Task task);
    // Any thread. Runs when the clock reaches now + delay (delays ≤ 0 run on the next turn).
    void postDelayed(double delaySeconds, Task task);

    // The perform-after-delay pair: the target is retained until the call fires or is cancelled.
    void performAfterDelay(std::shared_ptr<Object> target, std::string name, double delaySeconds,
                           Task task);
    // Cancels pending performs on the target with that name (all names when name is empty).
    void cancelPerforms(const Object* target, const std::string& name = {});

    // A timer on this loop; a repeating one fires every interval until invalidated. Intervals
    // are at least 0.1 ms, so a repeating timer cannot spin the loop.
    std::shared_ptr<Timer> scheduleTimer(double intervalSeconds, bool repeats,
                                         std::function<void(Timer&)> fire);

    // Runs what is ready now (posted tasks and due delayed work); returns how many ran.
    int runPending();
    // Runs until the condition holds, serving posts from other threads as they arrive and
    // re-reading the condition every few milliseconds (it may turn on another thread). The clock
    // is not advanced by this call; gives up after realTimeoutSeconds of wall time.
    bool runUntil(const std::function<bool()>& condition, double realTimeoutSeconds = 10);
    // Runs until the clock reads `t`. On a manual clock, time jumps from one due item to the next
    // and stops at `t`; on the system clock, this waits for real.
    void runUntilTime(double t);
    void runFor(double seconds) { runUntilTime(now() + seconds); }
    // Runs until stop() (the application's main loop). A stop() that came while nothing was
    // running makes the next run() return after its first turn.
    void run();
    // Any thread: makes run() return after the task in progress.
    void stop();

    // Number of tasks and delayed items waiting (tests use it to see that a loop has drained).
    size_t pendingCount() const;

  private:
    friend class NoDestructor<RunLoop>;
    friend class Timer;

    struct Delayed {
        Task task;
        std::shared_ptr<Object> target;  // held until fired or cancelled
        std::string name;
        std::shared_ptr<Timer> timer;
    };
    using DelayedKey = std::pair<double, uint64_t>;  // due time, then order of submission

    RunLoop();

    void assertMainThread() const;
    void schedule(double due, Delayed item);
    int drain(bool honourStop);
    int runQueuedTasks(bool honourStop);
    std::optional<std::pair<double, Delayed>> takeDue();
    void runDelayed(double due, Delayed item);
    std::optional<double> nextDue() const;
    // Blocks until something is posted, stop() is called or the real-time budget passes.
    void waitForWork(double realSeconds);
    void cancelTimer(const Timer* timer);
    void cancelWhere(const std::function<bool(const Delayed&)>& matches);

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    uint64_t wakeups_ = 0;
    std::shared_ptr<Clock> clock_;
    std::vector<std::shared_ptr<Clock>> retiredClocks_;  // clock() references stay valid
    std::deque<Task> tasks_;
    std::map<DelayedKey, Delayed> delayed_;
    uint64_t sequence_ = 0;
    std::atomic<bool> stopped_{false};
    std::thread::id thread_;
};

}  // namespace orv::rt
