#include "platform/ui/ScrollView.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "platform/rt/RunLoop.h"
#include "platform/ui/PinchGestureRecognizer.h"
#include "platform/ui/Renderer.h"
#include "platform/ui/Screen.h"
#include "tests/platform/ui/TouchTestSupport.h"

namespace orv::ui::test {
namespace {

using Strings = std::vector<std::string>;

// Logs the calls into the touch log; the offsets didScroll saw are kept apart.
class ScrollRecorder : public rt::Object, public ScrollViewDelegate {
  public:
    void scrollViewDidScroll(ScrollView& view) override { offsets.push_back(view.contentOffset()); }
    void scrollViewWillBeginDragging(ScrollView&) override { log->push_back("willBeginDragging"); }
    void scrollViewDidEndDragging(ScrollView&, bool decelerate) override {
        log->push_back(decelerate ? "didEndDragging decelerating" : "didEndDragging");
    }
    void scrollViewDidEndDecelerating(ScrollView&) override {
        log->push_back("didEndDecelerating");
    }
    void scrollViewDidEndScrollingAnimation(ScrollView&) override { log->push_back("animated"); }
    View* viewForZoomingInScrollView(ScrollView&) override { return zoomView.get(); }
    void scrollViewWillBeginZooming(ScrollView&, View* view) override {
        log->push_back(view == zoomView.get() ? "willBeginZooming" : "willBeginZooming elsewhere");
    }
    // A run of calls is logged once.
    void scrollViewDidZoom(ScrollView&) override {
        if (log->empty() || log->back() != "didZoom") log->push_back("didZoom");
    }
    void scrollViewDidEndZooming(ScrollView&, View* view, double scale) override {
        std::ostringstream line;
        line << "didEndZooming " << scale << (view == zoomView.get() ? "" : " elsewhere");
        log->push_back(line.str());
    }

    TouchLog log;
    View::Ptr zoomView;
    std::vector<gfx::Point> offsets;
};

// A 200 × 200 scroll view at the window's origin over a 200 × 1000 content.
class ScrollViewTest : public TouchTest {
  protected:
    void SetUp() override {
        TouchTest::SetUp();
        scroll = makeView<ScrollView>({0, 0, 200, 200});
        scroll->setContentSize({200, 1000});
        window->addSubview(scroll);
        recorder->log = log;
        scroll->setDelegate(recorder);
    }
    void drag(double fromY, double toY) { injector->drag({{100, fromY}, {100, toY}}, 0.2); }
    bool logged(const std::string& what) {
        const Strings taken = takeLog();
        return std::find(taken.begin(), taken.end(), what) != taken.end();
    }
    static void runFor(double seconds) { rt::RunLoop::main().runFor(seconds); }

    std::shared_ptr<ScrollView> scroll;
    std::shared_ptr<ScrollRecorder> recorder = rt::make<ScrollRecorder>();
};

TEST_F(ScrollViewTest, DragMovesTheContentWithTheFingerAndWithoutBouncesStaysInRange) {
    drag(150, 30);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 120));
    EXPECT_EQ(takeLog(), (Strings{"willBeginDragging", "didEndDragging"}));
    EXPECT_EQ(recorder->offsets.back(), gfx::Point(0, 120));
    EXPECT_EQ(scroll->convertPointToView({0, 120}, window.get()), gfx::Point(0, 0));

    scroll->setBounces(false);
    scroll->setContentOffset({0, 750});
    drag(150, 50);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 800));
    for (gfx::Point seen : recorder->offsets) EXPECT_LE(seen.y, 800);
    EXPECT_FALSE(scroll->isSettling());
}

TEST_F(ScrollViewTest, ReleasedPastTheEndItSpringsBackInsideTheInsets) {
    EXPECT_TRUE(scroll->clipsToBounds());
    scroll->setContentInset({10, 0, 0, 0});
    drag(100, 180);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, -80));
    EXPECT_EQ(takeLog(), (Strings{"willBeginDragging", "didEndDragging decelerating"}));
    runFor(ScrollView::kSettleSeconds / 2);
    EXPECT_GT(scroll->contentOffset().y, -80);
    EXPECT_LT(scroll->contentOffset().y, -10);
    runFor(ScrollView::kSettleSeconds);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, -10));
    EXPECT_EQ(takeLog(), (Strings{"didEndDecelerating"}));
}

TEST_F(ScrollViewTest, AnimatedOffsetArrivesOverTheSettleTimeUnlessSetAgain) {
    scroll->setContentOffset({0, 300}, true);
    runFor(ScrollView::kSettleSeconds / 2);
    EXPECT_NEAR(scroll->contentOffset().y, 150, 40);  // within a frame of halfway
    runFor(ScrollView::kSettleSeconds);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 300));
    EXPECT_EQ(takeLog(), (Strings{"animated"}));

    scroll->setContentOffset({0, 0}, true);
    runFor(0.1);
    scroll->setContentOffset({0, 500});
    runFor(1);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 500));
    EXPECT_TRUE(takeLog().empty());
}

