#include "platform/rt/RunLoop.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <chrono>
#include <cmath>

#include "platform/rt/NoDestructor.h"

namespace orv::rt {

namespace {

std::atomic<RunLoop*> mainLoop{nullptr};

// The shortest repeat of a timer, so that a zero interval cannot starve the loop.
constexpr double kMinimumTimerInterval = 1e-4;

// How often runUntil() re-reads its condition while nothing is posted.
constexpr double kConditionPollSeconds = 0.002;

}  // namespace

// Only main() makes a loop, so the one loop there is publishes itself as the main one.
RunLoop::RunLoop() : clock_(std::make_shared<SystemClock>()), thread_(std::this_thread::get_id()) {
    mainLoop = this;
}

RunLoop& RunLoop::main() {
    static NoDestructor<RunLoop> loop;
    return *loop;
}

bool RunLoop::hasMain() {
    return mainLoop.load() != nullptr;
}

bool RunLoop::isMainThread() {
    RunLoop* loop = mainLoop.load();
    return loop && loop->thread_ == std::this_thread::get_id();
}

void RunLoop::assertMainThread() const {
    assert(thread_ == std::this_thread::get_id() && "the run loop runs on the main thread only");
}

void RunLoop::setClock(std::shared_ptr<Clock> clock) {
    std::lock_guard lock(mutex_);
    const double shift = clock->now() - clock_->now();
    std::map<DelayedKey, Delayed> moved;
    for (auto& [key, item] : delayed_) {
        moved.emplace(DelayedKey{key.first + shift, key.second}, std::move(item));
    }
    delayed_ = std::move(moved);
    retiredClocks_.push_back(std::move(clock_));
    clock_ = std::move(clock);
}

Clock& RunLoop::clock() const {
    std::lock_guard lock(mutex_);
    return *clock_;
}

double RunLoop::now() const {
    return clock().now();
}

void RunLoop::post(Task task) {
    if (!task) return;
    {
        std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
        ++wakeups_;
    }
    wake_.notify_all();
}

void RunLoop::schedule(double due, Delayed item) {
    {
        std::lock_guard lock(mutex_);
        delayed_.emplace(DelayedKey{due, sequence_++}, std::move(item));
        ++wakeups_;
    }
    wake_.notify_all();
}

void RunLoop::postDelayed(double delaySeconds, Task task) {
    if (!task) return;
    schedule(now() + std::max(0.0, delaySeconds), Delayed{std::move(task), nullptr, {}, nullptr});
}

void RunLoop::performAfterDelay(std::shared_ptr<Object> target, std::string name,
                                double delaySeconds, Task task) {
    if (!task) return;
    schedule(now() + std::max(0.0, delaySeconds),
             Delayed{std::move(task), std::move(target), std::move(name), nullptr});
}

void RunLoop::cancelPerforms(const Object* target, const std::string& name) {
    cancelWhere([&](const Delayed& item) {
        return item.target.get() == target && !item.timer && (name.empty() || item.name == name);
    });
}

std::shared_ptr<Timer> RunLoop::scheduleTimer(double intervalSeconds, bool repeats,
                                              std::function<void(Timer&)> fire) {
    auto timer = make<Timer>();
    const double interval = std::max(kMinimumTimerInterval, intervalSeconds);
    timer->schedule(this, interval, repeats, std::move(fire));
    schedule(now() + interval, Delayed{nullptr, nullptr, {}, timer});
    return timer;
}

void RunLoop::cancelTimer(const Timer* timer) {
    cancelWhere([timer](const Delayed& item) { return item.timer.get() == timer; });
}

void RunLoop::cancelWhere(const std::function<bool(const Delayed&)>& matches) {
    // Cancelled items are released after the lock is dropped: letting go of a target may run its
    // dealloc, which may well cancel or post in turn.
    std::vector<Delayed> cancelled;
    {
        std::lock_guard lock(mutex_);
        for (auto it = delayed_.begin(); it != delayed_.end();) {
            if (matches(it->second)) {
                cancelled.push_back(std::move(it->second));
                it = delayed_.erase(it);
            } else {
                ++it;
            }
        }
    }
}

int RunLoop::runPending() {
    assertMainThread();
    return drain(false);
}

int RunLoop::drain(bool honourStop) {
    int ran = 0;
    for (;;) {
        int turn = runQueuedTasks(honourStop);
        if (honourStop && stopped_) return ran + turn;
        while (auto due = takeDue()) {
            runDelayed(due->first, std::move(due->second));
            ++turn;
            if (honourStop && stopped_) return ran + turn;
        }
        if (turn == 0) return ran;
        ran += turn;
    }
}

int RunLoop::runQueuedTasks(bool honourStop) {
    size_t count;
    {
        std::lock_guard lock(mutex_);
        count = tasks_.size();
    }
    int ran = 0;
    for (; count > 0; --count) {
        Task task;
        {
            std::lock_guard lock(mutex_);
            if (tasks_.empty()) break;
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        task();
        ++ran;
        if (honourStop && stopped_) break;
    }
    return ran;
}

std::optional<std::pair<double, RunLoop::Delayed>> RunLoop::takeDue() {
    std::lock_guard lock(mutex_);
    if (delayed_.empty() || delayed_.begin()->first.first > clock_->now()) return std::nullopt;
    auto node = delayed_.extract(delayed_.begin());
    return std::make_pair(node.key().first, std::move(node.mapped()));
}

void RunLoop::runDelayed(double due, Delayed item) {
    if (!item.timer) {
        item.task();
        return;
    }
    item.timer->fire();
    if (!item.timer->repeats() || !item.timer->isValid()) {
        item.timer->invalidate();
        return;
    }
    // Missed firings are skipped rather than run in a burst.
    const double interval = item.timer->interval();
    double next = due + interval;
    const double current = now();
    if (next <= current) next += std::ceil((current - next) / interval) * interval;
    if (next <= current) next = current + interval;
    schedule(next, std::move(item));
}

std::optional<double> RunLoop::nextDue() const {
    std::lock_guard lock(mutex_);
    if (delayed_.empty()) return std::nullopt;
    return delayed_.begin()->first.first;
}

void RunLoop::waitForWork(double realSeconds) {
    std::unique_lock lock(mutex_);
    if (!tasks_.empty() || stopped_) return;
    const uint64_t seen = wakeups_;
    auto wakes = [&] { return wakeups_ != seen || stopped_; };
    if (realSeconds < 0) {
        wake_.wait(lock, wakes);
    } else {
        wake_.wait_for(lock, std::chrono::duration<double>(realSeconds), wakes);
    }
}

bool RunLoop::runUntil(const std::function<bool()>& condition, double realTimeoutSeconds) {
    assertMainThread();
    using Steady = std::chrono::steady_clock;
    const auto deadline = Steady::now() + std::chrono::duration_cast<Steady::duration>(
                                              std::chrono::duration<double>(realTimeoutSeconds));
    for (;;) {
        if (condition()) return true;
        drain(false);
        if (condition()) return true;
        double budget = std::chrono::duration<double>(deadline - Steady::now()).count();
        if (budget <= 0) return false;
        if (auto next = nextDue(); next && !clock().isManual()) {
            budget = std::min(budget, std::max(0.0, *next - now()));
        }
        // The condition may turn on another thread without a post to wake us: look again soon.
        waitForWork(std::min(budget, kConditionPollSeconds));
    }
}

void RunLoop::runUntilTime(double t) {
    assertMainThread();
    if (auto* manual = dynamic_cast<ManualClock*>(&clock())) {
        drain(false);
        for (auto next = nextDue(); next && *next <= t; next = nextDue()) {
            manual->advanceTo(*next);
            drain(false);
        }
        manual->advanceTo(t);
        drain(false);
        return;
    }
    for (;;) {
        drain(false);
        const double current = now();
        if (current >= t) return;
        double until = t;
        if (auto next = nextDue()) until = std::min(until, *next);
        waitForWork(std::max(0.0, until - current));
    }
}

void RunLoop::run() {
    assertMainThread();
    for (;;) {
        drain(true);
        if (stopped_.exchange(false)) return;
        double budget = -1;
        if (auto next = nextDue(); next && !clock().isManual()) {
            budget = std::max(0.0, *next - now());
        }
        waitForWork(budget);
    }
}

void RunLoop::stop() {
    {
        std::lock_guard lock(mutex_);
        stopped_ = true;
        ++wakeups_;
    }
    wake_.notify_all();
}

size_t RunLoop::pendingCount() const {
    std::lock_guard lock(mutex_);
    return tasks_.size() + delayed_.size();
}

}  // namespace orv::rt
