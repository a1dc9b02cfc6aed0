#pragma once
#include <atomic>
#include <mutex>
#include <thread>

namespace orv::rt {

// A short-hold lock for guarding a pointer swap or a slot list; usable with std::lock_guard.
// Recursive locks are plain std::recursive_mutex (see RecursiveMutex below).
class SpinLock {
  public:
    void lock() {
        while (flag_.test_and_set(std::memory_order_acquire)) {
            while (flag_.test(std::memory_order_relaxed)) std::this_thread::yield();
        }
    }
    bool try_lock() { return !flag_.test_and_set(std::memory_order_acquire); }
    void unlock() { flag_.clear(std::memory_order_release); }

  private:
    std::atomic_flag flag_;
};

using RecursiveMutex = std::recursive_mutex;

}  // namespace orv::rt
