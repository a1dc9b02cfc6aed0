#pragma once
// A visible key window on the main loop's manual clock, for scenario tests of screens.

#include <gtest/gtest.h>

#include <memory>

#include "platform/rt/RunLoop.h"
#include "platform/ui/Application.h"
#include "platform/ui/Screen.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"

namespace orv::test {

class ScreenFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        ui::Application::resetShared();
        ui::Screen::main().setBounds({0, 0, 375, 667});
        ui::Screen::main().setScale(2);
        window = ui::makeView<ui::Window>(ui::Screen::main().bounds());
    }

    void TearDown() override {
        settle();
        window.reset();
        ui::Application::resetShared();
        settle();
    }

    // Shows the controller as the window's root.
    void showRoot(const std::shared_ptr<ui::ViewController>& controller) {
        window->setRootViewController(controller);
        window->makeKeyAndVisible();
        settle();
    }

    // Lets animated transitions finish and deferred work run.
    static void settle(double seconds = 0.35) { rt::RunLoop::main().runFor(seconds); }

    std::shared_ptr<ui::Window> window;
};

}  // namespace orv::test
