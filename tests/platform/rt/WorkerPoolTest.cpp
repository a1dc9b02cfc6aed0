#include "platform/rt/WorkerPool.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace orv::rt {
namespace {

// A gate the test opens once everything is queued.
class Gate {
  public:
    void open() {
        std::lock_guard lock(mutex_);
        open_ = true;
        changed_.notify_all();
    }
    void wait() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return open_; });
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool open_ = false;
};

TEST(WorkerPoolTest, FreeWorkerTakesHigherPrioritiesFirstAndOldestWithinOne) {
    auto pool = WorkerPool::withThreads(1);
    Gate gate;
    std::mutex mutex;
    std::vector<std::string> order;
    auto job = [&](std::string name) {
        return [&, name] {
            std::lock_guard lock(mutex);
            order.push_back(name);
        };
    };
    pool->submit(QueuePriority::Default, [&] { gate.wait(); });  // holds the only worker
    pool->submit(QueuePriority::Background, job("background"));
    pool->submit(QueuePriority::Low, job("low"));
    pool->submit(QueuePriority::Default, job("default"));
    pool->submit(QueuePriority::High, job("high-1"));
    pool->submit(QueuePriority::High, job("high-2"));
    gate.open();
    pool.reset();  // finishes the queue, then joins

    EXPECT_EQ(order,
              (std::vector<std::string>{"high-1", "high-2", "default", "low", "background"}));
}

TEST(WorkerPoolTest, SharedPoolHasTwoToFourThreads) {
    EXPECT_GE(WorkerPool::shared().threadCount(), 2u);
    EXPECT_LE(WorkerPool::shared().threadCount(), 4u);
}

}  // namespace
}  // namespace orv::rt
