#include <cmath>
#include <numbers>

#include "platform/rt/RunLoop.h"
#include "platform/ui/LongPressGestureRecognizer.h"
#include "platform/ui/PanGestureRecognizer.h"
#include "platform/ui/PinchGestureRecognizer.h"
#include "platform/ui/RotationGestureRecognizer.h"
#include "platform/ui/TapGestureRecognizer.h"
#include "platform/ui/Touch.h"
#include "tests/platform/ui/TouchTestSupport.h"

namespace orv::ui::test {
namespace {

using State = GestureRecognizerState;
using Strings = std::vector<std::string>;
constexpr double kPi = std::numbers::pi;

class YesDelegate : public rt::Object, public GestureRecognizerDelegate {
    ORV_DECLARE_CLASS(YesDelegate)
  public:
    bool gestureRecognizerShouldBegin(GestureRecognizer&) override { return allowBegin; }
    bool shouldRecognizeSimultaneouslyWithGestureRecognizer(GestureRecognizer&,
                                                            GestureRecognizer&) override {
        return true;
    }
    bool shouldReceiveTouch(GestureRecognizer&, Touch&) override { return receive; }

    bool allowBegin = true;
    bool receive = true;
};
ORV_DEFINE_CLASS(YesDelegate, rt::Object, GestureRecognizerDelegate)

class GestureRecognizerTest : public TouchTest {
  protected:
    template <class R>
    std::shared_ptr<R> attach(View& view, const std::string& name) {
        auto recognizer = rt::make<R>();
        view.addGestureRecognizer(recognizer);
        logStates(*recognizer, name);
        return recognizer;
    }
};

// --- Tap -------------------------------------------------------------------------------------

TEST_F(GestureRecognizerTest, TapIsRecognisedAtTouchUpAndCancelsTheViewsTouch) {
    auto view = addRecordingView({100, 100, 100, 100});
    auto tap = attach<TapGestureRecognizer>(*view, "tap");
    injector->tap({150, 150});
    EXPECT_EQ(takeLog(), (Strings{"view began", "tap:3", "view cancelled"}));
    EXPECT_EQ(tap->state(), State::Possible);
    EXPECT_EQ(tap->view(), view.get());
}

TEST_F(GestureRecognizerTest, TapThatMovesTooFarFailsAndTheViewSeesTheWholeTouch) {
    auto view = addRecordingView({100, 100, 100, 100});
    attach<TapGestureRecognizer>(*view, "tap");
    injector->touchDown(1, {150, 150});
    injector->touchMove(1, {150, 162});
    injector->touchUp(1);
    EXPECT_EQ(takeLog(), (Strings{"view began", "view moved", "view ended"}));
}

TEST_F(GestureRecognizerTest, DoubleTapNeedsTheSecondTapInTime) {
    auto view = addRecordingView({100, 100, 100, 100});
    view->log = nullptr;
    auto doubleTap = attach<TapGestureRecognizer>(*view, "double");
    doubleTap->setNumberOfTapsRequired(2);

    injector->tap({150, 150});
    rt::RunLoop::main().runFor(Touch::kMultiTapInterval + 0.1);
    injector->tap({150, 150});
    EXPECT_TRUE(takeLog().empty());

    rt::RunLoop::main().runFor(1);
    injector->doubleTap({150, 150});
    EXPECT_EQ(takeLog(), (Strings{"double:3"}));
}

TEST_F(GestureRecognizerTest, TwoFingerTapNeedsBothFingers) {
    auto view = addRecordingView({0, 0, 300, 300});
    view->log = nullptr;
    auto tap = attach<TapGestureRecognizer>(*view, "tap2");
    tap->setNumberOfTouchesRequired(2);
    injector->tap({50, 50});
    EXPECT_TRUE(takeLog().empty());
    injector->touchDown(1, {50, 50});
    injector->touchDown(2, {120, 50});
    injector->touchUp(1);
    injector->touchUp(2);
    EXPECT_EQ(takeLog(), (Strings{"tap2:3"}));
}

// --- Pan -------------------------------------------------------------------------------------

TEST_F(GestureRecognizerTest, PanReportsBeganChangedEndedWithTheTranslation) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto pan = rt::make<PanGestureRecognizer>();
    view->addGestureRecognizer(pan);
    std::vector<State> states;
    double stepsY = 0, lastTotalY = 0, velocityY = 0;
    pan->addTarget([&](GestureRecognizer& r) {
        auto& p = static_cast<PanGestureRecognizer&>(r);
        states.push_back(p.state());
        velocityY = p.velocityInView(nullptr).y;
        lastTotalY = p.translationInView(nullptr).y;  // read before the reset below
        stepsY += lastTotalY;
        p.setTranslation({0, 0}, nullptr);
    });
    injector->drag({{100, 100}, {100, 160}}, 0.5);

