#include "platform/ui/ViewController.h"

#include <gtest/gtest.h>

#include "tests/platform/ui/ControllerTestSupport.h"

namespace orv::ui::test {
namespace {

using Lines = std::vector<std::string>;

// --- View loading -------------------------------------------------------------------------

TEST_F(ControllerTest, ViewLoadsOnFirstUseOnceAndAgainAfterUnloading) {
    auto c = make("c");
    EXPECT_FALSE(c->isViewLoaded());
    EXPECT_EQ(c->viewIfLoaded(), nullptr);
    EXPECT_EQ(c->loads, 0);

    View* first = c->view().get();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(c->view().get(), first);
    EXPECT_EQ(c->loads, 1);
    EXPECT_EQ(first->frame(), Screen::main().bounds());
    EXPECT_EQ(first->viewController(), c.get());

    View::Ptr old = c->viewIfLoaded();
    c->setView(nullptr);
    EXPECT_FALSE(c->isViewLoaded());
    EXPECT_EQ(old->viewController(), nullptr);
    c->view();
    EXPECT_EQ(c->loads, 2);
}

class CustomViewController : public ViewController {
    ORV_DECLARE_CLASS(CustomViewController)
  public:
    void loadView() override { setView(makeView<View>(gfx::Rect(0, 0, 10, 20))); }
};
ORV_DEFINE_CLASS(CustomViewController, ViewController)

TEST_F(ControllerTest, LoadViewOverrideSuppliesTheRootView) {
    auto c = ViewController::controller<CustomViewController>();
    EXPECT_EQ(c->view()->frame(), gfx::Rect(0, 0, 10, 20));
    EXPECT_EQ(c->view()->viewController(), c.get());
}

TEST_F(ControllerTest, ResponderChainRunsFromRootViewThroughControllerToSuperview) {
    View* rootView = root->view().get();
    EXPECT_EQ(rootView->nextResponder(), root.get());
    EXPECT_EQ(root->nextResponder(), window.get());
}

TEST_F(ControllerTest, TitleIsSharedWithTheNavigationItem) {
    auto c = make("c");
    c->setTitle("abc");
    EXPECT_EQ(c->navigationItem()->title(), "abc");
    c->setTitle(std::nullopt);
    EXPECT_EQ(c->navigationItem()->title(), std::nullopt);
    EXPECT_EQ(c->navigationItem(), c->navigationItem());
}

TEST_F(ControllerTest, ContainmentLinksParentAndChild) {
    auto child = make("child");
    std::weak_ptr<ViewController> weakChild = child;
    root->addChildViewController(child);
    EXPECT_EQ(child->parentViewController(), root.get());
    ASSERT_EQ(root->childViewControllers().size(), 1u);
    EXPECT_EQ(child->navigationController(), nullptr);

    child->removeFromParentViewController();
    EXPECT_EQ(child->parentViewController(), nullptr);
    EXPECT_TRUE(root->childViewControllers().empty());
    child.reset();
    rt::RunLoop::main().runPending();
    EXPECT_TRUE(weakChild.expired());
}

class StatusBarHidingController : public ViewController {
    ORV_DECLARE_CLASS(StatusBarHidingController)
  public:
    bool prefersStatusBarHidden() const override { return true; }
};
ORV_DEFINE_CLASS(StatusBarHidingController, ViewController)

TEST_F(ControllerTest, StatusBarFollowsTheDecidingController) {
    root->setNeedsStatusBarAppearanceUpdate();
    EXPECT_FALSE(Application::shared().isStatusBarHidden());

    auto nav = NavigationController::withRootViewController(
        ViewController::controller<StatusBarHidingController>());
    nav->setNeedsStatusBarAppearanceUpdate();
    EXPECT_TRUE(Application::shared().isStatusBarHidden());
}

// --- Presentation -------------------------------------------------------------------------

TEST_F(ControllerTest, AnimatedPresentationCallsInOrderAndCompletesAfterTheTransition) {
    auto modal = make("modal");
    bool completed = false;
    root->presentViewController(modal, true, [&] { completed = true; });

    EXPECT_EQ(takeLog(), (Lines{"modal.load", "root.willDisappear", "modal.willAppear"}));
    EXPECT_EQ(root->presentedViewController(), modal);
    EXPECT_EQ(modal->presentingViewController(), root.get());
    EXPECT_EQ(window->subviews().back(), modal->view());
    EXPECT_EQ(modal->view()->frame(), window->bounds());

    rt::RunLoop::main().runFor(ViewController::kTransitionDuration / 2);
    EXPECT_FALSE(completed);
    EXPECT_TRUE(log->empty());
    settle();
    EXPECT_TRUE(completed);
    EXPECT_EQ(takeLog(), (Lines{"root.didDisappear", "modal.didAppear"}));
    EXPECT_TRUE(modal->isAppeared());
    EXPECT_FALSE(root->isAppeared());
}

TEST_F(ControllerTest, UnanimatedPresentationFinishesBeforeReturning) {
    auto modal = make("modal");
    bool completed = false;
    root->presentViewController(modal, false, [&] { completed = true; });
    EXPECT_TRUE(completed);
    EXPECT_EQ(takeLog(), (Lines{"modal.load", "root.willDisappear", "modal.willAppear",
                                "root.didDisappear", "modal.didAppear"}));
}

TEST_F(ControllerTest, DismissalCallsInOrderRemovesTheViewAndReleasesLater) {
    auto modal = make("modal");
    root->presentViewController(modal, false, nullptr);
    log->clear();
    std::weak_ptr<ViewController> weakModal = modal;
    View* modalView = modal->view().get();
    bool completed = false;

    modal->dismissViewControllerAnimated(true, [&] { completed = true; });
    modal.reset();
    EXPECT_EQ(takeLog(), (Lines{"modal.willDisappear", "root.willAppear"}));
    EXPECT_EQ(root->presentedViewController(), nullptr);
    EXPECT_FALSE(completed);
    EXPECT_FALSE(weakModal.expired());

    settle();
    EXPECT_TRUE(completed);
    EXPECT_EQ(takeLog(), (Lines{"modal.didDisappear", "root.didAppear"}));
    EXPECT_TRUE(weakModal.expired());
    for (const auto& v : window->subviews()) EXPECT_NE(v.get(), modalView);
}

TEST_F(ControllerTest, UnanimatedDismissalKeepsTheControllerUntilTheLoopTurns) {
    auto modal = make("modal");
    std::weak_ptr<ViewController> weakModal = modal;
    root->presentViewController(modal, false, nullptr);
    modal.reset();
    log->clear();

    // The presenter dismisses here; a controller dismissing itself needs the same grace.
    root->dismissModalViewControllerAnimated(false);
    EXPECT_EQ(takeLog(), (Lines{"modal.willDisappear", "root.willAppear", "modal.didDisappear",
                                "root.didAppear"}));
    EXPECT_FALSE(weakModal.expired());
    rt::RunLoop::main().runPending();
    EXPECT_TRUE(weakModal.expired());
}

TEST_F(ControllerTest, OnlyOnePresentationAtATimeFromAScreen) {
    auto first = make("first");
    auto second = make("second");
    root->presentViewController(first, false, nullptr);
    bool completed = false;
    root->presentViewController(second, false, [&] { completed = true; });
    EXPECT_FALSE(completed);
    EXPECT_EQ(root->presentedViewController(), first);
    EXPECT_FALSE(second->isViewLoaded());
}

TEST_F(ControllerTest, DismissWithNothingPresentedOnlyRunsTheCompletion) {
    bool completed = false;
    root->dismissViewControllerAnimated(true, [&] { completed = true; });
    EXPECT_TRUE(completed);
    EXPECT_TRUE(log->empty());
}

TEST_F(ControllerTest, DismissingAPresenterTakesDownEverythingAboveIt) {
    auto middle = make("middle");
    auto top = make("top");
    std::weak_ptr<ViewController> weakTop = top;
    root->presentViewController(middle, false, nullptr);
    middle->presentViewController(top, false, nullptr);
    EXPECT_EQ(top->presentingViewController(), middle.get());
    top.reset();
    log->clear();

    root->dismissViewControllerAnimated(false, nullptr);
    // The middle screen was already hidden, so only the top one says goodbye.
    EXPECT_EQ(takeLog(), (Lines{"top.willDisappear", "root.willAppear", "top.didDisappear",
                                "root.didAppear"}));
    EXPECT_EQ(middle->presentedViewController(), nullptr);
    EXPECT_EQ(middle->presentingViewController(), nullptr);
    rt::RunLoop::main().runPending();
    EXPECT_TRUE(weakTop.expired());
}

TEST_F(ControllerTest, AChildOfAPresentedNavigationControllerDismissesTheContainer) {
    auto inner = make("inner");
    std::weak_ptr<ViewController> weakInner = inner;
    auto nav = NavigationController::withRootViewController(inner);
    std::weak_ptr<ViewController> weakNav = nav;
    root->presentViewController(nav, true, nullptr);
    EXPECT_EQ(takeLog(), (Lines{"inner.load", "root.willDisappear", "inner.willAppear"}));
    settle();
    EXPECT_EQ(takeLog(), (Lines{"root.didDisappear", "inner.didAppear"}));
    EXPECT_EQ(inner->presentingViewController(), root.get());
    EXPECT_EQ(inner->presentedViewController(), nullptr);
    nav.reset();

    inner->dismissModalViewControllerAnimated(true);
    inner.reset();
    EXPECT_EQ(takeLog(), (Lines{"inner.willDisappear", "root.willAppear"}));
    EXPECT_EQ(root->presentedViewController(), nullptr);
    settle();
    EXPECT_EQ(takeLog(), (Lines{"inner.didDisappear", "root.didAppear"}));
    EXPECT_TRUE(weakNav.expired());
    EXPECT_TRUE(weakInner.expired());
}

TEST_F(ControllerTest, PresentingFromAChildPresentsFromItsScreen) {
    auto inner = make("inner");
    auto nav = NavigationController::withRootViewController(inner);
    window->setRootViewController(nav);
    auto modal = make("modal");
    inner->presentViewController(modal, false, nullptr);
    EXPECT_EQ(modal->presentingViewController(), nav.get());
    EXPECT_EQ(nav->presentedViewController(), modal);
    EXPECT_EQ(inner->presentedViewController(), modal);
    EXPECT_EQ(nav->visibleViewController(), modal);
}

TEST_F(ControllerTest, AReleasedPresenterTakesItsPresentedScreenAlong) {
    auto presenter = make("presenter");  // never on screen: presents into the key window
    auto modal = make("modal");
    std::weak_ptr<ViewController> weakModal = modal;
    presenter->presentViewController(modal, false, nullptr);
    View::Ptr modalView = modal->view();
    EXPECT_EQ(modalView->window(), window.get());
    modal.reset();

    presenter.reset();
    EXPECT_TRUE(weakModal.expired());
    EXPECT_EQ(modalView->superview(), nullptr);
}

}  // namespace
}  // namespace orv::ui::test
