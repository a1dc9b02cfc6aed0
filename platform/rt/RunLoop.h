#pragma once
// The main run loop: one FIFO of tasks plus time-based sources (delayed tasks, named performs,
// timers), served on the main thread in order. Every hop to the main thread, whatever the
// mechanism (post, mainQueue().async, a timer, an animation tick), goes through this one queue,
// so mixed mechanisms keep their order of submission.
//
// The main thread is the thread that first asks for RunLoop::main(). Tests and scripted sessions
// put a ManualClock in place: then time moves only in runFor()/runUntilTime(), which fire
// delayed work in time order, while other threads still run for real and post as they please.

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/rt/Clock.h"
#include "platform/rt/Object.h"

namespace orv::rt {

class Timer;

class RunLoop {
public:
    using Task = std::function<void()>;

    // The main run loop, made at first use and bound to the thread that made it.
    static RunLoop& main();
    static bool hasMain();
    static bool isMainThread();

    // The clock of all deadlines. Replacing it keeps pending delayed work at the same distance
    // from "now" that it had on the old clock.
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

    // A timer on this loop; a repeating one fires every interval until invalidated.
    std::shared_ptr<Timer> scheduleTimer(double intervalSeconds, bool repeats,
                                         std::function<void(Timer&)> fire);

    // Runs what is ready now (posted tasks and due delayed work); returns how many ran.
    int runPending();
    // Runs until the condition holds, serving posts from other threads as they arrive. The clock
    // is not advanced by this call; gives up after realTimeoutSeconds of wall time.
    bool runUntil(const std::function<bool()>& condition, double realTimeoutSeconds = 10);
    // Runs until the clock reads `t`. On a manual clock, time jumps from one due item to the next
    // and stops at `t`; on the system clock, this waits for real.
    void runUntilTime(double t);
    void runFor(double seconds) { runUntilTime(now() + seconds); }
    // Runs until stop() (the application's main loop).
    void run();
    // Any thread: makes run() return after the task in progress.
    void stop();

    // Number of tasks and delayed items waiting (tests use it to see that a loop has drained).
    size_t pendingCount() const;

private:
    RunLoop();
    struct Delayed;
    friend class Timer;

    bool takeReady(Task& out);
    void cancelTimer(const Timer* timer);

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::shared_ptr<Clock> clock_;
    std::deque<Task> tasks_;
    std::vector<std::shared_ptr<Delayed>> delayed_;
    uint64_t sequence_ = 0;
    bool stopped_ = false;
    std::thread::id thread_;
};

// A one-shot or repeating timer of the main run loop. Invalidate it to stop it; the loop holds
// it (and whatever its closure holds) while it is valid.
class Timer {
public:
    void invalidate();
    bool isValid() const;
    double interval() const { return interval_; }
    bool repeats() const { return repeats_; }

private:
    friend class RunLoop;
    Timer(RunLoop& loop, double interval, bool repeats) : loop_(loop), interval_(interval), repeats_(repeats) {}
    RunLoop& loop_;
    double interval_;
    bool repeats_;
    std::atomic<bool> valid_{true};
};

}  // namespace orv::rt
