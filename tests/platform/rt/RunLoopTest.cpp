#include "platform/rt/RunLoop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace orv::rt {
namespace {

class Target : public Object {
    ORV_DECLARE_CLASS(Target)
  public:
    bool* deallocated = nullptr;
    void dealloc() override {
        if (deallocated) *deallocated = true;
        Object::dealloc();
    }
};
ORV_DEFINE_CLASS(Target, Object)

std::shared_ptr<Target> makeTarget(bool* deallocated) {
    auto target = make<Target>();
    target->deallocated = deallocated;
    return target;
}

class RunLoopTest : public ::testing::Test {
  protected:
    RunLoop& loop = RunLoop::main();
    std::vector<std::string> order;
    double start = loop.now();

    void TearDown() override { EXPECT_EQ(loop.pendingCount(), 0u) << "a test left work behind"; }

    RunLoop::Task record(std::string name) {
        return [this, name] { order.push_back(name); };
    }
};

TEST_F(RunLoopTest, PostsRunInOrderAfterTheCurrentTurnIncludingPostsMadeWhileRunning) {
    loop.post(record("a"));
    loop.post([this] {
        order.push_back("b");
        loop.post(record("d"));
    });
    loop.post(record("c"));
    EXPECT_TRUE(order.empty()) << "a post from the main thread must wait for the loop";
    EXPECT_EQ(loop.runPending(), 4);
    EXPECT_EQ(order, (std::vector<std::string>{"a", "b", "c", "d"}));
}

TEST_F(RunLoopTest, DelayedTasksFireInTimeOrderAtTheirDueTimeAndNeverEarly) {
    std::vector<double> firedAt;
    auto at = [&](std::string name) {
        return [&, name] {
            order.push_back(name);
            firedAt.push_back(loop.now() - start);
        };
    };
    loop.postDelayed(0.5, at("late-1"));
    loop.postDelayed(0.2, [&, stamp = at("early")] {
        stamp();
        // Work started by a due item runs in the same step, before later items.
        loop.post(at("posted-by-early"));
        loop.postDelayed(0.1, at("chained"));
    });
    loop.postDelayed(0.5, at("late-2"));

    loop.runUntilTime(start + 0.19);
    EXPECT_TRUE(order.empty());
    loop.runFor(0.81);

    EXPECT_EQ(order, (std::vector<std::string>{"early", "posted-by-early", "chained", "late-1",
                                               "late-2"}));
    const double e = 1e-9;  // the loop's start time is not a round number
    EXPECT_NEAR(firedAt[0], 0.2, e);
    EXPECT_NEAR(firedAt[1], 0.2, e);
    EXPECT_NEAR(firedAt[2], 0.3, e);
    EXPECT_NEAR(firedAt[3], 0.5, e);
    EXPECT_NEAR(loop.now() - start, 1.0, e);
}

TEST_F(RunLoopTest, NonPositiveDelayRunsOnTheNextTurnWithoutAdvancingTime) {
    loop.postDelayed(-1, record("now"));
    EXPECT_TRUE(order.empty());
    loop.runPending();
    EXPECT_EQ(order, std::vector<std::string>{"now"});
    EXPECT_EQ(loop.now(), start);
}

TEST_F(RunLoopTest, CancelByTargetAndNameReleasesTheTarget) {
    bool targetGone = false;
    bool otherGone = false;
    auto target = makeTarget(&targetGone);
    auto other = makeTarget(&otherGone);
    const Object* raw = target.get();
    loop.performAfterDelay(target, "hide", 0.8, record("target.hide"));
    loop.performAfterDelay(target, "show", 0.8, record("target.show"));
    loop.performAfterDelay(other, "hide", 0.8, record("other.hide"));
    target.reset();
    other.reset();
    EXPECT_FALSE(targetGone) << "a pending perform holds its target";

    loop.cancelPerforms(raw, "hide");
    EXPECT_FALSE(targetGone) << "the 'show' perform still holds the target";
    loop.cancelPerforms(raw);
    EXPECT_TRUE(targetGone);

    loop.runFor(1);
    EXPECT_EQ(order, std::vector<std::string>{"other.hide"});
    EXPECT_TRUE(otherGone) << "a fired perform lets its target go";
}

TEST_F(RunLoopTest, DeallocOfACancelledTargetMayUseTheLoop) {
    // Releasing a target inside cancelPerforms must not hold the loop's lock.
    class Reposting : public Target {
      public:
        RunLoop* loop = nullptr;
        void dealloc() override {
            loop->cancelPerforms(this);
            loop->post([] {});
            Target::dealloc();
        }
    };
    auto target = make<Reposting>();
    target->loop = &loop;
    const Object* raw = target.get();
    loop.performAfterDelay(std::move(target), "x", 1, [] {});
    loop.cancelPerforms(raw);
    EXPECT_EQ(loop.runPending(), 1);
}

TEST_F(RunLoopTest, RepeatingTimerFiresEveryIntervalUntilInvalidatedFromItsOwnClosure) {
    std::vector<double> firedAt;
    auto captured = std::make_shared<int>(0);
    std::weak_ptr<int> capturedWatch = captured;
    auto timer = loop.scheduleTimer(0.25, true, [&, captured](Timer& t) {
        firedAt.push_back(loop.now() - start);
        if (++*captured == 3) t.invalidate();
    });
    captured.reset();

    loop.runFor(2);
    ASSERT_EQ(firedAt.size(), 3u);
    for (size_t i = 0; i < firedAt.size(); ++i) EXPECT_NEAR(firedAt[i], 0.25 * (i + 1), 1e-9);
    EXPECT_FALSE(timer->isValid());
    EXPECT_TRUE(capturedWatch.expired()) << "an invalidated timer releases its closure";
}

TEST_F(RunLoopTest, OneShotTimerFiresOnceAndInvalidatedTimerNeverFires) {
    int oneShot = 0;
    int cancelled = 0;
    auto once = loop.scheduleTimer(0.3, false, [&](Timer&) { ++oneShot; });
    auto never = loop.scheduleTimer(0.1, true, [&](Timer&) { ++cancelled; });
    never->invalidate();
    never->invalidate();
    loop.runFor(1);
    EXPECT_EQ(oneShot, 1);
    EXPECT_EQ(cancelled, 0);
    EXPECT_FALSE(once->isValid());
}

TEST_F(RunLoopTest, RunUntilServesPostsFromOtherThreads) {
    std::atomic<int> served{0};
    std::thread poster([&] {
        for (int i = 0; i < 100; ++i) {
            loop.post([&] {
                EXPECT_TRUE(RunLoop::isMainThread());
                ++served;
            });
        }
    });
    EXPECT_TRUE(loop.runUntil([&] { return served == 100; }));
    poster.join();
    EXPECT_FALSE(loop.runUntil([] { return false; }, 0.01));
}

TEST_F(RunLoopTest, StopEndsRunAfterTheTaskInProgress) {
    loop.post(record("first"));
    loop.post([this] {
        order.push_back("stopper");
        loop.stop();
    });
    loop.post(record("after-stop"));
    loop.run();
    EXPECT_EQ(order, (std::vector<std::string>{"first", "stopper"}));
    loop.runPending();

    std::thread stopper([this] { loop.stop(); });
    loop.run();  // returns once the other thread's stop arrives
    stopper.join();
}

TEST_F(RunLoopTest, ReplacingTheClockKeepsPendingDelays) {
    loop.postDelayed(1, record("due"));
    const double restore = loop.now();
    loop.setClock(std::make_shared<ManualClock>(100));
    loop.runUntilTime(100.99);
    EXPECT_TRUE(order.empty());
    loop.runUntilTime(101);
    EXPECT_EQ(order, std::vector<std::string>{"due"});
    loop.setClock(std::make_shared<ManualClock>(restore + 1));
}

}  // namespace
}  // namespace orv::rt
