#include "platform/rt/DispatchQueue.h"

#include <array>
#include <condition_variable>
#include <mutex>

#include "platform/rt/NoDestructor.h"
#include "platform/rt/RunLoop.h"
#include "platform/rt/WorkerPool.h"

namespace orv::rt {

ORV_DEFINE_CLASS(DispatchQueue, Object)

std::shared_ptr<DispatchQueue> DispatchQueue::makeMain() {
    return makeWith<DispatchQueue>([](DispatchQueue& queue) {
        queue.init();
        queue.main_ = true;
    });
}

std::shared_ptr<DispatchQueue> DispatchQueue::makeGlobal(QueuePriority priority) {
    return makeWith<DispatchQueue>([priority](DispatchQueue& queue) {
        queue.init();
        queue.priority_ = priority;
    });
}

void DispatchQueue::async(Work work) {
    if (main_) {
        RunLoop::main().post(std::move(work));
    } else {
        WorkerPool::shared().submit(priority_, std::move(work));
    }
}

void DispatchQueue::sync(Work work) {
    if (!main_ || RunLoop::isMainThread()) {
        work();
        return;
    }
    std::mutex mutex;
    std::condition_variable doneChanged;
    bool done = false;
    RunLoop::main().post([&] {
        work();
        // Signalled under the lock: the waiter's stack (mutex included) may go the moment it
        // sees `done`.
        std::lock_guard lock(mutex);
        done = true;
        doneChanged.notify_one();
    });
    std::unique_lock lock(mutex);
    doneChanged.wait(lock, [&] { return done; });
}

DispatchQueue& mainQueue() {
    static NoDestructor<std::shared_ptr<DispatchQueue>> queue(DispatchQueue::makeMain());
    return **queue;
}

DispatchQueue& globalQueue(QueuePriority priority) {
    static NoDestructor<std::array<std::shared_ptr<DispatchQueue>, 4>> queues(
        std::array<std::shared_ptr<DispatchQueue>, 4>{
            DispatchQueue::makeGlobal(QueuePriority::High),
            DispatchQueue::makeGlobal(QueuePriority::Default),
            DispatchQueue::makeGlobal(QueuePriority::Low),
            DispatchQueue::makeGlobal(QueuePriority::Background)});
    return *(*queues)[static_cast<size_t>(priority)];
}

}  // namespace orv::rt