    ASSERT_GE(states.size(), 3u);
    EXPECT_EQ(states.front(), State::Began);
    EXPECT_EQ(states.back(), State::Ended);
    for (size_t i = 1; i + 1 < states.size(); ++i) EXPECT_EQ(states[i], State::Changed);
    EXPECT_NEAR(stepsY, 60, 1e-9);      // the deltas add up to the whole drag
    EXPECT_NEAR(velocityY, 120, 1e-6);  // 60 points in half a second
    EXPECT_EQ(pan->state(), State::Possible);
}

TEST_F(GestureRecognizerTest, PanBeginsOnlyPastTheHysteresisAndMeasuresInTheGivenView) {
    auto inner = addRecordingView({100, 100, 100, 100});
    inner->setTransform(gfx::AffineTransform::scale(2, 2));
    inner->log = nullptr;
    auto pan = attach<PanGestureRecognizer>(*inner, "pan");
    gfx::Point inView;
    pan->addTarget([&](GestureRecognizer& r) {
        inView = static_cast<PanGestureRecognizer&>(r).translationInView(inner.get());
    });
    injector->touchDown(1, {150, 150});
    injector->touchMove(1, {159, 150});
    EXPECT_TRUE(takeLog().empty());
    injector->touchMove(1, {170, 150});
    EXPECT_EQ(takeLog(), (Strings{"pan:1"}));
    EXPECT_NEAR(inView.x, 10, 1e-9);  // 20 window points in a view scaled twice
    EXPECT_NEAR(inView.y, 0, 1e-9);
    injector->touchUp(1);
}

TEST_F(GestureRecognizerTest, PanLimitedToOneTouchIgnoresTwoFingers) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto pan = attach<PanGestureRecognizer>(*view, "pan");
    pan->setMaximumNumberOfTouches(1);

    injector->touchDown(1, {100, 100});
    injector->touchDown(2, {200, 100});
    injector->touchesMove({{1, {100, 150}}, {2, {200, 150}}});
    injector->touchUp(1);
    injector->touchUp(2);
    EXPECT_TRUE(takeLog().empty());

    // A second finger after the pan began is ignored; the pan goes on with the first.
    injector->touchDown(1, {100, 100});
    injector->touchMove(1, {100, 130});
    injector->touchDown(2, {200, 100});
    injector->touchMove(2, {200, 160});
    injector->touchMove(1, {100, 140});
    EXPECT_EQ(pan->numberOfTouches(), 1u);
    EXPECT_NEAR(pan->translationInView(nullptr).y, 40, 1e-9);
    injector->touchUp(1);
    injector->touchUp(2);
    EXPECT_EQ(takeLog(), (Strings{"pan:1", "pan:2", "pan:3"}));
}

TEST_F(GestureRecognizerTest, ViewGetsCancelledAfterThePanBeginsAndNothingMore) {
    auto view = addRecordingView({0, 0, 400, 400});
    attach<PanGestureRecognizer>(*view, "pan");
    injector->touchDown(1, {100, 100});
    injector->touchMove(1, {100, 105});
    injector->touchMove(1, {100, 130});
    injector->touchMove(1, {100, 140});
    injector->touchUp(1);
    EXPECT_EQ(takeLog(),
              (Strings{"view began", "view moved", "pan:1", "view cancelled", "pan:2", "pan:3"}));
}

TEST_F(GestureRecognizerTest, PanThatKeepsTheTouchesLetsTheViewSeeThemToTheEnd) {
    auto view = addRecordingView({0, 0, 400, 400});
    auto pan = attach<PanGestureRecognizer>(*view, "pan");
    pan->setCancelsTouchesInView(false);
    injector->drag({{100, 100}, {100, 130}}, 2 * EventInjector::kStepSeconds);
    EXPECT_EQ(takeLog(), (Strings{"view began", "pan:1", "view moved", "pan:2", "view moved",
                                  "pan:3", "view ended"}));
}

TEST_F(GestureRecognizerTest, RecogniserOnAnAncestorSeesTouchesOfTheSubview) {
    auto outer = addRecordingView({0, 0, 400, 400}, "outer");
    auto inner = addRecordingView({100, 100, 50, 50}, "inner", outer.get());
    attach<TapGestureRecognizer>(*outer, "tap");
    injector->tap({120, 120});
    EXPECT_EQ(takeLog(), (Strings{"inner began", "tap:3", "inner cancelled"}));
}

