#pragma once
// Controllers that write their lifecycle calls into a shared log, and a fixture that puts a
// visible key window with a logging root controller on screen.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/rt/RunLoop.h"
#include "platform/ui/Application.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/Screen.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"

namespace orv::ui::test {

using Log = std::shared_ptr<std::vector<std::string>>;

class LoggingController : public ViewController {
    ORV_DECLARE_CLASS(LoggingController)
  public:
    static std::shared_ptr<LoggingController> named(const std::string& name, const Log& log);

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidDisappear(bool animated) override;

    std::string name;
    Log log;
    int loads = 0;

  private:
    void record(const std::string& what) const;
};

class ControllerTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Lets animated transitions finish and deferred releases happen.
    static void settle() { rt::RunLoop::main().runFor(ViewController::kTransitionDuration + 0.01); }
    std::shared_ptr<LoggingController> make(const std::string& name) {
        return LoggingController::named(name, log);
    }
    std::vector<std::string> takeLog();

    Log log = std::make_shared<std::vector<std::string>>();
    std::shared_ptr<Window> window;
    std::shared_ptr<LoggingController> root;
};

}  // namespace orv::ui::test
