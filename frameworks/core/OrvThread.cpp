#include "frameworks/core/OrvThread.h"

#include <exception>

#include "platform/rt/RunLoop.h"
#include "platform/rt/Thread.h"

ORV_DEFINE_CLASS(OrvThread, rt::Object)

std::shared_ptr<OrvThread> OrvThread::initWithStart(Start start, Completed completed) {
    auto task = rt::make<OrvThread>();
    task->start_ = std::move(start);
    task->completed_ = std::move(completed);
    // The thread's closure holds the task until the hop to the main thread holds it in turn.
    rt::Thread::detach("OrvThread", [task] { task->run(); });
    return task;
}

bool OrvThread::isFinished() const {
    return finished_;
}

void OrvThread::run() {
    std::shared_ptr<rt::Object> result;
    std::exception_ptr failure;
    try {
        if (start_) result = start_();
    } catch (...) {
        failure = std::current_exception();
    }
    start_ = nullptr;
    rt::RunLoop::main().post([self = self<OrvThread>(), result = std::move(result), failure] {
        self->finish(result, failure);
    });
}

void OrvThread::finish(std::shared_ptr<rt::Object> result, std::exception_ptr failure) {
    finished_ = true;
    Completed completed = std::move(completed_);
    completed_ = nullptr;
    if (failure) std::rethrow_exception(failure);
    if (completed) completed(std::move(result));
}
