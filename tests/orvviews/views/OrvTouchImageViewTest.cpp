#include "orvviews/views/OrvTouchImageView.h"

#include <gtest/gtest.h>

#include "frameworks/core/OrvStatistics.h"
#include "platform/ui/EventInjector.h"
#include "tests/support/ScreenFixture.h"

namespace {

gfx::ImagePtr makePicture(int width, int height) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (size_t i = 0; i < bitmap->byteCount(); i += 4) bitmap->mutableData()[i + 3] = 255;
    return gfx::Image::withBitmap(bitmap);
}

struct AnimDelegate : rt::Object, OrvTouchImageViewDelegate {
    ORV_DECLARE_CLASS(AnimDelegate)
  public:
    std::vector<bool> states;
    void onOrvKitICTouchImageView(OrvTouchImageViewInterface&, bool animating) override {
        states.push_back(animating);
    }
};
ORV_DEFINE_CLASS(AnimDelegate, rt::Object, OrvTouchImageViewDelegate)

class OrvTouchImageViewTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        root = rt::make<ui::ViewController>();
        showRoot(root);
        view = ui::makeView<OrvTouchImageView>({0, 50, 375, 500});
        root->view()->addSubview(view);
        delegate = rt::make<AnimDelegate>();
        view->setDelegate(delegate);
    }
    static void expectNear(const gfx::Rect& a, const gfx::Rect& b, double tolerance = 1e-3) {
        EXPECT_NEAR(a.origin.x, b.origin.x, tolerance);
        EXPECT_NEAR(a.origin.y, b.origin.y, tolerance);
        EXPECT_NEAR(a.size.width, b.size.width, tolerance);
        EXPECT_NEAR(a.size.height, b.size.height, tolerance);
    }
    std::shared_ptr<ui::ViewController> root;
    std::shared_ptr<OrvTouchImageView> view;
    std::shared_ptr<AnimDelegate> delegate;
};

TEST_F(OrvTouchImageViewTest, TheWindowFramesTheMiddleOfThePictureAndZoomNarrowsIt) {
    EXPECT_TRUE(gfx::rectIsEmpty(view->countImageCutRect()));  // no window
    view->setRegionRatio(1);
    view->setImage(makePicture(800, 600));
    // The 375-wide window is covered by the picture at 500 × 375; the middle square is framed.
    const gfx::Rect cut = view->countImageCutRect();
    expectNear(cut, {0.125, 0, 0.75, 1});
    EXPECT_NEAR(cut.origin.x + cut.size.width / 2, 0.5, 1e-6);
    // Zoomed twice about the middle: half the width and height, still centred.
    view->wrapView()->setZoomScale(2);
    const gfx::Rect zoomed = view->countImageCutRect();
    expectNear(zoomed, {0.3125, 0.25, 0.375, 0.5});
    // Restoring is the inverse, at any zoom.
    view->wrapView()->setZoomScale(1);
    view->restoreWithZoomRect(zoomed, 2);
    expectNear(view->countImageCutRect(), zoomed);
    view->restoreWithZoomRect({}, 1);
    EXPECT_EQ(view->zoomScale(), 2);
    // A double tap at a middle zoom goes back to the minimum.
    view->wrapView()->setZoomScale(1.5);
    auto injector = ui::EventInjector::injectorForWindow(window);
    injector->doubleTap({187, 300});
    settle(0.5);
    EXPECT_EQ(view->zoomScale(), 1);
    injector->doubleTap({187, 300});
    settle(0.5);
    EXPECT_EQ(view->zoomScale(), OrvTouchImageView::kMaximumZoom);
}

