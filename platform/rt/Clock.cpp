#include "platform/rt/Clock.h"

#include <chrono>

namespace orv::rt {

double SystemClock::now() const {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void ManualClock::advanceTo(double t) {
    double current = now_.load();
    while (current < t && !now_.compare_exchange_weak(current, t)) {
    }
}

}  // namespace orv::rt
