#include "orvviews/widgets/sticker/OrvStickerItemView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frameworks/core/OrvSticker.h"
#include "frameworks/core/OrvStickerText.h"
#include "platform/gfx/Bitmap.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/Layer.h"
#include "platform/ui/Renderer.h"
#include "tests/support/ScreenFixture.h"

namespace {

// Opens the item's state to the checks.
class ProbeItem : public OrvStickerItemView {
  public:
    using OrvStickerItemView::cancelButton;
    using OrvStickerItemView::hasTouched;
    using OrvStickerItemView::imageView;
    using OrvStickerItemView::mDegree;
    using OrvStickerItemView::mMaxScale;
    using OrvStickerItemView::mScale;
    using OrvStickerItemView::mTextViews;
    using OrvStickerItemView::turnButton;
};

class Listener : public OrvStickerItemViewDelegate {
  public:
    void onClosedStickerItemView(OrvStickerItemView& view) override { closed = &view; }
    void onSelectedStickerItemView(OrvStickerItemView& view) override { ++selections; }
    OrvStickerItemView* closed = nullptr;
    int selections = 0;
};

constexpr uint8_t kRed[4] = {220, 40, 40, 255};

std::shared_ptr<OrvSticker> stickerOf(int type, gfx::Size size) {
    gfx::Bitmap bitmap(int(size.width), int(size.height));
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x)
            std::copy(kRed, kRed + 4, bitmap.mutableRow(y) + 4 * x);
    }
    auto sticker = OrvSticker::stickerWithType(type);
    sticker->setSize(size);
    sticker->setImage(
        gfx::Image::withBitmap(std::make_shared<const gfx::Bitmap>(std::move(bitmap))));
    return sticker;
}

// Fingers around a point, opposite each other at `radius`, the line between them at `degrees`.
std::vector<std::pair<int, gfx::Point>> fingers(gfx::Point c, double radius, double degrees) {
    const double a = degrees * M_PI / 180;
    const gfx::Point d{radius * std::cos(a), radius * std::sin(a)};
    return {{1, {c.x + d.x, c.y + d.y}}, {2, {c.x - d.x, c.y - d.y}}};
}

// Parent 356 x 400 at (10, 40) of the window: an 80 x 60 sticker (diagonal 100) scales up to 4.
class OrvStickerItemViewTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        window->setBackgroundColor(gfx::Color::black());
        window->makeKeyAndVisible();
        parent = ui::makeView<ui::View>({10, 40, 356, 400});
        parent->setBackgroundColor(gfx::Color::white(0.8));
        window->addSubview(parent);
        item = addItem(stickerOf(OrvSticker::kImage, {80, 60}));
        injector = ui::EventInjector::injectorForWindow(window);
    }

    std::shared_ptr<ProbeItem> addItem(std::shared_ptr<OrvSticker> sticker) {
        auto added = ui::makeView<ProbeItem>(parent->bounds());
        parent->addSubview(added);
        added->setSticker(std::move(sticker));
        return added;
    }

    // A point given relative to the item's centre, in window coordinates.
    gfx::Point atItem(double dx, double dy, const ui::View* which = nullptr) const {
        const gfx::Point c = (which ? which : item.get())->center();
        return parent->convertPointToView({c.x + dx, c.y + dy}, nullptr);
    }

    // Two fingers 40 apart, then 44 (the pinch begins there), then 55: a factor of 1.25.
    void pinchOut(const ui::View& which) {
        const gfx::Point c = atItem(0, 0, &which);
        injector->touchDown(1, {c.x - 20, c.y});
        injector->touchDown(2, {c.x + 20, c.y});
        injector->touchesMove({{1, {c.x - 22, c.y}}, {2, {c.x + 22, c.y}}});
        injector->touchesMove({{1, {c.x - 27.5, c.y}}, {2, {c.x + 27.5, c.y}}});
        injector->touchUp(1);
        injector->touchUp(2);
    }

    std::shared_ptr<ui::View> parent;
    std::shared_ptr<ProbeItem> item;
    std::shared_ptr<ui::EventInjector> injector;
};

