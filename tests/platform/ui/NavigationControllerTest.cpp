#include "platform/ui/NavigationController.h"

#include <gtest/gtest.h>

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationBar.h"
#include "tests/platform/ui/ControllerTestSupport.h"

namespace orv::ui::test {
namespace {

using Lines = std::vector<std::string>;
using Stack = std::vector<ViewController::Ptr>;

// A navigation controller on screen as the window's root, over a logging root controller "a".
class NavigationControllerTest : public ControllerTest {
  protected:
    void SetUp() override {
        ControllerTest::SetUp();
        a = make("a");
        nav = NavigationController::withRootViewController(a);
        window->setRootViewController(nav);
        log->clear();
    }

    std::shared_ptr<LoggingController> a;
    std::shared_ptr<NavigationController> nav;
};

TEST_F(NavigationControllerTest, RootControllerFillsTheContainerAndKnowsIt) {
    EXPECT_EQ(nav->viewControllers(), Stack{a});
    EXPECT_EQ(nav->topViewController(), a);
    EXPECT_EQ(a->navigationController(), nav.get());
    EXPECT_EQ(a->parentViewController(), nav.get());
    EXPECT_EQ(a->view()->superview(), nav->view().get());
    EXPECT_EQ(a->view()->frame(), nav->view()->bounds());
    EXPECT_TRUE(a->isAppeared());

    auto grandchild = make("g");
    a->addChildViewController(grandchild);
    EXPECT_EQ(grandchild->navigationController(), nav.get());
}

TEST_F(NavigationControllerTest, AnimatedPushSwapsViewsAndCallsInOrder) {
    auto b = make("b");
    nav->pushViewController(b, true);
    EXPECT_EQ(takeLog(), (Lines{"b.load", "a.willDisappear", "b.willAppear"}));
    EXPECT_EQ(nav->topViewController(), b);
    EXPECT_EQ(b->view()->superview(), nav->view().get());
    EXPECT_EQ(b->view()->frame(), nav->view()->bounds());
    EXPECT_EQ(a->view()->superview(), nav->view().get());  // still there while sliding

    settle();
    EXPECT_EQ(takeLog(), (Lines{"a.didDisappear", "b.didAppear"}));
    EXPECT_EQ(a->view()->superview(), nullptr);
    EXPECT_EQ(nav->viewControllers(), (Stack{a, b}));

    nav->pushViewController(b, false);  // already on the stack
    nav->pushViewController(nullptr, false);
    EXPECT_EQ(nav->viewControllers().size(), 2u);
    EXPECT_TRUE(log->empty());
}

TEST_F(NavigationControllerTest, PopReturnsThePoppedControllerAndNullAtTheRoot) {
    auto b = make("b");
    nav->pushViewController(b, false);
    log->clear();
    std::weak_ptr<ViewController> weakB = b;
    b.reset();

    auto popped = nav->popViewControllerAnimated(false);
    EXPECT_EQ(popped, weakB.lock());
    EXPECT_EQ(takeLog(),
              (Lines{"b.willDisappear", "a.willAppear", "b.didDisappear", "a.didAppear"}));
    EXPECT_EQ(popped->parentViewController(), nullptr);
    EXPECT_EQ(popped->viewIfLoaded()->superview(), nullptr);
    EXPECT_EQ(a->view()->superview(), nav->view().get());
    popped.reset();
    EXPECT_FALSE(weakB.expired());  // held until the loop turns
    rt::RunLoop::main().runPending();
    EXPECT_TRUE(weakB.expired());

    EXPECT_EQ(nav->popViewControllerAnimated(true), nullptr);
    EXPECT_EQ(nav->viewControllers(), Stack{a});
    EXPECT_TRUE(log->empty());
}

TEST_F(NavigationControllerTest, AnimatedPopKeepsTheParentUntilTheTransitionEnds) {
    auto b = make("b");
    nav->pushViewController(b, false);
    log->clear();
    nav->popViewControllerAnimated(true);
    EXPECT_EQ(takeLog(), (Lines{"b.willDisappear", "a.willAppear"}));
    EXPECT_EQ(b->navigationController(), nav.get());
    EXPECT_EQ(nav->viewControllers(), Stack{a});
    settle();
    EXPECT_EQ(takeLog(), (Lines{"b.didDisappear", "a.didAppear"}));
    EXPECT_EQ(b->navigationController(), nullptr);
}

TEST_F(NavigationControllerTest, PopToReturnsWhatWasAboveBottomFirst) {
    auto b = make("b"), c = make("c"), d = make("d");
    nav->setViewControllers({a, b, c, d}, false);
    log->clear();

    EXPECT_EQ(nav->popToViewController(b, false), (Stack{c, d}));
    // Only the leaving top and the arriving controller hear about it.
    EXPECT_EQ(takeLog(), (Lines{"b.load", "d.willDisappear", "b.willAppear", "d.didDisappear",
                                "b.didAppear"}));
    EXPECT_EQ(c->parentViewController(), nullptr);
    EXPECT_EQ(nav->popToViewController(b, false), Stack{});
    EXPECT_EQ(nav->popToViewController(make("stranger"), false), Stack{});

    nav->pushViewController(c, false);
    EXPECT_EQ(nav->popToRootViewControllerAnimated(false), (Stack{b, c}));
    EXPECT_EQ(nav->viewControllers(), Stack{a});
    EXPECT_EQ(nav->popToRootViewControllerAnimated(false), Stack{});
}

TEST_F(NavigationControllerTest, SetViewControllersReplacesTheStackAndTakesFromOtherParents) {
    auto b = make("b"), c = make("c");
    auto other = NavigationController::withRootViewController(c);
    nav->setViewControllers({b, c, b, nullptr}, false);
    EXPECT_EQ(nav->viewControllers(), (Stack{b, c}));
    EXPECT_TRUE(other->viewControllers().empty());
    EXPECT_EQ(c->navigationController(), nav.get());
    EXPECT_EQ(a->parentViewController(), nullptr);
    EXPECT_EQ(a->viewIfLoaded()->superview(), nullptr);
    EXPECT_EQ(takeLog(), (Lines{"c.load", "a.willDisappear", "c.willAppear", "a.didDisappear",
                                "c.didAppear"}));
}

TEST_F(NavigationControllerTest, RemovingTheTopBehindTheStacksBackShowsTheNextOne) {
    auto b = make("b");
    nav->pushViewController(b, false);
    b->removeFromParentViewController();
    EXPECT_EQ(nav->viewControllers(), Stack{a});
    EXPECT_EQ(b->viewIfLoaded()->superview(), nullptr);
    EXPECT_EQ(a->view()->superview(), nav->view().get());
    EXPECT_EQ(nav->navigationBar()->topItem(), a->navigationItem());
}

TEST_F(NavigationControllerTest, OffScreenStackChangesAreSilentUntilTheContainerAppears) {
    auto b = make("b"), c = make("c");
    auto offscreen = NavigationController::withRootViewController(b);
    offscreen->pushViewController(c, true);
    EXPECT_TRUE(log->empty());
    EXPECT_FALSE(c->isViewLoaded());

    nav->pushViewController(offscreen, false);
    EXPECT_EQ(takeLog(), (Lines{"c.load", "a.willDisappear", "c.willAppear", "a.didDisappear",
                                "c.didAppear"}));
    EXPECT_FALSE(b->isViewLoaded());
}

TEST_F(NavigationControllerTest, NavigationBarShowsTheTopItemAndAFlagHidesIt) {
    NavigationBar* bar = nav->navigationBar();
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->frame().size.height, NavigationController::kNavigationBarHeight);
    EXPECT_FALSE(bar->leftButton());