TEST_F(GestureRecognizerTest, RecogniserTakenOffItsViewMidGestureStopsReporting) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto pan = attach<PanGestureRecognizer>(*view, "pan");
    injector->touchDown(1, {100, 100});
    injector->touchMove(1, {100, 130});
    view->removeGestureRecognizer(pan.get());
    injector->touchMove(1, {100, 140});
    injector->touchUp(1);
    EXPECT_EQ(takeLog(), (Strings{"pan:1"}));
    EXPECT_EQ(pan->state(), State::Possible);
}

TEST_F(GestureRecognizerTest, RecogniserForgetsAViewThatWentAway) {
    auto view = addRecordingView({0, 0, 400, 400});
    auto tap = attach<TapGestureRecognizer>(*view, "tap");
    injector->tap({10, 10});
    EXPECT_EQ(tap->view(), view.get());
    view->removeFromSuperview();
    view.reset();
    EXPECT_EQ(tap->view(), nullptr);
}

TEST_F(GestureRecognizerTest, DisabledRecogniserSeesNothingAndDisablingCancels) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto pan = attach<PanGestureRecognizer>(*view, "pan");
    pan->setEnabled(false);
    injector->drag({{100, 100}, {100, 150}}, 0.1);
    EXPECT_TRUE(takeLog().empty());

    pan->setEnabled(true);
    injector->touchDown(1, {100, 100});
    injector->touchMove(1, {100, 130});
    pan->setEnabled(false);
    injector->touchMove(1, {100, 140});
    injector->touchUp(1);
    EXPECT_EQ(takeLog(), (Strings{"pan:1", "pan:4"}));
}

// --- Pinch and rotation ----------------------------------------------------------------------

TEST_F(GestureRecognizerTest, PinchStepsMultiplyToTheRatioOfDistances) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto pinch = rt::make<PinchGestureRecognizer>();
    view->addGestureRecognizer(pinch);
    std::vector<State> states;
    double product = 1;
    pinch->addTarget([&](GestureRecognizer& r) {
        auto& p = static_cast<PinchGestureRecognizer&>(r);
        states.push_back(p.state());
        product *= p.scale();
        p.setScale(1);
    });
    injector->pinch({200, 200}, 100, 250, 0.5);
    ASSERT_GE(states.size(), 3u);
    EXPECT_EQ(states.front(), State::Began);
    EXPECT_EQ(states.back(), State::Ended);
    EXPECT_NEAR(product, 2.5, 1e-9);
}

TEST_F(GestureRecognizerTest, PinchWithoutResetsReportsTheWholeScale) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto pinch = attach<PinchGestureRecognizer>(*view, "pinch");
    double lastScale = 0;
    pinch->addTarget([&](GestureRecognizer&) { lastScale = pinch->scale(); });
    injector->pinch({200, 200}, 200, 100, 0.3);
    EXPECT_NEAR(lastScale, 0.5, 1e-9);
    EXPECT_DOUBLE_EQ(pinch->scale(), 1);  // reset once the fingers are gone
}

TEST_F(GestureRecognizerTest, RotationIsPositiveClockwiseAndStepsAddUp) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto rotation = rt::make<RotationGestureRecognizer>();
    view->addGestureRecognizer(rotation);
    double sum = 0;
    int reports = 0;
    rotation->addTarget([&](GestureRecognizer& r) {
        auto& g = static_cast<RotationGestureRecognizer&>(r);
        sum += g.rotation();
        ++reports;
        g.setRotation(0);
    });
    // From pointing right to pointing down is a quarter turn clockwise on a y-down screen.
    injector->rotate({200, 200}, 60, 0, kPi / 2, 0.5);
    EXPECT_NEAR(sum, kPi / 2, 1e-9);
    EXPECT_GT(reports, 3);

    sum = 0;
    injector->rotate({200, 200}, 60, 0, -kPi / 3, 0.5);
    EXPECT_NEAR(sum, -kPi / 3, 1e-9);

    // Crossing the ±pi line of the angle is a smooth turn, not a jump of a whole turn.
    sum = 0;
    injector->rotate({200, 200}, 60, 3 * kPi / 4, 5 * kPi / 4, 0.5);
    EXPECT_NEAR(sum, kPi / 2, 1e-9);
}

// --- Long press ------------------------------------------------------------------------------

TEST_F(GestureRecognizerTest, LongPressBeginsOnlyAfterTheDelay) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    attach<LongPressGestureRecognizer>(*view, "long");
    injector->touchDown(1, {100, 100});
    rt::RunLoop::main().runFor(0.49);
    EXPECT_TRUE(takeLog().empty());
    rt::RunLoop::main().runFor(0.02);
    EXPECT_EQ(takeLog(), (Strings{"long:1"}));
    injector->touchMove(1, {130, 100});
    injector->touchUp(1);
    EXPECT_EQ(takeLog(), (Strings{"long:2", "long:3"}));
}

