#pragma once
#include <array>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/rt/DispatchQueue.h"
#include "platform/rt/Object.h"

namespace orv::rt {

// A few worker threads behind the global queues. Each free worker takes the oldest job of the
// highest priority that has work. Threads start with the first job; a pool that goes away
// finishes its queued jobs and joins its threads.
class WorkerPool : public Object {
    ORV_DECLARE_CLASS(WorkerPool)
  public:
    using Job = std::function<void()>;

    ~WorkerPool() override;

    // The pool of the global queues: between two and four threads, by the machine's cores.
    static WorkerPool& shared();
    static std::shared_ptr<WorkerPool> withThreads(size_t threadCount);

    void submit(QueuePriority priority, Job job);
    size_t threadCount() const { return threadCount_; }

  private:
    static constexpr size_t kPriorities = 4;

    void startIfNeeded();  // with mutex_ held
    void work();
    bool takeJob(Job& job);  // with mutex_ held

    size_t threadCount_ = 2;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::array<std::deque<Job>, kPriorities> queues_;
    std::vector<std::thread> threads_;
    bool stopping_ = false;
};

}  // namespace orv::rt
