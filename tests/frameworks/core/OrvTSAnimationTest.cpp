#include "frameworks/core/OrvTSAnimation.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/rt/RunLoop.h"

namespace {

TEST(OrvTSAnimation, EasesFromStartToOneAndStopsByItselfWhileOnlyWeaklyHeld) {
    std::vector<double> steps;
    std::weak_ptr<OrvTSAnimation> weak;
    {
        auto animation = OrvTSAnimation::animWithDuration(
            0.26, OrvKitTweenQuintEaseOut,
            [&](OrvTSAnimation&, double step) { steps.push_back(step); });
        animation->start();
        weak = animation;
    }
    rt::RunLoop::main().runFor(0.5);
    ASSERT_GE(steps.size(), 10u);
    EXPECT_GT(steps.front(), 0);
    EXPECT_DOUBLE_EQ(steps.back(), 1);
    for (size_t i = 1; i < steps.size(); ++i) EXPECT_GT(steps[i], steps[i - 1]);
    // Ease-out: most of the way is covered in the first half of the time.
    EXPECT_GT(steps[steps.size() / 2], 0.9);
    EXPECT_TRUE(weak.expired());
}

TEST(OrvTSAnimation, StopAndDestroyFromInsideTheBlockEndTheCalls) {
    int calls = 0;
    auto animation = OrvTSAnimation::animWithDuration(1, nullptr, [&](OrvTSAnimation& a, double) {
        if (++calls == 3) a.destory();
    });
    animation->start();
    rt::RunLoop::main().runFor(1.5);
    EXPECT_EQ(calls, 3);
    EXPECT_FALSE(animation->isRunning());
    animation->start();  // destroyed: nothing runs
    rt::RunLoop::main().runFor(0.2);
    EXPECT_EQ(calls, 3);
}

}  // namespace
