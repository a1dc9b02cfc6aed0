#include <cmath>
#include <numbers>

#include "platform/rt/Exception.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Event.h"
#include "platform/ui/Touch.h"
#include "platform/ui/TouchDispatcher.h"
#include "tests/platform/ui/TouchTestSupport.h"

namespace orv::ui::test {
namespace {

using Strings = std::vector<std::string>;

void expectPoint(gfx::Point actual, gfx::Point expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

class EventInjectorTest : public TouchTest {};

TEST_F(EventInjectorTest, HitTestingFollowsARotatedView) {
    // 100 x 20 turned a quarter clockwise about its centre (200, 200): it now stands upright.
    auto bar = addRecordingView({150, 190, 100, 20}, "bar");
    bar->setTransform(gfx::AffineTransform::rotation(std::numbers::pi / 2));

    injector->tap({240, 200});  // inside the unturned frame only
    EXPECT_TRUE(takeLog().empty());

    injector->tap({200, 240});
    EXPECT_EQ(takeLog(), (Strings{"bar began", "bar ended"}));
    // 40 points below the centre lies 40 points along the bar's own x axis.
    expectPoint(bar->locations.front(), {90, 10});
}

TEST_F(EventInjectorTest, HiddenAndNonInteractiveViewsLetTouchesThrough) {
    auto back = addRecordingView({0, 0, 400, 400}, "back");
    auto hidden = addRecordingView({0, 0, 100, 100}, "hidden");
    hidden->setHidden(true);
    auto inert = addRecordingView({200, 0, 100, 100}, "inert");
    inert->setUserInteractionEnabled(false);
    injector->tap({50, 50});
    injector->tap({250, 50});
    EXPECT_EQ(takeLog(), (Strings{"back began", "back ended", "back began", "back ended"}));
}

TEST_F(EventInjectorTest, TapCountsFollowTimeAndDistance) {
    auto view = addRecordingView({0, 0, 400, 400});
    injector->doubleTap({100, 100});
    EXPECT_EQ(view->tapCounts, (std::vector<int>{1, 2}));

    // Separate tap() calls start fresh sequences.
    view->tapCounts.clear();
    injector->tap({100, 100});
    injector->tap({100, 100});
    EXPECT_EQ(view->tapCounts, (std::vector<int>{1, 1}));

    // Quick but too far apart, then close but too late.
    view->tapCounts.clear();
    rt::RunLoop::main().runFor(1);
    injector->touchDown(1, {100, 100});
    injector->touchUp(1);
    injector->touchDown(1, {100, 115});
    injector->touchUp(1);
    rt::RunLoop::main().runFor(Touch::kMultiTapInterval + 0.01);
    injector->touchDown(1, {100, 115});
    injector->touchUp(1);
    EXPECT_EQ(view->tapCounts, (std::vector<int>{1, 1, 1}));

    // A touch that wandered off is no tap to count from.
    view->tapCounts.clear();
    rt::RunLoop::main().runFor(1);
    injector->touchDown(1, {100, 100});
    injector->touchMove(1, {100, 150});
    injector->touchMove(1, {100, 100});
    injector->touchUp(1);
    injector->touchDown(1, {100, 100});
    injector->touchUp(1);
    EXPECT_EQ(view->tapCounts, (std::vector<int>{1, 1}));
}

TEST_F(EventInjectorTest, DragVisitsEveryCornerAndTakesItsTime) {
    auto view = addRecordingView({0, 0, 400, 400});
    const double start = rt::RunLoop::main().now();
    injector->drag({{10, 10}, {10, 50}, {50, 50}}, 0.5);
    EXPECT_NEAR(rt::RunLoop::main().now() - start, 0.5, 1e-9);
    const auto& seen = view->locations;
    auto sawPoint = [&](gfx::Point p) {
        return std::any_of(seen.begin(), seen.end(), [&](gfx::Point q) {
            return std::fabs(q.x - p.x) < 1e-9 && std::fabs(q.y - p.y) < 1e-9;
        });
    };
    EXPECT_TRUE(sawPoint({10, 50}));
    expectPoint(seen.back(), {50, 50});
    const Strings log = takeLog();
    EXPECT_EQ(log.front(), "view began");
    EXPECT_EQ(log.back(), "view ended");
    EXPECT_GT(log.size(), 10u);
}

TEST_F(EventInjectorTest, TouchKnowsItsPreviousLocationAndWindow) {
    auto view = addRecordingView({100, 100, 200, 200});
    injector->touchDown(7, {150, 150});
    injector->touchMove(7, {160, 170});
    auto touch = injector->dispatcher().touchWithId(7);
    ASSERT_TRUE(touch);
    expectPoint(touch->locationInView(view.get()), {60, 70});
    expectPoint(touch->previousLocationInView(view.get()), {50, 50});
    expectPoint(touch->locationInView(nullptr), {160, 170});
    EXPECT_EQ(touch->view(), view.get());
    EXPECT_EQ(touch->window(), window.get());
    EXPECT_EQ(touch->phase(), TouchPhase::Moved);
    injector->touchUp(7);
    EXPECT_EQ(touch->phase(), TouchPhase::Ended);
    EXPECT_FALSE(injector->dispatcher().isDown(7));
}

TEST_F(EventInjectorTest, EventHoldsEveryFingerDown) {
    auto left = addRecordingView({0, 0, 200, 400}, "left");
    auto right = addRecordingView({200, 0, 200, 400}, "right");
    injector->touchDown(1, {50, 50});
    injector->touchDown(2, {250, 50});
    Event* event = injector->dispatcher().event();
    EXPECT_EQ(event->allTouches().size(), 2u);
    EXPECT_EQ(event->touchesForView(right.get()).size(), 1u);
    injector->touchMove(2, {260, 60});
    EXPECT_EQ(injector->dispatcher().touchWithId(1)->phase(), TouchPhase::Stationary);
    injector->touchUp(1);
    injector->touchCancel(2);
    EXPECT_TRUE(event->allTouches().empty());
    EXPECT_EQ(takeLog(), (Strings{"left began", "right began", "right moved", "left ended",
                                  "right cancelled"}));
    EXPECT_EQ(right->allTouchCounts, (std::vector<size_t>{2, 2, 1}));
}

TEST_F(EventInjectorTest, PinchAndRotateMoveBothFingersInOneChange) {
    auto view = addRecordingView({0, 0, 400, 400});
    injector->pinch({200, 200}, 100, 200, 0.1);
    Strings log = takeLog();
    // One began, one move per step for both fingers, one end.
    EXPECT_EQ(log.size(), 2 + static_cast<size_t>(std::ceil(0.1 / EventInjector::kStepSeconds)));
    expectPoint(view->locations[view->locations.size() - 2], {100, 200});

    injector->rotate({200, 200}, 50, 0, std::numbers::pi / 2, 0.1);
    expectPoint(view->locations.back(), {200, 150});  // the first finger turned to the top
}

TEST_F(EventInjectorTest, ScriptingErrorsThrow) {
    addRecordingView({0, 0, 400, 400});
    EXPECT_THROW(injector->touchMove(3, {1, 1}), rt::Exception);
    EXPECT_THROW(injector->touchUp(3), rt::Exception);
    injector->touchDown(3, {1, 1});
    EXPECT_THROW(injector->touchDown(3, {2, 2}), rt::Exception);
    injector->touchUp(3);
}

TEST_F(EventInjectorTest, FingersStillDownAreCancelledWhenTheInjectorGoes) {
    auto view = addRecordingView({0, 0, 400, 400});
    injector->touchDown(1, {10, 10});
    injector.reset();
    EXPECT_EQ(takeLog(), (Strings{"view began", "view cancelled"}));
}

}  // namespace
}  // namespace orv::ui::test
