#include "platform/ui/ViewAnimator.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "platform/ui/View.h"
#include "tests/platform/ui/ViewTestSupport.h"

namespace orv::ui::test {
namespace {

using Results = std::shared_ptr<std::vector<bool>>;

std::function<void(bool)> recordInto(const Results& results) {
    return [results](bool finished) { results->push_back(finished); };
}

class ViewAnimationTest : public ViewTest {
  protected:
    Results first = std::make_shared<std::vector<bool>>();
    Results second = std::make_shared<std::vector<bool>>();
};

TEST_F(ViewAnimationTest, ModelChangesAtOnceAndCompletesAfterTheDuration) {
    auto v = makeView({0, 0, 10, 10});
    View::animateWithDuration(
        0.3, [&] { v->setAlpha(0); }, recordInto(first));
    EXPECT_EQ(v->alpha(), 0);
    runFor(0.15);
    EXPECT_NEAR(v->presentationAlpha(), 0.5, 1e-9);
    runFor(0.14);
    EXPECT_TRUE(first->empty());
    runFor(0.02);
    EXPECT_EQ(*first, std::vector<bool>{true});
    EXPECT_EQ(v->presentationAlpha(), 0);
}

TEST_F(ViewAnimationTest, ANewerAnimationOfTheSamePropertyInterrupts) {
    auto v = makeView({0, 0, 10, 10});
    View::animateWithDuration(
        0.3, [&] { v->setAlpha(0); }, recordInto(first));
    runFor(0.1);
    View::animateWithDuration(
        0.3, [&] { v->setAlpha(1); }, recordInto(second));
    // The screen goes on from where the first animation had got to.
    EXPECT_NEAR(v->presentationAlpha(), 2.0 / 3, 1e-9);
    runPending();
    EXPECT_EQ(*first, std::vector<bool>{false});
    runFor(0.29);
    EXPECT_TRUE(second->empty());
    runFor(0.02);
    EXPECT_EQ(*first, std::vector<bool>{false});
    EXPECT_EQ(*second, std::vector<bool>{true});
}

TEST_F(ViewAnimationTest, OtherPropertiesAndOtherViewsDoNotInterrupt) {
    auto v = makeView({0, 0, 10, 10});
    auto w = makeView({0, 0, 10, 10});
    View::animateWithDuration(
        0.3, [&] { v->setAlpha(0); }, recordInto(first));
    View::animateWithDuration(
        0.3,
        [&] {
            v->setCenter({50, 50});
            w->setAlpha(0);
        },
        recordInto(second));
    runFor(0.31);
    EXPECT_EQ(*first, std::vector<bool>{true});
    EXPECT_EQ(*second, std::vector<bool>{true});
}

TEST_F(ViewAnimationTest, AnInterruptedBlockWaitsForItsOtherProperties) {
    auto v = makeView({0, 0, 10, 10});
    View::animateWithDuration(
        0.3,
        [&] {
            v->setAlpha(0);
            v->setTransform(gfx::AffineTransform::scale(2, 2));
        },
        recordInto(first));
    View::animateWithDuration(
        0.1, [&] { v->setAlpha(1); }, nullptr);
    runPending();
    EXPECT_TRUE(first->empty());
    runFor(0.31);
    EXPECT_EQ(*first, std::vector<bool>{false});
}

TEST_F(ViewAnimationTest, DelayAndEmptyBlocks) {
    auto v = makeView({0, 0, 10, 10});
    View::animateWithDuration(
        0.2, 0.5, 6, [&] { v->setAlpha(0.5); }, recordInto(first));
    runFor(0.3);
    EXPECT_EQ(v->presentationAlpha(), 1);  // still waiting for the delay
    runFor(0.39);
    EXPECT_TRUE(first->empty());
    runFor(0.02);
    EXPECT_EQ(*first, std::vector<bool>{true});

    View::animateWithDuration(
        5, [] {}, recordInto(second));
    runPending();
    EXPECT_EQ(*second, std::vector<bool>{true});
}

TEST_F(ViewAnimationTest, ChangesWithoutAnimationJumpAndDoNotInterrupt) {
    auto v = makeView({0, 0, 10, 10});
    View::animateWithDuration(
        0.3,
        [&] {
            v->setBackgroundColor(gfx::Color::red());
            View::performWithoutAnimation([&] { v->setFrame({20, 20, 10, 10}); });
        },
        recordInto(first));
    EXPECT_EQ(v->presentationCenter(), gfx::Point(25, 25));
    runFor(0.15);
    EXPECT_NEAR(v->presentationBackgroundColor()->a, 0.5, 1e-9);
    EXPECT_NEAR(v->presentationBackgroundColor()->r, 1, 1e-9);

    v->setBackgroundColor(gfx::Color::black());  // outside any block
    EXPECT_EQ(v->presentationBackgroundColor(), gfx::Color::black());
    runFor(0.16);
    EXPECT_EQ(*first, std::vector<bool>{true});
}

TEST_F(ViewAnimationTest, FrameAnimationsMoveCentreAndBounds) {
    auto v = makeView({0, 0, 10, 10});
    View::animateWithDuration(1, [&] { v->setFrame({100, 0, 30, 10}); });
    runFor(0.5);
    expectNear(v->presentationCenter(), {(5 + 115) / 2.0, 5});
    EXPECT_NEAR(v->presentationBounds().size.width, 20, 1e-9);
    EXPECT_EQ(v->frame(), gfx::Rect(100, 0, 30, 10));
}

TEST_F(ViewAnimationTest, AViewGoingAwayStillCompletes) {
    {
        auto v = makeView({0, 0, 10, 10});
        View::animateWithDuration(
            0.3, [&] { v->setAlpha(0); }, recordInto(first));
    }
    runFor(0.31);
    EXPECT_EQ(*first, std::vector<bool>{true});
}

}  // namespace
}  // namespace orv::ui::test
