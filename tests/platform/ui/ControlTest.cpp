#include "platform/gfx/Bitmap.h"
#include "platform/ui/Button.h"
#include "platform/ui/Control.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/PanGestureRecognizer.h"
#include "tests/platform/ui/TouchTestSupport.h"

namespace orv::ui::test {
namespace {

using Strings = std::vector<std::string>;

std::string eventName(unsigned bit) {
    switch (bit) {
        case ControlEventTouchDown:
            return "down";
        case ControlEventTouchDownRepeat:
            return "repeat";
        case ControlEventTouchDragInside:
            return "dragInside";
        case ControlEventTouchDragOutside:
            return "dragOutside";
        case ControlEventTouchDragEnter:
            return "enter";
        case ControlEventTouchDragExit:
            return "exit";
        case ControlEventTouchUpInside:
            return "upInside";
        case ControlEventTouchUpOutside:
            return "upOutside";
        case ControlEventTouchCancel:
            return "cancel";
        case ControlEventValueChanged:
            return "valueChanged";
    }
    return "other";
}

class ControlTest : public TouchTest {
  protected:
    void SetUp() override {
        TouchTest::SetUp();
        control = makeView<Control>({100, 100, 50, 50});
        window->addSubview(control);
    }
    // Logs each event by name through a target per event bit.
    void logEvents(Control& c, std::weak_ptr<rt::Object> target = {}) {
        for (unsigned bit = 1; bit <= ControlEventValueChanged; bit <<= 1) {
            c.addTarget(
                target, [log = log, bit](Control&, Event*) { log->push_back(eventName(bit)); },
                bit);
        }
    }