TEST_F(OrvStickerItemViewTest, ANewStickerLiesCentredAtScaleOneWithTheButtonsOnItsCorners) {
    EXPECT_EQ(item->bounds(), gfx::Rect(0, 0, 116, 96));
    EXPECT_EQ(item->center(), gfx::Point(178, 200));
    EXPECT_EQ(item->imageView->frame(), gfx::Rect(18, 18, 80, 60));
    EXPECT_EQ(item->turnButton->frame(), gfx::Rect(80, 60, 36, 36));
    EXPECT_DOUBLE_EQ(item->mMaxScale, 4);

    // Larger than the parent: still scale 1 and centred, until the first scale step clamps it.
    auto large = addItem(stickerOf(OrvSticker::kImage, {400, 300}));
    EXPECT_EQ(large->bounds(), gfx::Rect(0, 0, 436, 336));
    EXPECT_EQ(large->center(), gfx::Point(178, 200));
    pinchOut(*large);
    EXPECT_DOUBLE_EQ(large->mScale, 0.8);
    EXPECT_EQ(large->bounds(), gfx::Rect(0, 0, 356, 276));

    // A parent too small for even the least scale pins the limit there.
    parent->setBounds({0, 0, 50, 50});
    item->setSticker(item->sticker());
    EXPECT_DOUBLE_EQ(item->mMaxScale, 0.5);

    // The floor can be raised but never put below a half.
    item->setMinScale(0.2);
    EXPECT_DOUBLE_EQ(item->minScale(), 0.5);
    item->setMinScale(0.8);
    EXPECT_DOUBLE_EQ(item->minScale(), 0.8);
}

TEST_F(OrvStickerItemViewTest, DragMovesTheCentreAndStopsOnTheParentsEdgeOneAxisAtATime) {
    gfx::Point finger = atItem(0, 0);
    injector->touchDown(1, finger);
    injector->touchMove(1, {finger.x, finger.y + 12});  // the drag begins here
    injector->touchMove(1, {finger.x + 30, finger.y + 32});
    EXPECT_EQ(item->center(), gfx::Point(208, 220));

    injector->touchMove(1, {finger.x + 182, finger.y + 42});  // x would be 360
    EXPECT_EQ(item->center(), gfx::Point(356, 230));
    injector->touchMove(1, {finger.x + 177, finger.y + 42});  // back at once, no dead zone
    EXPECT_EQ(item->center(), gfx::Point(351, 230));
    injector->touchUp(1);
    EXPECT_FALSE(item->hasTouched);
}

TEST_F(OrvStickerItemViewTest, TheHandleTurnsOnACircleAndScalesAlongTheRadiusWithinTheLimits) {
    item->setSelected(true);
    // Lower right corner of the picture is (40, 30) from the centre, 50 away; the fingers'
    // points keep whole distances so that a move on the circle is exactly no scale step.
    const gfx::Point c = item->center();
    injector->touchDown(1, atItem(40, 30));
    injector->touchMove(1, atItem(48, 36));  // begins on the handle, 60 from the centre
    injector->touchMove(1, atItem(0, 60));
    const double turned = 90 - std::atan2(36, 48) * 180 / M_PI;
    EXPECT_NEAR(item->mDegree, turned, 1e-9);
    EXPECT_EQ(item->bounds().size, gfx::Size(116, 96));

    injector->touchMove(1, atItem(0, 85));  // 25 further out: 2 x 25 / 100
    EXPECT_DOUBLE_EQ(item->mScale, 1.5);
    EXPECT_EQ(item->bounds().size, gfx::Size(156, 126));
    injector->touchMove(1, atItem(0, 400));
    EXPECT_EQ(item->bounds().size, gfx::Size(356, 276));  // scale 4
    injector->touchMove(1, atItem(0, 10));
    EXPECT_EQ(item->bounds().size, gfx::Size(76, 66));  // scale 0.5
    EXPECT_EQ(item->turnButton->frame(), gfx::Rect(40, 30, 36, 36));
    injector->touchUp(1);

    EXPECT_NEAR(item->mDegree, turned, 1e-9);
    EXPECT_EQ(item->center(), c);
}

TEST_F(OrvStickerItemViewTest, TwoFingersTurnAcrossZeroAndPinchAtTwiceTheirPace) {
    const gfx::Point c = atItem(0, 0);
    for (const auto& [id, p] : fingers(c, 30, 0)) injector->touchDown(id, p);
    injector->touchesMove(fingers(c, 30, 3));   // the turn begins
    injector->touchesMove(fingers(c, 30, -7));  // 10 back: 350
    EXPECT_NEAR(item->mDegree, 350, 1e-9);
    EXPECT_TRUE(item->hasTouched);
    injector->touchesMove(fingers(c, 30, 13));  // 20 on: through 0 to 10
    EXPECT_NEAR(item->mDegree, 10, 1e-9);
    EXPECT_NEAR(item->transform().b, std::sin(10 * M_PI / 180), 1e-12);
    injector->touchUp(1);
    injector->touchUp(2);
    EXPECT_FALSE(item->hasTouched);
    EXPECT_FLOAT_EQ(item->resultWithRegionRect({})->degree(), 10);

    pinchOut(*item);
    EXPECT_DOUBLE_EQ(item->mScale, 1.5);
    EXPECT_EQ(item->bounds().size, gfx::Size(156, 126));
    EXPECT_EQ(item->center(), gfx::Point(178, 200));
}

