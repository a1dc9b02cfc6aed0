#include "platform/ui/View.h"

#include <gtest/gtest.h>

#include <numbers>
#include <string>
#include <vector>

#include "platform/ui/Window.h"
#include "tests/platform/ui/ViewTestSupport.h"

namespace orv::ui::test {
namespace {

using gfx::AffineTransform;
using gfx::Point;
using gfx::Rect;
constexpr double kPi = std::numbers::pi;

// Writes its hooks and layout passes into a shared log.
class RecordingView : public View {
    ORV_DECLARE_CLASS(RecordingView)
  public:
    std::vector<std::string>* log = nullptr;
    int layouts = 0;
    std::string name;

    void willMoveToSuperview(View* s) override {
        note(s ? "willMoveToSuperview" : "willMoveToNil");
    }
    void didMoveToSuperview() override { note("didMoveToSuperview"); }
    void willMoveToWindow(Window* w) override { note(w ? "willMoveToWindow" : "willLeaveWindow"); }
    void didMoveToWindow() override { note("didMoveToWindow"); }
    void layoutSubviews() override { ++layouts; }

  private:
    void note(const std::string& what) {
        if (log) log->push_back(name + "." + what);
    }
};
ORV_DEFINE_CLASS(RecordingView, View)

class FixedSizeView : public View {
    ORV_DECLARE_CLASS(FixedSizeView)
  public:
    gfx::Size sizeThatFits(gfx::Size) const override { return {30, 40}; }
};
ORV_DEFINE_CLASS(FixedSizeView, View)

std::shared_ptr<RecordingView> recording(const std::string& name, std::vector<std::string>* log,
                                         const Rect& frame = {}) {
    auto v = makeView<RecordingView>(frame);
    v->name = name;
    v->log = log;
    return v;
}

std::vector<const View*> order(const View& parent) {
    std::vector<const View*> out;
    for (const auto& v : parent.subviews()) out.push_back(v.get());
    return out;
}

// --- Geometry -------------------------------------------------------------------------------

TEST_F(ViewTest, FrameUnderRotationIsTheBoundingBoxAndBoundsStay) {
    auto v = makeView({10, 20, 100, 50});
    v->setTransform(AffineTransform::rotation(kPi / 2));
    expectNear(v->frame(), {35, -5, 50, 100});
    EXPECT_EQ(v->bounds(), Rect(0, 0, 100, 50));
    EXPECT_EQ(v->center(), Point(60, 45));

    v->setTransform(AffineTransform::rotation(kPi / 4));
    const double side = 150 / std::sqrt(2.0);
    expectNear(v->frame(), {60 - side / 2, 45 - side / 2, side, side});
}

TEST_F(ViewTest, SettingBoundsKeepsTheCentre) {
    auto v = makeView({10, 20, 100, 50});
    v->setBounds({0, 0, 200, 10});
    EXPECT_EQ(v->center(), Point(60, 45));
    EXPECT_EQ(v->frame(), Rect(-40, 40, 200, 10));
}

TEST_F(ViewTest, SettingTheFrameUnderATransformKeepsIt) {
    auto turned = makeView({0, 0, 10, 10});
    turned->setTransform(AffineTransform::rotation(-kPi / 2));
    turned->setFrame({0, 0, 40, 80});
    EXPECT_EQ(turned->transform(), AffineTransform::rotation(-kPi / 2));
    expectNear(Rect{{}, turned->bounds().size}, {0, 0, 80, 40});
    expectNear(turned->center(), {20, 40});
    expectNear(turned->frame(), {0, 0, 40, 80});

    auto scaled = makeView({0, 0, 10, 10});
    scaled->setTransform(AffineTransform::scale(2, 4));
    scaled->setFrame({10, 10, 100, 100});
    expectNear(Rect{{}, scaled->bounds().size}, {0, 0, 50, 25});
    expectNear(scaled->frame(), {10, 10, 100, 100});

    auto moved = makeView({0, 0, 10, 10});
    moved->setTransform(AffineTransform::translation(5, 7));
    moved->setFrame({100, 100, 20, 20});
    expectNear(moved->frame(), {100, 100, 20, 20});
    expectNear(moved->center(), {105, 103});
}

// --- Coordinates ----------------------------------------------------------------------------

TEST_F(ViewTest, ConvertsBetweenSiblingsThroughRotatedAndTranslatedParents) {
    auto window = makeView<Window>({0, 0, 400, 400});
    auto rotated = makeView({50, 50, 100, 100});
    rotated->setTransform(AffineTransform::rotation(kPi / 2));
    auto translated = makeView({200, 0, 100, 100});
    translated->setTransform(AffineTransform::translation(5, 7));
    translated->setBounds({10, 10, 100, 100});
    auto a = makeView({0, 0, 10, 10});
    auto b = makeView({20, 30, 10, 10});
    window->addSubview(rotated);
    window->addSubview(translated);
    rotated->addSubview(a);
    translated->addSubview(b);

    // a's origin is the rotated parent's top-left corner, turned a quarter about (100, 100).
    expectNear(a->convertPointToView({0, 0}, nullptr), {150, 50});
    expectNear(a->convertPointToView({0, 0}, b.get()), {-65, 23});
    expectNear(b->convertPointFromView({0, 0}, a.get()), {-65, 23});
    expectNear(a->convertPointFromView({-65, 23}, b.get()), {0, 0});
    // A rectangle becomes the bounding box of its turned corners.
    expectNear(a->convertRectToView({0, 0, 10, 20}, nullptr), {130, 50, 20, 10});
    expectNear(window->convertRectFromView({0, 0, 10, 20}, a.get()), {130, 50, 20, 10});
}

// --- Hit testing ----------------------------------------------------------------------------

TEST_F(ViewTest, HitTestingPrefersTheFrontAndSkipsWhatCannotBeTouched) {
    auto window = makeView<Window>({0, 0, 300, 300});
    auto back = makeView({0, 0, 100, 100});
    auto front = makeView({50, 50, 100, 100});
    window->addSubview(back);
    window->addSubview(front);

    EXPECT_EQ(window->hitTest({75, 75}, nullptr), front.get());
    EXPECT_EQ(window->hitTest({25, 25}, nullptr), back.get());
    EXPECT_EQ(window->hitTest({250, 250}, nullptr), window.get());
    EXPECT_EQ(window->hitTest({350, 10}, nullptr), nullptr);

    front->setHidden(true);
    EXPECT_EQ(window->hitTest({75, 75}, nullptr), back.get());
    front->setHidden(false);
    front->setUserInteractionEnabled(false);
    EXPECT_EQ(window->hitTest({75, 75}, nullptr), back.get());
    front->setUserInteractionEnabled(true);
    front->setAlpha(0.005);
    EXPECT_EQ(window->hitTest({75, 75}, nullptr), back.get());
    front->setAlpha(0.01);
    EXPECT_EQ(window->hitTest({75, 75}, nullptr), front.get());
}

TEST_F(ViewTest, HitTestingStopsAtAParentThatDoesNotContainThePoint) {
    auto window = makeView<Window>({0, 0, 300, 300});
    auto parent = makeView({0, 0, 100, 100});
    auto outside = makeView({120, 120, 20, 20});  // drawn outside its parent
    window->addSubview(parent);
    parent->addSubview(outside);
    EXPECT_EQ(window->hitTest({130, 130}, nullptr), window.get());
    EXPECT_EQ(window->hitTest({10, 10}, nullptr), parent.get());
}

TEST_F(ViewTest, HitTestingFollowsARotatedView) {
    auto window = makeView<Window>({0, 0, 300, 300});
    auto bar = makeView({100, 140, 100, 20});  // centre (150, 150)
    bar->setTransform(AffineTransform::rotation(kPi / 2));
    window->addSubview(bar);
    EXPECT_EQ(window->hitTest({150, 110}, nullptr), bar.get());
    EXPECT_EQ(window->hitTest({110, 150}, nullptr), window.get());
}

// --- Hierarchy ------------------------------------------------------------------------------

TEST_F(ViewTest, SubviewOrderOperations) {
    auto parent = makeView({0, 0, 100, 100});
    auto a = makeView(), b = makeView(), c = makeView(), d = makeView();
    parent->addSubview(a);
    parent->addSubview(b);
    parent->addSubview(c);
    EXPECT_EQ(order(*parent), (std::vector<const View*>{a.get(), b.get(), c.get()}));

    parent->bringSubviewToFront(a.get());
    EXPECT_EQ(order(*parent), (std::vector<const View*>{b.get(), c.get(), a.get()}));
    parent->sendSubviewToBack(c.get());
    EXPECT_EQ(order(*parent), (std::vector<const View*>{c.get(), b.get(), a.get()}));
    parent->insertSubviewBelow(d, b.get());
    EXPECT_EQ(order(*parent), (std::vector<const View*>{c.get(), d.get(), b.get(), a.get()}));
    parent->insertSubviewAbove(c, a.get());  // a move within the same parent
    EXPECT_EQ(order(*parent), (std::vector<const View*>{d.get(), b.get(), a.get(), c.get()}));
    parent->insertSubview(c, 0);
    EXPECT_EQ(order(*parent), (std::vector<const View*>{c.get(), d.get(), b.get(), a.get()}));
    parent->addSubview(d);  // adding a subview again brings it to the front
    EXPECT_EQ(order(*parent), (std::vector<const View*>{c.get(), b.get(), a.get(), d.get()}));

    auto other = makeView();
    other->addSubview(b);
    EXPECT_EQ(b->superview(), other.get());
    EXPECT_EQ(order(*parent), (std::vector<const View*>{c.get(), a.get(), d.get()}));
    a->removeFromSuperview();
    EXPECT_EQ(a->superview(), nullptr);
    EXPECT_EQ(order(*parent), (std::vector<const View*>{c.get(), d.get()}));

    parent->addSubview(parent);  // never a cycle
    c->addSubview(parent);
    EXPECT_EQ(parent->superview(), nullptr);
    EXPECT_TRUE(c->isDescendantOfView(parent.get()));
    EXPECT_FALSE(parent->isDescendantOfView(c.get()));
}

TEST_F(ViewTest, FindsViewsByTag) {
    auto parent = makeView();
    auto child = makeView();
    auto grandchild = makeView();
    grandchild->setTag(7);
    parent->addSubview(child);
    child->addSubview(grandchild);
    EXPECT_EQ(parent->viewWithTag(7), grandchild);
    EXPECT_EQ(parent->viewWithTag(0), parent);
    EXPECT_EQ(parent->viewWithTag(8), nullptr);
}

TEST_F(ViewTest, MovesToAndFromWindowsWithTheirHooks) {
    std::vector<std::string> log;
    auto window = makeView<Window>({0, 0, 100, 100});
    auto parent = recording("parent", &log);
    auto child = recording("child", &log);
    parent->addSubview(child);
    EXPECT_EQ(log,
              (std::vector<std::string>{"child.willMoveToSuperview", "child.didMoveToSuperview"}));
    EXPECT_EQ(child->window(), nullptr);

    log.clear();
    window->addSubview(parent);
    EXPECT_EQ(child->window(), window.get());
    EXPECT_EQ(log,
              (std::vector<std::string>{"parent.willMoveToSuperview", "parent.willMoveToWindow",
                                        "child.willMoveToWindow", "child.didMoveToWindow",
                                        "parent.didMoveToWindow", "parent.didMoveToSuperview"}));

    log.clear();
    parent->removeFromSuperview();
    EXPECT_EQ(child->window(), nullptr);
    EXPECT_EQ(log,
              (std::vector<std::string>{"parent.willMoveToNil", "parent.willLeaveWindow",
                                        "child.willLeaveWindow", "child.didMoveToWindow",
                                        "parent.didMoveToWindow", "parent.didMoveToSuperview"}));
    EXPECT_EQ(window->window(), window.get());
}

TEST_F(ViewTest, ASubviewOutlivingItsParentForgetsIt) {
    auto child = makeView();
    {
        auto parent = makeView();
        parent->addSubview(child);
    }
    EXPECT_EQ(child->superview(), nullptr);
}

// --- Layout ---------------------------------------------------------------------------------

TEST_F(ViewTest, LayoutRunsOnlyWhereNeeded) {
    auto parent = recording("parent", nullptr, {0, 0, 100, 100});
    auto child = recording("child", nullptr, {0, 0, 10, 10});
    parent->addSubview(child);
    parent->layoutIfNeeded();
    EXPECT_EQ(parent->layouts, 1);  // a new view lays out once
    EXPECT_EQ(child->layouts, 1);
    parent->layoutIfNeeded();
    EXPECT_EQ(parent->layouts, 1);

    parent->setCenter({70, 70});
    parent->setBounds({5, 5, 100, 100});  // same size elsewhere: nothing to lay out
    parent->layoutIfNeeded();
    EXPECT_EQ(parent->layouts, 1);

    parent->setBounds({0, 0, 120, 100});
    child->setNeedsLayout();
    parent->layoutIfNeeded();
    EXPECT_EQ(parent->layouts, 2);
    EXPECT_EQ(child->layouts, 2);
}

TEST_F(ViewTest, AWindowLaysItselfOutOnTheNextTurn) {
    auto window = makeView<Window>({0, 0, 100, 100});
    auto view = recording("view", nullptr, {0, 0, 10, 10});
    window->addSubview(view);
    runPending();
    EXPECT_EQ(view->layouts, 1);
    view->setNeedsLayout();
    view->setNeedsLayout();
    EXPECT_EQ(view->layouts, 1);
    runPending();
    EXPECT_EQ(view->layouts, 2);
    EXPECT_FALSE(view->needsLayout());
}

TEST_F(ViewTest, AutoresizingSharesTheChangeAmongFlexibleParts) {
    auto parent = makeView({0, 0, 100, 100});
    auto fill = makeView({10, 10, 80, 80});
    fill->setAutoresizingMask(AutoresizingFlexibleWidth | AutoresizingFlexibleHeight);
    auto pinnedRight = makeView({70, 10, 20, 20});
    pinnedRight->setAutoresizingMask(AutoresizingFlexibleLeftMargin);
    auto floating = makeView({10, 0, 20, 20});
    floating->setAutoresizingMask(AutoresizingFlexibleLeftMargin | AutoresizingFlexibleRightMargin);
    auto fixed = makeView({10, 10, 20, 20});
    for (const auto& v : {fill, pinnedRight, floating, fixed}) parent->addSubview(v);

    parent->setBounds({0, 0, 200, 150});
    EXPECT_EQ(fill->frame(), Rect(10, 10, 180, 130));
    EXPECT_EQ(pinnedRight->frame(), Rect(170, 10, 20, 20));
    // Margins 10 and 70 share 100 points as 1 : 7.
    EXPECT_EQ(floating->frame(), Rect(22.5, 0, 20, 20));
    EXPECT_EQ(fixed->frame(), Rect(10, 10, 20, 20));

    parent->setAutoresizesSubviews(false);
    parent->setBounds({0, 0, 100, 100});
    EXPECT_EQ(fill->frame(), Rect(10, 10, 180, 130));
}

TEST_F(ViewTest, SizeToFitKeepsTheOrigin) {
    auto v = makeView<FixedSizeView>({5, 6, 10, 10});
    v->sizeToFit();
    EXPECT_EQ(v->frame(), Rect(5, 6, 30, 40));
}

}  // namespace
}  // namespace orv::ui::test
