#include "tests/platform/ui/ControllerTestSupport.h"

namespace orv::ui::test {

ORV_DEFINE_CLASS(LoggingController, ViewController)

std::shared_ptr<LoggingController> LoggingController::named(const std::string& name,
                                                            const Log& log) {
    auto controller = rt::make<LoggingController>();
    controller->name = name;
    controller->log = log;
    return controller;
}

void LoggingController::record(const std::string& what) const {
    if (log) log->push_back(name + "." + what);
}

void LoggingController::viewDidLoad() {
    ViewController::viewDidLoad();
    ++loads;
    record("load");
}

void LoggingController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    record("willAppear");
}

void LoggingController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    record("didAppear");
}

void LoggingController::viewWillDisappear(bool animated) {
    ViewController::viewWillDisappear(animated);
    record("willDisappear");
}

void LoggingController::viewDidDisappear(bool animated) {
    ViewController::viewDidDisappear(animated);
    record("didDisappear");
}

void ControllerTest::SetUp() {
    Application::resetShared();
    Screen::resetMain();
    window = rt::make<Window>();
    root = make("root");
    window->setRootViewController(root);
    window->makeKeyAndVisible();
    log->clear();
}

void ControllerTest::TearDown() {
    settle();
    Application::resetShared();
    window.reset();
    root.reset();
    rt::RunLoop::main().runPending();
}

std::vector<std::string> ControllerTest::takeLog() {
    std::vector<std::string> taken;
    taken.swap(*log);
    return taken;
}

}  // namespace orv::ui::test
