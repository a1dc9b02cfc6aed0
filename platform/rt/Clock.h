#pragma once
#include <atomic>
#include <memory>

namespace orv::rt {

// Time in seconds on some clock's own scale. The main run loop reads all its deadlines from one
// Clock, so a session can be run on real time or stepped by hand.
class Clock {
public:
    virtual ~Clock() = default;
    virtual double now() const = 0;
    // True when time moves only when someone advances it.
    virtual bool isManual() const = 0;
};

// Seconds from a steady (monotonic) source.
class SystemClock final : public Clock {
public:
    double now() const override;
    bool isManual() const override { return false; }
};

// Time that moves only through advanceTo()/advanceBy(), which the run loop calls while it
// runs for a span (RunLoop::runFor). Reading is safe from any thread.
class ManualClock final : public Clock {
public:
    explicit ManualClock(double start = 0) : now_(start) {}
    double now() const override { return now_.load(); }
    bool isManual() const override { return true; }
    void advanceTo(double t);  // never goes back
    void advanceBy(double seconds) { advanceTo(now() + seconds); }

private:
    std::atomic<double> now_;
};

}  // namespace orv::rt