TEST_F(GestureRecognizerTest, LongPressReleasedOrMovedEarlyNeverBegins) {
    auto view = addRecordingView({0, 0, 400, 400});
    view->log = nullptr;
    auto longPress = attach<LongPressGestureRecognizer>(*view, "long");
    injector->longPress({100, 100}, 0.3);
    rt::RunLoop::main().runFor(1);
    injector->touchDown(1, {100, 100});
    injector->touchMove(1, {100, 115});
    rt::RunLoop::main().runFor(1);
    injector->touchUp(1);
    EXPECT_TRUE(takeLog().empty());

    injector->longPress({100, 100}, 0.6);
    EXPECT_EQ(takeLog(), (Strings{"long:1", "long:3"}));
    EXPECT_EQ(longPress->state(), State::Possible);
}

// --- Arbitration -----------------------------------------------------------------------------

class ArbitrationTest : public GestureRecognizerTest {
  protected:
    void SetUp() override {
        GestureRecognizerTest::SetUp();
        view = addRecordingView({0, 0, 400, 400});
        view->log = nullptr;
        pinch = attach<PinchGestureRecognizer>(*view, "pinch");
        rotation = attach<RotationGestureRecognizer>(*view, "rotation");
    }
    // Fingers that spread first, then turn while spreading.
    void spreadThenTurn() {
        injector->touchDown(1, {150, 200});
        injector->touchDown(2, {250, 200});
        injector->touchesMove({{1, {140, 200}}, {2, {260, 200}}});
        for (int i = 1; i <= 4; ++i) {
            const double a = 0.2 * i, r = 60 + 5 * i;
            injector->touchesMove({{1, {200 - r * std::cos(a), 200 - r * std::sin(a)}},
                                   {2, {200 + r * std::cos(a), 200 + r * std::sin(a)}}});
        }
        injector->touchUp(1);
        injector->touchUp(2);
    }
    static size_t count(const Strings& log, const std::string& prefix) {
        return std::count_if(log.begin(), log.end(),
                             [&](const std::string& s) { return s.rfind(prefix, 0) == 0; });
    }

    std::shared_ptr<RecordingView> view;
    std::shared_ptr<PinchGestureRecognizer> pinch;
    std::shared_ptr<RotationGestureRecognizer> rotation;
};

TEST_F(ArbitrationTest, WithoutADelegateTheFirstToBeginWins) {
    spreadThenTurn();
    const Strings log = takeLog();
    EXPECT_EQ(log.front(), "pinch:1");
    EXPECT_EQ(count(log, "rotation:"), 0u);
}

TEST_F(ArbitrationTest, ADelegateAllowingEitherSideLetsBothRun) {
    auto delegate = rt::make<YesDelegate>();
    rotation->setDelegate(delegate);  // one side saying yes is enough
    spreadThenTurn();
    const Strings log = takeLog();
    EXPECT_EQ(log.front(), "pinch:1");
    EXPECT_GT(count(log, "rotation:"), 1u);
    EXPECT_EQ(count(log, "pinch:3"), 1u);
    EXPECT_EQ(count(log, "rotation:3"), 1u);
}

TEST_F(ArbitrationTest, DelegateCanStopABeginOrKeepTouchesAway) {
    auto delegate = rt::make<YesDelegate>();
    delegate->allowBegin = false;
    pinch->setDelegate(delegate);
    spreadThenTurn();
    Strings log = takeLog();
    EXPECT_EQ(count(log, "pinch:"), 0u);
    EXPECT_EQ(log.front(), "rotation:1");  // the pinch failed and stood aside

    delegate->allowBegin = true;
    delegate->receive = false;
    spreadThenTurn();
    log = takeLog();
    EXPECT_EQ(count(log, "pinch:"), 0u);
}

TEST_F(ArbitrationTest, ExcludedRecogniserRecoversForTheNextGesture) {
    spreadThenTurn();
    takeLog();
    injector->rotate({200, 200}, 60, 0, 1, 0.3);
    const Strings log = takeLog();
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log.front(), "rotation:1");
}

TEST_F(ArbitrationTest, DelegateThatWentAwayCountsAsNone) {
    {
        auto delegate = rt::make<YesDelegate>();
        rotation->setDelegate(delegate);
    }
    spreadThenTurn();
    EXPECT_EQ(count(takeLog(), "rotation:"), 0u);
}

}  // namespace
}  // namespace orv::ui::test