// A subview's touch is cancelled when the content moves, and kept when it cannot.
TEST_F(ScrollViewTest, NothingToScrollLetsTheDragThrough) {
    addRecordingView({0, 0, 200, 50}, "row", scroll.get());
    scroll->setContentSize({200, 150});
    drag(25, 150);
    EXPECT_TRUE(logged("row ended"));
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 0));

    scroll->setAlwaysBounceVertical(true);
    drag(25, 75);
    EXPECT_TRUE(logged("row cancelled"));
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, -50));
}

// The scroll view zooms a 200 × 200 photo of four coloured quadrants, between 0.5 and 4.
class ScrollViewZoomTest : public ScrollViewTest {
  protected:
    void SetUp() override {
        ScrollViewTest::SetUp();
        photo = makeView({0, 0, 200, 200});
        const gfx::Color colors[] = {gfx::Color::rgb(1, 0, 0), gfx::Color::rgb(0, 1, 0),
                                     gfx::Color::rgb(0, 0, 1), gfx::Color::rgb(1, 1, 0)};
        for (int i = 0; i < 4; ++i) {
            auto quadrant = makeView({100.0 * (i % 2), 100.0 * (i / 2), 100, 100});
            quadrant->setBackgroundColor(colors[i]);
            photo->addSubview(quadrant);
        }
        scroll->addSubview(photo);
        scroll->setContentSize({200, 200});
        scroll->setMinimumZoomScale(0.5);
        scroll->setMaximumZoomScale(4);
        recorder->zoomView = photo;
    }
    // The photo's point under a window point.
    gfx::Point photoPointAt(gfx::Point p) const { return photo->convertPointFromView(p, nullptr); }
    void expectNear(gfx::Point actual, gfx::Point expected, double tolerance) {
        EXPECT_NEAR(actual.x, expected.x, tolerance);
        EXPECT_NEAR(actual.y, expected.y, tolerance);
    }

    View::Ptr photo;
};

TEST_F(ScrollViewZoomTest, PinchScalesAboutTheFingersMidpointAndFollowsItAsItMoves) {
    const gfx::Point before = photoPointAt({60, 80});
    injector->pinch({60, 80}, 40, 120, 0.2);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 3);
    expectNear(photoPointAt({60, 80}), before, 1.5);
    EXPECT_EQ(photo->frame(), gfx::Rect(0, 0, 600, 600));
    EXPECT_EQ(photo->bounds(), gfx::Rect(0, 0, 200, 200));
    EXPECT_EQ(scroll->contentSize(), gfx::Size(600, 600));
    EXPECT_EQ(recorder->offsets.back(), scroll->contentOffset());
    EXPECT_EQ(takeLog(), (Strings{"willBeginZooming", "didZoom", "didEndZooming 3"}));

    // Fingers spreading while their midpoint travels from (100, 100) to (130, 120): the photo's
    // point under it travels along.
    scroll->setZoomScale(1);
    const gfx::Point held = photoPointAt({100, 100});
    injector->touchDown(1, {80, 100});
    injector->touchDown(2, {120, 100});
    for (int step = 1; step <= 10; ++step) {
        const double half = 20 + 3 * step;
        const gfx::Point mid{100 + 3.0 * step, 100 + 2.0 * step};
        injector->touchesMove({{1, {mid.x - half, mid.y}}, {2, {mid.x + half, mid.y}}});
    }
    injector->touchUp(1);
    injector->touchUp(2);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 2.5);
    expectNear(photoPointAt({130, 120}), held, 1.5);
}

TEST_F(ScrollViewZoomTest, PinchPastTheLimitsResistsThenSettlesBack) {
    injector->pinch({100, 100}, 40, 240, 0.2);  // asks for 6
    EXPECT_GT(scroll->zoomScale(), 4);
    EXPECT_LT(scroll->zoomScale(), 6);
    runFor(ScrollView::kSettleSeconds / 2);
    EXPECT_GT(scroll->zoomScale(), 4);
    runFor(ScrollView::kSettleSeconds);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 4);
    expectNear(photoPointAt({100, 100}), {100, 100}, 1.5);
    EXPECT_EQ(takeLog(), (Strings{"willBeginZooming", "didZoom", "didEndZooming 4"}));

    scroll->setZoomScale(1);
    injector->pinch({100, 100}, 160, 16, 0.2);  // asks for 0.1
    EXPECT_LT(scroll->zoomScale(), 0.5);
    EXPECT_GT(scroll->zoomScale(), 0.5 / 1.5);
    runFor(1);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 0.5);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 0));  // the small content rests at the start

    scroll->setBouncesZoom(false);
    scroll->setZoomScale(1);
    injector->pinch({100, 100}, 40, 240, 0.2);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 4);
    EXPECT_FALSE(scroll->isSettling());
}

