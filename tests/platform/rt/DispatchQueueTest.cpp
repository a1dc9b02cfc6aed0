#include "platform/rt/DispatchQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>

#include "platform/rt/RunLoop.h"

namespace orv::rt {
namespace {

TEST(DispatchQueueTest, MainQueueSyncOnTheMainThreadRunsInline) {
    bool ran = false;
    mainQueue().sync([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_EQ(RunLoop::main().pendingCount(), 0u);
}

TEST(DispatchQueueTest, MainQueueSyncFromAWorkerRunsOnMainAndWaits) {
    std::atomic<bool> returned{false};
    bool ranOnMain = false;
    std::thread worker([&] {
        mainQueue().sync([&] { ranOnMain = RunLoop::isMainThread(); });
        returned = true;
    });
    EXPECT_TRUE(RunLoop::main().runUntil([&] { return returned.load(); }));
    worker.join();
    EXPECT_TRUE(ranOnMain);
}

TEST(DispatchQueueTest, MainQueueAsyncSharesTheLoopsOrder) {
    std::string order;
    RunLoop::main().post([&] { order += "post,"; });
    mainQueue().async([&] { order += "async,"; });
    RunLoop::main().post([&] { order += "post"; });
    EXPECT_TRUE(order.empty());
    RunLoop::main().runPending();
    EXPECT_EQ(order, "post,async,post");
}

TEST(DispatchQueueTest, GlobalQueueRunsOffTheMainThreadAndHopsBack) {
    std::atomic<bool> workerWasMain{true};
    bool delivered = false;
    globalQueue(QueuePriority::High).async([&] {
        workerWasMain = RunLoop::isMainThread();
        mainQueue().async([&] { delivered = true; });
    });
    EXPECT_TRUE(RunLoop::main().runUntil([&] { return delivered; }));
    EXPECT_FALSE(workerWasMain.load());
}

}  // namespace
}  // namespace orv::rt