TEST_F(OrvTouchImageViewTest, DraggingMovesTheFramedPartAndReleaseKeepsItOnThePicture) {
    view->setRegionRatio(1);
    view->setImage(makePicture(800, 600));
    view->wrapView()->setZoomScale(2);  // the picture 1000 × 750 points, the window 375
    const gfx::Rect before = view->countImageCutRect();
    auto injector = ui::EventInjector::injectorForWindow(window);
    // Fifty points to the left: the window sees fifty points further right on the picture.
    injector->drag({{250, 300}, {225, 300}, {200, 300}}, 0.3);
    settle(0.5);
    const gfx::Rect after = view->countImageCutRect();
    EXPECT_NEAR(after.origin.x - before.origin.x, 50.0 / 1000, 2e-3);
    EXPECT_NEAR(after.origin.y, before.origin.y, 2e-3);
    EXPECT_NEAR(after.size.width, before.size.width, 1e-6);
    // Dragged far past the picture's edge, it springs back: the window stays on the picture.
    for (int i = 0; i < 4; ++i) {
        injector->drag({{20, 300}, {200, 300}, {370, 300}}, 0.3);
        settle(0.5);
    }
    const gfx::Rect edge = view->countImageCutRect();
    EXPECT_NEAR(edge.origin.x, 0, 1e-3);
}

TEST_F(OrvTouchImageViewTest, TurnsAndMirrorsAnimateThenRetagTheSamePixels) {
    OrvStatistics::resetForTesting();
    view->setRegionRatio(1);
    auto picture = makePicture(800, 600);
    view->setImage(picture);
    view->wrapView()->setZoomScale(2);
    view->changeImage(OrvTouchImageViewInterface::kTurnRight);
    EXPECT_TRUE(view->isInAniming());
    EXPECT_TRUE(view->inActioning());
    view->changeImage(OrvTouchImageViewInterface::kTurnLeft);  // dropped, not queued
    view->changeRegionRatio(0.5);                              // dropped too
    settle(0.5);
    EXPECT_FALSE(view->isInAniming());
    EXPECT_EQ(delegate->states, (std::vector<bool>{true, false}));
    EXPECT_EQ(view->imageOrientation(), gfx::ImageOrientation::Right);
    EXPECT_EQ(view->imageView()->image()->bitmap(), picture->bitmap());
    EXPECT_EQ(view->zoomScale(), 1);
    // Upright it is 600 × 800 now: the window frames its full width.
    expectNear(view->countImageCutRect(), {0, 0.125, 1, 0.75});
    for (int i = 0; i < 3; ++i) {
        view->changeImage(OrvTouchImageViewInterface::kTurnRight);
        settle(0.5);
    }
    EXPECT_EQ(view->imageOrientation(), gfx::ImageOrientation::Up);
    view->changeImage(OrvTouchImageViewInterface::kMirrorHorizontal);
    settle(0.5);
    EXPECT_EQ(view->imageOrientation(), gfx::ImageOrientation::UpMirrored);
    EXPECT_EQ(OrvStatistics::pendingCounts()[0x401012], 4);
    EXPECT_EQ(OrvStatistics::pendingCounts()[0x401021], 1);
}

TEST_F(OrvTouchImageViewTest, RatioChangesMoveTheWindowAndRelayTheStates) {
    view->setImage(makePicture(800, 600));
    view->changeRegionRatio(0);  // the same: nothing, no delegate call
    EXPECT_TRUE(delegate->states.empty());
    view->changeRegionRatio(0.75);
    settle(0.5);
    EXPECT_EQ(delegate->states, (std::vector<bool>{true, false}));
    const gfx::Rect cut = view->countImageCutRect();
    EXPECT_NEAR(cut.size.height, 1, 1e-3);  // a tall window: the picture's full height
    EXPECT_NEAR(cut.origin.x + cut.size.width / 2, 0.5, 1e-3);
    EXPECT_NEAR(cut.size.width / cut.size.height * 800 / 600, 0.75, 1e-3);
    // Ratios that are no number or below zero mean no window.
    for (double bad : {std::nan(""), -1.0}) {
        view->setRegionRatio(bad);
        EXPECT_EQ(view->regionRatio(), 0);
        EXPECT_TRUE(gfx::rectIsEmpty(view->countImageCutRect()));
    }
    view->setRegionRatio(0.75);
    // An extreme picture still lays out and crops something.
    view->setImage(makePicture(1, 4000));
    const gfx::Rect thin = view->countImageCutRect();
    EXPECT_GT(thin.size.width, 0);
    EXPECT_GT(thin.size.height, 0);
}

}  // namespace
