#pragma once
#include <functional>
#include <string>

namespace orv::rt {

// Threads outside the pools: one detached thread per job, and the per-thread name that some
// flows use to tell a superseded job to stop.
class Thread {
  public:
    Thread() = delete;

    // Starts `body` on a new detached thread. The closure (and so everything it captures)
    // lives until `body` returns, and is destroyed on that thread.
    static void detach(std::function<void()> body);
    // The same, with the new thread named before `body` runs.
    static void detach(std::string name, std::function<void()> body);

    // The calling thread's name; empty until set.
    static void setCurrentName(std::string name);
    static std::string currentName();

    static bool isMainThread();
};

}  // namespace orv::rt
