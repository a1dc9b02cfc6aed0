#include "platform/ui/Window.h"

#include <gtest/gtest.h>

#include "platform/ui/Application.h"
#include "platform/ui/Screen.h"
#include "platform/ui/ViewController.h"
#include "tests/platform/ui/ViewTestSupport.h"

namespace orv::ui::test {
namespace {

TEST_F(ViewTest, AWindowShowsItsRootControllersViewFillingIt) {
    Screen::main().setBounds({0, 0, 320, 480});
    auto window = rt::make<Window>();
    EXPECT_EQ(window->bounds(), gfx::Rect(0, 0, 320, 480));
    EXPECT_EQ(window->window(), window.get());

    auto overlay = makeView({0, 0, 10, 10});
    window->addSubview(overlay);
    auto first = rt::make<ViewController>();
    window->setRootViewController(first);
    ASSERT_EQ(window->subviews().front(), first->view());  // below what was there
    EXPECT_EQ(first->view()->frame(), window->bounds());
    EXPECT_EQ(first->view()->window(), window.get());

    auto second = rt::make<ViewController>();
    window->setRootViewController(second);
    EXPECT_EQ(first->view()->superview(), nullptr);
    EXPECT_EQ(window->subviews().front(), second->view());
    EXPECT_EQ(window->rootViewController(), second);

    EXPECT_FALSE(window->isKeyWindow());
    window->makeKeyAndVisible();
    EXPECT_TRUE(window->isKeyWindow());
    EXPECT_TRUE(second->isAppeared());
    EXPECT_EQ(Application::shared().keyWindow(), window);
}

TEST_F(ViewTest, TheApplicationsHeadlessDefaults) {
    Application& app = Application::shared();
    EXPECT_EQ(app.statusBarFrame().size.height, 20);
    app.setStatusBarHidden(true, StatusBarAnimationNone);
    EXPECT_EQ(app.statusBarFrame().size.height, 0);
    EXPECT_EQ(app.keyboardHeight(), 0);
    EXPECT_FALSE(app.isDeviceIPhoneX());
    EXPECT_GE(app.systemVersion(), 8);

    app.setKeyboardHeight(216);
    Application::resetShared();
    EXPECT_EQ(Application::shared().keyboardHeight(), 0);
    EXPECT_FALSE(Application::shared().isStatusBarHidden());

    EXPECT_EQ(Screen::main().scale(), 2);
    EXPECT_EQ(Screen::main().sizeInPixels(), gfx::Size(750, 1334));
}

}  // namespace
}  // namespace orv::ui::test