    a->setTitle("abc");
    auto b = make("b");
    nav->pushViewController(b, false);
    EXPECT_EQ(bar->topItem(), b->navigationItem());
    auto left = bar->leftButton();
    ASSERT_TRUE(left);
    EXPECT_EQ(left->item, nullptr);
    EXPECT_NE(left->title.find("abc"), std::string::npos);

    auto done = BarButtonItem::itemWithTitle("Done", BarButtonItemStylePlain, nullptr, [] {});
    b->navigationItem()->setRightBarButtonItem(done);
    auto right = bar->rightButton();
    ASSERT_TRUE(right);
    EXPECT_EQ(right->item, done);
    EXPECT_NEAR(gfx::rectGetMaxX(right->frame) + 8, bar->bounds().size.width, 1e-9);

    EXPECT_FALSE(nav->isNavigationBarHidden());
    nav->setNavigationBarHidden(true, false);
    EXPECT_TRUE(nav->isNavigationBarHidden());
    EXPECT_TRUE(bar->isHidden());
    EXPECT_EQ(b->view()->frame(), nav->view()->bounds());
}

// A container whose own dealloc talks to its children, as a subclass may.
class ReportingNavigationController : public NavigationController {
    ORV_DECLARE_CLASS(ReportingNavigationController)
  public:
    void dealloc() override {
        for (const auto& child : viewControllers()) {
            if (child->navigationController() == this) reached->push_back(child.get());
        }
        setViewControllers({}, false);
        NavigationController::dealloc();
    }
    std::shared_ptr<std::vector<ViewController*>> reached =
        std::make_shared<std::vector<ViewController*>>();
};
ORV_DEFINE_CLASS(ReportingNavigationController, NavigationController)

TEST_F(NavigationControllerTest, SubclassDeallocStillReachesItsChildren) {
    auto b = make("b"), c = make("c");
    std::weak_ptr<ViewController> weakB = b, weakC = c;
    auto container = rt::makeWith<ReportingNavigationController>(
        [&](ReportingNavigationController& n) { n.initWithRootViewController(b); });
    container->pushViewController(c, false);
    container->view();
    auto reached = container->reached;
    b.reset();
    c.reset();

    container.reset();
    ASSERT_EQ(reached->size(), 2u);
    rt::RunLoop::main().runPending();
    EXPECT_TRUE(weakB.expired());
    EXPECT_TRUE(weakC.expired());
}

// --- Bar button items -----------------------------------------------------------------------

TEST(BarButtonItemTest, ActionRunsOnlyWhileItsTargetLives) {
    int runs = 0;
    auto target = rt::make<rt::Object>();
    auto item =
        BarButtonItem::itemWithTitle("Cancel", BarButtonItemStylePlain, target, [&] { ++runs; });
    EXPECT_TRUE(item->perform());
    target.reset();
    EXPECT_FALSE(item->perform());
    EXPECT_EQ(runs, 1);

    auto untargeted = BarButtonItem::itemWithTitle("x", 0, nullptr, [&] { ++runs; });
    EXPECT_TRUE(untargeted->perform());
    untargeted->setEnabled(false);
    EXPECT_FALSE(untargeted->perform());
    EXPECT_EQ(runs, 2);
}

TEST(BarButtonItemTest, TitleAttributesArePerState) {
    auto item = BarButtonItem::itemWithTitle(std::nullopt, 0, nullptr, nullptr);
    EXPECT_EQ(item->title(), std::nullopt);
    EXPECT_FALSE(item->perform());
    item->setTitleTextAttributes({gfx::Color::red(), std::nullopt}, 0);
    EXPECT_EQ(item->titleTextAttributes(0).foregroundColor, gfx::Color::red());
    EXPECT_EQ(item->titleTextAttributes(1), BarButtonItem::TitleAttributes{});
}

}  // namespace
}  // namespace orv::ui::test