// Zoomed in at the bottom right corner and pinched out a little there: the offset, now past
// the end of the smaller content, settles back with the bottom inset honoured.
TEST_F(ScrollViewZoomTest, OffsetSettlesIntoTheInsetRangeAfterAPinch) {
    scroll->setContentInset({0, 0, 20, 0});
    scroll->setZoomScale(2);
    scroll->setContentOffset({200, 220});
    injector->pinch({140, 140}, 100, 75, 0.2);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 1.5);
    EXPECT_GT(scroll->contentOffset().y, 120);
    runFor(1);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(100, 120));
    EXPECT_EQ(takeLog().back(), "didEndZooming 1.5");
}

TEST_F(ScrollViewZoomTest, SetZoomScaleAndZoomToRectClampAndPlaceTheContent) {
    scroll->setZoomScale(2);
    EXPECT_EQ(scroll->contentSize(), gfx::Size(400, 400));
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(100, 100));  // the middle kept
    scroll->setZoomScale(10);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 4);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(300, 300));
    scroll->setZoomScale(0.1);
    EXPECT_EQ(photo->frame(), gfx::Rect(0, 0, 100, 100));
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 0));
    EXPECT_EQ(takeLog(), (Strings{"didZoom"}));

    scroll->zoomToRect({100, 100, 50, 50}, true);
    runFor(ScrollView::kSettleSeconds / 2);
    EXPECT_GT(scroll->zoomScale(), 0.5);
    EXPECT_LT(scroll->zoomScale(), 4);
    runFor(ScrollView::kSettleSeconds);
    expectNear(photoPointAt({0, 0}), {100, 100}, 1e-9);
    expectNear(photoPointAt({200, 200}), {150, 150}, 1e-9);
    EXPECT_EQ(takeLog(), (Strings{"didZoom", "didEndZooming 4"}));

    // The wide rect decides by its width; centred, it would start above the content.
    scroll->zoomToRect({0, 0, 100, 20}, false);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 2);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 0));
}

TEST_F(ScrollViewZoomTest, NothingZoomsWithoutAViewForZoomingOrWithEqualLimits) {
    EXPECT_TRUE(scroll->isMultipleTouchEnabled());
    recorder->zoomView = nullptr;
    EXPECT_FALSE(scroll->pinchGestureRecognizer());
    injector->pinch({100, 100}, 40, 120, 0.2);
    scroll->setZoomScale(2);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 1);

    recorder->zoomView = photo;
    scroll->setMaximumZoomScale(1);
    scroll->setMinimumZoomScale(1);
    EXPECT_FALSE(scroll->pinchGestureRecognizer());
    injector->pinch({100, 100}, 40, 120, 0.2);
    scroll->setZoomScale(2);
    EXPECT_DOUBLE_EQ(scroll->zoomScale(), 1);
    EXPECT_EQ(photo->frame(), gfx::Rect(0, 0, 200, 200));
    for (const std::string& line : takeLog()) EXPECT_EQ(line.find("Zoom"), std::string::npos);
}

// After a zoom the content is larger than the view, so one finger pans it.
TEST_F(ScrollViewZoomTest, ZoomedContentPansAndRendersEnlarged) {
    window->setBackgroundColor(gfx::Color::whiteColor());
    scroll->setZoomScale(2);
    injector->drag({{150, 150}, {100, 150}}, 0.2);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(150, 100));
    ASSERT_TRUE(Renderer::writePNG(*window, "/tmp/orv_scrollview_zoom.png"));  // to look at

    const auto bitmap = Renderer::render(*window);
    const double k = Screen::main().scale();
    auto rgb = [&](double x, double y) {
        const uint8_t* p = bitmap->pixel(int(x * k), int(y * k));
        return std::array<int, 3>{p[0], p[1], p[2]};
    };
    // The photo's centre sits at (50, 100), its quadrants drawn 200 points wide around it, and
    // nothing shows past the scroll view's edge.
    EXPECT_EQ(rgb(25, 50), (std::array<int, 3>{255, 0, 0}));
    EXPECT_EQ(rgb(175, 150), (std::array<int, 3>{255, 255, 0}));
    EXPECT_EQ(rgb(250, 100), (std::array<int, 3>{255, 255, 255}));
}

}  // namespace
}  // namespace orv::ui::test
