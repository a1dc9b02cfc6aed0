#include <gtest/gtest.h>

#include <stdexcept>

#include "frameworks/core/OrvResult.h"
#include "frameworks/core/OrvThread.h"
#include "platform/rt/RunLoop.h"

namespace {

TEST(OrvThread, WorksOffTheMainThreadAndCompletesOnItWhileUnowned) {
    std::atomic<bool> startOnMain{true};
    bool completed = false;
    auto made = rt::make<OrvResult>();
    std::weak_ptr<OrvThread> weak;
    std::shared_ptr<rt::Object> received;
    bool aliveInCompletion = false;
    weak = OrvThread::initWithStart(
        [&] {
            startOnMain = rt::RunLoop::isMainThread();
            return std::static_pointer_cast<rt::Object>(made);
        },
        [&](std::shared_ptr<rt::Object> result) {
            EXPECT_TRUE(rt::RunLoop::isMainThread());
            aliveInCompletion = weak.lock() && weak.lock()->isFinished();
            received = std::move(result);
            completed = true;
        });
    // The caller dropped the task at once; it must still deliver.
    ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return completed; }));
    EXPECT_FALSE(startOnMain);
    EXPECT_TRUE(aliveInCompletion);
    EXPECT_EQ(received, made);
    // Let go once delivered (the worker thread drops its hold on its own time).
    EXPECT_TRUE(rt::RunLoop::main().runUntil([&] { return weak.expired(); }));
}

TEST(OrvThread, ExceptionOfTheWorkIsRaisedOnTheMainThreadInsteadOfTheCompletion) {
    bool completed = false;
    OrvThread::initWithStart([]() -> std::shared_ptr<rt::Object> { throw std::runtime_error("x"); },
                             [&](std::shared_ptr<rt::Object>) { completed = true; });
    EXPECT_THROW(rt::RunLoop::main().runUntil([] { return false; }, 5), std::runtime_error);
    EXPECT_FALSE(completed);
}

}  // namespace
