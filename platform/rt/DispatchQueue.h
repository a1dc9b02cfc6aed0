#pragma once
#include <functional>

#include "platform/rt/Object.h"

namespace orv::rt {

enum class QueuePriority { High, Default, Low, Background };

// A place to send work: the main queue (the main run loop's FIFO) or one of the global queues
// (the shared worker pool, higher priorities taken first).
class DispatchQueue : public Object {
    ORV_DECLARE_CLASS(DispatchQueue)
  public:
    using Work = std::function<void()>;

    // Any thread. Queues the work and returns at once (on the main queue: even from the main
    // thread, the work waits for the next turn of the loop).
    void async(Work work);
    // Any thread. Runs the work and returns when it is done. On the main queue from the main
    // thread the work runs inline rather than deadlocking; on a global queue it runs on the
    // calling thread, as a concurrent queue would.
    void sync(Work work);

    bool isMain() const { return main_; }
    QueuePriority priority() const { return priority_; }

    static std::shared_ptr<DispatchQueue> makeMain();
    static std::shared_ptr<DispatchQueue> makeGlobal(QueuePriority priority);

  private:
    bool main_ = false;
    QueuePriority priority_ = QueuePriority::Default;
};

DispatchQueue& mainQueue();
DispatchQueue& globalQueue(QueuePriority priority = QueuePriority::Default);

}  // namespace orv::rt
