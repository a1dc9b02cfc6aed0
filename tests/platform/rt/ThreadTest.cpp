#include "platform/rt/Thread.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <thread>

#include "platform/rt/RunLoop.h"
#include "platform/rt/SpinLock.h"

namespace orv::rt {
namespace {

TEST(ThreadTest, DetachedThreadIsNamedAndHoldsItsCapturesUntilItReturns) {
    auto target = std::make_shared<int>(7);
    std::weak_ptr<int> watch = target;
    std::string seenName;
    bool sawMain = true;
    std::atomic<bool> finished{false};
    Thread::detach("id-1700000000.000000", [&, target] {
        seenName = Thread::currentName();
        sawMain = Thread::isMainThread();
        EXPECT_EQ(*target, 7);
        finished = true;
    });
    target.reset();
    auto& loop = RunLoop::main();
    ASSERT_TRUE(loop.runUntil([&] { return finished.load(); }));
    EXPECT_EQ(seenName, "id-1700000000.000000");
    EXPECT_FALSE(sawMain);
    EXPECT_TRUE(loop.runUntil([&] { return watch.expired(); }))
        << "captures go once the job returns";
    EXPECT_TRUE(Thread::isMainThread());
    EXPECT_EQ(Thread::currentName(), "") << "names are per thread";
}

TEST(ThreadTest, SpinLockExcludesOtherThreads) {
    SpinLock lock;
    long counter = 0;
    auto add = [&] {
        for (int i = 0; i < 20000; ++i) {
            std::lock_guard guard(lock);
            ++counter;
        }
    };
    std::thread a(add), b(add);
    a.join();
    b.join();
    EXPECT_EQ(counter, 40000);
}

}  // namespace
}  // namespace orv::rt
