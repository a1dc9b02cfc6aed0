#include "platform/rt/WorkerPool.h"

#include <algorithm>

#include "platform/rt/NoDestructor.h"

namespace orv::rt {

ORV_DEFINE_CLASS(WorkerPool, Object)

WorkerPool& WorkerPool::shared() {
    static NoDestructor<std::shared_ptr<WorkerPool>> pool(
        withThreads(std::clamp<size_t>(std::thread::hardware_concurrency(), 2, 4)));
    return **pool;
}

std::shared_ptr<WorkerPool> WorkerPool::withThreads(size_t threadCount) {
    return makeWith<WorkerPool>([threadCount](WorkerPool& pool) {
        pool.init();
        pool.threadCount_ = std::max<size_t>(1, threadCount);
    });
}

WorkerPool::~WorkerPool() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    ready_.notify_all();
    for (auto& thread : threads_) thread.join();
}

void WorkerPool::submit(QueuePriority priority, Job job) {
    if (!job) return;
    {
        std::lock_guard lock(mutex_);
        startIfNeeded();
        queues_[static_cast<size_t>(priority)].push_back(std::move(job));
    }
    ready_.notify_one();
}

void WorkerPool::startIfNeeded() {
    if (!threads_.empty()) return;
    for (size_t i = 0; i < threadCount_; ++i) threads_.emplace_back([this] { work(); });
}

bool WorkerPool::takeJob(Job& job) {
    for (auto& queue : queues_) {
        if (queue.empty()) continue;
        job = std::move(queue.front());
        queue.pop_front();
        return true;
    }
    return false;
}

void WorkerPool::work() {
    for (;;) {
        Job job;
        {
            std::unique_lock lock(mutex_);
            ready_.wait(lock, [&] { return takeJob(job) || stopping_; });
            if (!job) return;  // stopping with nothing left
        }
        job();
    }
}

}  // namespace orv::rt
