#include "examples/orvdemo/DemoWait.h"

#include <chrono>

#include "platform/rt/RunLoop.h"

namespace orvdemo {

bool waitFor(const std::function<bool()>& done, double seconds) {
    auto& loop = orv::rt::RunLoop::main();
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) return false;
        loop.runUntil(done, 0.02);
        loop.runFor(1.0 / 30);
    }
    return true;
}

}  // namespace orvdemo