TEST_F(OrvStickerItemViewTest, ResultIsTheCentreAndSizeAsFractionsOfTheRegion) {
    auto result = item->resultWithRegionRect({});  // the parent's bounds
    EXPECT_EQ(result->sticker(), item->sticker());
    EXPECT_EQ(result->center(), gfx::Rect(0.5, 0.5, 80.0 / 356, 60.0 / 400));

    // Left of and above the region: negative, kept as they are.
    const gfx::Rect off = item->centerOfParentRegin({200, 250, 100, 50});
    EXPECT_DOUBLE_EQ(off.origin.x, -0.22);
    EXPECT_DOUBLE_EQ(off.origin.y, -1);
    EXPECT_DOUBLE_EQ(off.size.height, 1.2);

    pinchOut(*item);  // the size follows the unrounded scale, margins left out
    EXPECT_DOUBLE_EQ(item->centerOfParentRegin({0, 0, 240, 180}).size.width, 0.5);
}

TEST_F(OrvStickerItemViewTest, SelectionShowsTheButtonsNeverDropsAHeldItemAndCloseAsksTheLayer) {
    item->setStrokeWidth(2);
    item->setStrokeColor(gfx::Color::whiteColor());
    item->setSelected(true);
    EXPECT_FALSE(item->cancelButton->isHidden() || item->turnButton->isHidden());
    EXPECT_EQ(item->imageView->layer().borderColor(), gfx::Color::whiteColor());
    item->setSelected(false);
    EXPECT_TRUE(item->cancelButton->isHidden() && item->turnButton->isHidden());
    EXPECT_DOUBLE_EQ(item->imageView->layer().borderWidth(), 2);
    EXPECT_EQ(item->imageView->layer().borderColor(), gfx::Color::clear());

    auto listener = std::make_shared<Listener>();
    item->setDelegate(listener);
    item->setSelected(true);
    injector->touchDown(1, atItem(0, 0));
    EXPECT_EQ(listener->selections, 1);
    item->setSelected(false);  // the layer's sweep
    EXPECT_TRUE(item->selected());
    injector->touchUp(1);  // a plain tap lets go at once
    item->setSelected(false);
    EXPECT_FALSE(item->selected());

    item->setSelected(true);
    injector->tap(atItem(-40, -30));  // the picture's upper left corner
    EXPECT_EQ(listener->closed, item.get());
    EXPECT_EQ(item->sticker()->image(), nullptr);
    EXPECT_EQ(item->superview(), parent.get());  // removing it is the layer's business
    item->viewWillDestory();
    EXPECT_TRUE(item->gestureRecognizers().empty());
}

TEST_F(OrvStickerItemViewTest, ATextStickerHasNoHandleAndCentresItsLabelsOnTheirPlaces) {
    auto sticker = stickerOf(OrvSticker::kText, {80, 60});
    auto text = OrvStickerText::textWithType(0);
    text->setText("Hi");
    text->setRect({0.5, 0.5, 0.5, 0.5});
    sticker->setTexts(OrvSticker::Texts{text, nullptr});
    auto textItem = addItem(sticker);

    ASSERT_EQ(textItem->mTextViews.size(), 1u);
    EXPECT_EQ(textItem->mTextViews[0]->center(), gfx::Point(18 + 40 + 20, 18 + 30 + 15));
    textItem->setSelected(true);
    EXPECT_FALSE(textItem->cancelButton->isHidden());
    EXPECT_TRUE(textItem->turnButton->isHidden());
}

TEST_F(OrvStickerItemViewTest, ATurnedItemShowsItsPictureTurnedAboutItsCentre) {
    const gfx::Point c = item->center();
    item->computerAngleWithPoint({c.x, c.y + 1}, {c.x + 1, c.y}, c);  // a quarter turn
    EXPECT_NEAR(item->mDegree, 90, 1e-9);

    const auto bitmap = ui::Renderer::render(*window);
    auto pixel = [&](gfx::Point p) {
        const gfx::Point w = parent->convertPointToView(p, nullptr);
        return bitmap->pixel(int(w.x * 2), int(w.y * 2));
    };
    // Turned a quarter, the 80 x 60 picture stands 60 wide and 80 high.
    EXPECT_TRUE(std::equal(kRed, kRed + 4, pixel(c)));
    EXPECT_TRUE(std::equal(kRed, kRed + 4, pixel({c.x + 25, c.y + 35})));
    EXPECT_NE(pixel({c.x + 36, c.y})[1], kRed[1]);  // beyond the turned picture's side
}

}  // namespace