    std::shared_ptr<Control> control;
};

TEST_F(ControlTest, TapInsideEndsInsideAndHighlightsOnlyWhileDown) {
    logEvents(*control);
    bool highlightedOnDown = false;
    control->addTarget(
        {}, [&](Control& c, Event*) { highlightedOnDown = c.isHighlighted(); },
        ControlEventTouchDown);
    injector->tap({125, 125});
    EXPECT_EQ(takeLog(), (Strings{"down", "upInside"}));
    EXPECT_TRUE(highlightedOnDown);
    EXPECT_FALSE(control->isHighlighted());
    EXPECT_FALSE(control->isTracking());
}

TEST_F(ControlTest, DragFarOutsideEndsOutsideButTheSlopCountsAsInside) {
    logEvents(*control);
    // 60 points past the edge is still inside the slop.
    injector->drag({{125, 125}, {210, 125}}, EventInjector::kStepSeconds);
    EXPECT_EQ(takeLog(), (Strings{"down", "dragInside", "upInside"}));

    injector->drag({{125, 125}, {300, 125}, {125, 125}}, 2 * EventInjector::kStepSeconds);
    EXPECT_EQ(takeLog(),
              (Strings{"down", "dragOutside", "exit", "dragInside", "enter", "upInside"}));
    injector->drag({{125, 125}, {300, 125}}, EventInjector::kStepSeconds);
    EXPECT_EQ(takeLog(), (Strings{"down", "dragOutside", "exit", "upOutside"}));
}

TEST_F(ControlTest, ActionsRunOnlyWhileTheirTargetLives) {
    int freeCalls = 0, targetCalls = 0;
    auto target = rt::make<rt::Object>();
    control->addTarget(
        target, [&](Control&, Event*) { ++targetCalls; }, ControlEventTouchUpInside);
    control->addTarget(
        {}, [&](Control&, Event*) { ++freeCalls; }, ControlEventTouchUpInside);
    injector->tap({125, 125});
    target.reset();
    injector->tap({125, 125});
    EXPECT_EQ(targetCalls, 1);
    EXPECT_EQ(freeCalls, 2);
    EXPECT_EQ(control->allControlEvents(), unsigned{ControlEventTouchUpInside});
}

TEST_F(ControlTest, RemoveTargetTakesOffOnlyTheGivenEvents) {
    auto target = rt::make<rt::Object>();
    logEvents(*control, target);
    control->removeTarget(target.get(), ControlEventTouchDown | ControlEventValueChanged);
    control->sendActionsForControlEvents(ControlEventValueChanged | ControlEventTouchUpInside |
                                         ControlEventTouchDown);
    EXPECT_EQ(takeLog(), (Strings{"upInside"}));
    control->removeTarget(nullptr, ControlEventAllEvents);
    EXPECT_EQ(control->allControlEvents(), 0u);
}

TEST_F(ControlTest, SendActionsGoesEventByEventLowestBitFirst) {
    logEvents(*control);
    control->addTarget(
        {}, [log = log](Control&, Event*) { log->push_back("any"); }, ControlEventAllEvents);
    control->sendActionsForControlEvents(ControlEventValueChanged | ControlEventTouchDown);
    EXPECT_EQ(takeLog(), (Strings{"down", "any", "valueChanged", "any"}));
}

TEST_F(ControlTest, DisabledControlPassesTouchesToTheNextResponder) {
    control->removeFromSuperview();
    auto parent = addRecordingView({0, 0, 400, 400}, "parent");
    parent->addSubview(control);
    logEvents(*control);
    control->setEnabled(false);
    EXPECT_EQ(control->state(), unsigned{ControlStateDisabled});
    injector->tap({125, 125});
    EXPECT_EQ(takeLog(), (Strings{"parent began", "parent ended"}));
}

TEST_F(ControlTest, PanOnAnAncestorCancelsTheControlsTouch) {
    logEvents(*control);
    window->addGestureRecognizer(rt::make<PanGestureRecognizer>());
    injector->drag({{125, 125}, {125, 160}}, 0.1);
    // The first step is short of the pan's hysteresis, so the control still sees it.
    EXPECT_EQ(takeLog(), (Strings{"down", "dragInside", "cancel"}));
    EXPECT_FALSE(control->isHighlighted());
}

TEST_F(ControlTest, SecondTapOfADoubleTapRepeatsTheTouchDown) {
    logEvents(*control);
    injector->doubleTap({125, 125});
    EXPECT_EQ(takeLog(), (Strings{"down", "upInside", "down", "repeat", "upInside"}));
}

// --- Button ----------------------------------------------------------------------------------

gfx::ImagePtr imageOfSize(int w, int h) {
    return gfx::Image::withBitmap(std::make_shared<gfx::Bitmap>(w, h));
}

TEST_F(ControlTest, ButtonShowsTheContentOfItsStateWithNormalAsFallback) {
    auto button = Button::buttonWithType(static_cast<int>(ButtonType::Custom));
    button->setTitle("normal", ControlStateNormal);
    button->setTitle("pressed", ControlStateHighlighted);
    button->setTitleColor(gfx::Color::red(), ControlStateSelected);
    EXPECT_EQ(button->titleLabel().text(), "normal");
    EXPECT_EQ(button->currentTitleColor(), gfx::Color::whiteColor());

    button->setHighlighted(true);
    EXPECT_EQ(button->titleLabel().text(), "pressed");
    button->setHighlighted(false);
    button->setSelected(true);
    EXPECT_EQ(button->titleLabel().text(), "normal");
    EXPECT_EQ(button->titleLabel().textColor(), gfx::Color::red());
    EXPECT_EQ(button->titleForState(ControlStateDisabled), "normal");
    EXPECT_FALSE(button->imageForState(ControlStateNormal));
    EXPECT_TRUE(button->imageView().isHidden());
}

TEST_F(ControlTest, ButtonCentresImageAndTitleTogether) {
    auto button = makeView<Button>({0, 0, 200, 100});
    button->setImage(imageOfSize(20, 30), ControlStateNormal);
    button->layoutIfNeeded();
    EXPECT_EQ(button->imageView().frame(), gfx::Rect(90, 35, 20, 30));

    button->setTitle("OK", ControlStateNormal);
    button->layoutIfNeeded();
    const gfx::Rect image = button->imageView().frame();
    const gfx::Rect title = button->titleLabel().frame();
    ASSERT_GT(title.size.width, 0);
    EXPECT_DOUBLE_EQ(title.origin.x, image.origin.x + image.size.width);
    EXPECT_NEAR(image.origin.x + (image.size.width + title.size.width) / 2, 100, 1e-9);
    EXPECT_NEAR(title.origin.y + title.size.height / 2, 50, 1e-9);
}

TEST_F(ControlTest, ButtonTakesTheTouchEvenOverItsSubviews) {
    auto button = makeView<Button>({0, 0, 100, 40});
    button->setTitle("Go", ControlStateNormal);
    window->addSubview(button);
    button->layoutIfNeeded();
    int taps = 0;
    button->addTarget(
        {}, [&](Control&, Event*) { ++taps; }, ControlEventTouchUpInside);
    injector->tap(button->titleLabel().center());
    EXPECT_EQ(taps, 1);
}

}  // namespace
}  // namespace orv::ui::test
