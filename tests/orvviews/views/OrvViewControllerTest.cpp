#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "frameworks/core/OrvResult.h"
#include "orvviews/views/OrvNavigationController.h"
#include "orvviews/views/OrvViewController.h"
#include "orvviews/widgets/OrvComponentsViewController.h"
#include "orvviews/widgets/OrvEditComponent.h"
#include "platform/rt/Error.h"
#include "platform/ui/Application.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Layer.h"
#include "platform/ui/NavigationItem.h"
#include "platform/ui/TransitionAnimation.h"
#include "tests/support/ScreenFixture.h"

namespace {

using orv::test::ScreenFixture;

struct DestroyLog {
    int willDestroy = 0;
    int viewWillDestroy = 0;
};

class TrackedView : public ui::View {
  public:
    std::shared_ptr<DestroyLog> log;
    void viewWillDestory() override { ++log->viewWillDestroy; }
};

class TrackedController : public OrvComponentsViewController {
  public:
    std::shared_ptr<DestroyLog> log = std::make_shared<DestroyLog>();
    int built = 0;
    void loadView() override {
        auto v = ui::makeView<TrackedView>(ui::Screen::main().bounds());
        v->log = log;
        setView(v);
    }
    void buildDefaultStyleView() override { ++built; }
    void controllerWillDestory() override { ++log->willDestroy; }
};

class OrvViewControllerTest : public ScreenFixture {};

TEST_F(OrvViewControllerTest, BackButtonTitleFollowsTheTitleLength) {
    auto controller = orv::rt::make<OrvViewController>();
    controller->setTitle("三个字");
    controller->setBackButton();
    EXPECT_EQ(controller->navigationItem()->backBarButtonItem()->title(), "三个字");

    controller->setTitle("Four");
    controller->setBackButton();
    EXPECT_EQ(controller->navigationItem()->backBarButtonItem()->title(), "返回");

    controller->setTitle(std::nullopt);
    controller->setBackButton();
    EXPECT_EQ(controller->navigationItem()->backBarButtonItem()->title(), "返回");
}

TEST_F(OrvViewControllerTest, CancelButtonDismisses) {
    showRoot(orv::rt::make<OrvViewController>());
    auto shown = orv::rt::make<OrvViewController>();
    window->rootViewController()->presentViewController(shown, false, nullptr);
    shown->orvSetNavLeftCancelButton();
    auto item = shown->navigationItem()->leftBarButtonItem();
    EXPECT_EQ(item->title(), "取消");
    EXPECT_TRUE(item->perform());
    settle();
    EXPECT_TRUE(shown->isBacked);
    EXPECT_EQ(window->rootViewController()->presentedViewController(), nullptr);
}

TEST_F(OrvViewControllerTest, StatusBarHiddenOnAppearance) {
    auto root = orv::rt::make<OrvViewController>();
    showRoot(root);
    EXPECT_TRUE(ui::Application::shared().isStatusBarHidden());
    EXPECT_TRUE(root->prefersStatusBarHidden());
}

TEST_F(OrvViewControllerTest, BackActionPopsOrDismissesByStackSize) {
    showRoot(orv::rt::make<OrvViewController>());
    auto first = orv::rt::make<OrvViewController>();
    orvPresentModalNavigationController(*window->rootViewController(), first, false);
    settle();
    auto* navigation = first->navigationController();
    ASSERT_TRUE(navigation);
    EXPECT_TRUE(navigation->isNavigationBarHidden());  // hidden by the screen as it appears

    auto second = orv::rt::make<OrvViewController>();
    orvPushViewController(*first, second, false);
    EXPECT_EQ(orvNavCount(*second), 2u);

    orvBackActionWithAnimated(*second, false);  // two on the stack: pops
    settle();
    EXPECT_EQ(orvNavCount(*first), 1u);
    EXPECT_TRUE(second->isBacked);

    orvBackActionWithAnimated(*first, false);  // one: dismisses the whole wrapper
    settle();
    EXPECT_EQ(window->rootViewController()->presentedViewController(), nullptr);

    auto lonely = orv::rt::make<OrvViewController>();
    EXPECT_EQ(orvNavCount(*lonely), 0u);
    orvBackActionWithAnimated(*lonely, false);  // nothing to pop from, nothing breaks
    EXPECT_EQ(orvPopViewControllerAnimated(*lonely, false), nullptr);
}

TEST_F(OrvViewControllerTest, LeavingWithATransitionAnimatesTheWindow) {
    showRoot(orv::rt::make<OrvViewController>());
    auto first = orv::rt::make<OrvViewController>();
    orvPresentModalNavigationController(*window->rootViewController(), first,
                                        orv::rt::make<ui::TransitionAnimation>());
    EXPECT_TRUE(window->layer().animationForKey("inanim"));
    settle();

    // A transAnim without outTran leaves plainly.
    first->setTransAnim(orv::rt::make<OrvKitTSCControllerTrans>());
    auto second = orv::rt::make<OrvViewController>();
    orvPushViewController(*first, second, false);
    second->setTransAnim(first->transAnim());
    window->layer().removeAllAnimations();
    orvPopViewControllerAnimated(*second, false);
    EXPECT_FALSE(window->layer().animationForKey("outanim"));
    settle();

    auto third = orv::rt::make<OrvViewController>();
    orvPushViewController(*first, third, false);
    auto trans = orv::rt::make<OrvKitTSCControllerTrans>();
    trans->setOutTran(orv::rt::make<ui::TransitionAnimation>());
    third->setTransAnim(trans);
    EXPECT_EQ(orvPopViewControllerAnimated(*third, true), third);
    EXPECT_EQ(window->layer().animationForKey("outanim"), trans->outTran());

    // A nil animation adds nothing and still goes back, unanimated.
    window->layer().removeAllAnimations();
    settle();
    orvBackActionWithAnim(*first, nullptr);
    EXPECT_TRUE(window->layer().animationKeys().empty());
    settle();
    EXPECT_EQ(window->rootViewController()->presentedViewController(), nullptr);
}

class RecordingDelegate : public orv::rt::Object, public OrvComponentErrorDelegate {
  public:
    std::atomic<int> calls{0};
    std::atomic<bool> onMain{false};
    std::shared_ptr<orv::rt::Error> error;
    void onComponent(const std::shared_ptr<ui::ViewController>&, const std::shared_ptr<OrvResult>&,
                     const std::shared_ptr<orv::rt::Error>& e) override {
        onMain = orv::rt::RunLoop::isMainThread();
        error = e;
        ++calls;
    }
};

TEST_F(OrvViewControllerTest, ErrorsFromAnyThreadReachTheDelegateOnTheMainThread) {
    auto controller = orv::rt::make<OrvComponentsViewController>();
    auto delegate = orv::rt::make<RecordingDelegate>();
    controller->setErrorDelegate(delegate);
    auto error = orv::rt::Error::errorWithDomain("test", 1011);

    std::thread([controller, error] { controller->notifyError(error, nullptr); }).join();
    EXPECT_EQ(delegate->calls, 0);
    ASSERT_TRUE(orv::rt::RunLoop::main().runUntil([&] { return delegate->calls > 0; }));
    EXPECT_TRUE(delegate->onMain);
    EXPECT_EQ(delegate->error, error);

    // Without a delegate the error goes nowhere.
    delegate.reset();
    controller->notifyError(error, nullptr);
}

TEST_F(OrvViewControllerTest, ViewBuildsOnceOnGrey) {
    auto controller = orv::rt::make<TrackedController>();
    controller->view();
    controller->view();
    EXPECT_EQ(controller->built, 1);
    EXPECT_EQ(controller->view()->backgroundColor(), gfx::Color::white(0.2));
}

TEST_F(OrvViewControllerTest, DestructionReachesEverySubclassHook) {
    showRoot(orv::rt::make<OrvViewController>());
    auto tool = orv::rt::make<TrackedController>();
    auto log = tool->log;
    tool->view();
    orvPresentModalNavigationController(*window->rootViewController(), tool, false);
    settle();
    std::weak_ptr<TrackedController> weak = tool;
    tool.reset();

    orvDismissModalViewControllerAnimated(*window->rootViewController()->presentedViewController());
    settle();
    settle();
    EXPECT_TRUE(weak.expired());
    // Once from the navigation container, once from the controller's own end.
    EXPECT_EQ(log->willDestroy, 2);
    EXPECT_EQ(log->viewWillDestroy, 1);
}

}  // namespace
