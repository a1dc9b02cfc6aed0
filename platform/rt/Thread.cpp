#include "platform/rt/Thread.h"

#include <pthread.h>

#include <thread>

#include "platform/rt/RunLoop.h"

namespace orv::rt {

namespace {

thread_local std::string currentThreadName;

}  // namespace

void Thread::detach(std::function<void()> body) {
    detach(std::string(), std::move(body));
}

void Thread::detach(std::string name, std::function<void()> body) {
    std::thread([name = std::move(name), body = std::move(body)]() mutable {
        if (!name.empty()) setCurrentName(name);
        body();
        // Captures go here, on this thread, as soon as the job is over.
        body = nullptr;
    }).detach();
}

void Thread::setCurrentName(std::string name) {
    // The system name (seen in debuggers) is cut to its 15-character limit; ours is kept whole.
    ::pthread_setname_np(::pthread_self(), name.substr(0, 15).c_str());
    currentThreadName = std::move(name);
}

std::string Thread::currentName() {
    return currentThreadName;
}

bool Thread::isMainThread() {
    return RunLoop::isMainThread();
}

}  // namespace orv::rt
