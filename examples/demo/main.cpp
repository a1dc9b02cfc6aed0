// The demo application: runs the hub demo flow as a user would, on a stepped clock, and writes
// a picture of each screen state.
//
//     orv-demo [--out <folder>]

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "examples/orvdemo/HubDemoComponent.h"
#include "examples/orvdemo/HubDemoOptions.h"
#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvResult.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "orvviews/views/OrvViewController.h"
#include "platform/rt/Error.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Button.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/Label.h"
#include "platform/ui/Renderer.h"
#include "platform/ui/Screen.h"
#include "platform/ui/Window.h"

namespace {

// The application's own first screen, from which the flow starts.
class HomeController : public OrvViewController {
  public:
    void viewDidLoad() override {
        OrvViewController::viewDidLoad();
        view()->setBackgroundColor(gfx::Color::rgb(0.95, 0.95, 0.97));
        auto label = ui::makeView<ui::Label>({20, 280, view()->bounds().size.width - 40, 60});
        label->setText("相册 · Home");
        label->setFont(gfx::Font::boldSystemFont(24));
        label->setTextColor(gfx::Color::rgb(0.2, 0.2, 0.25));
        label->setTextAlignment(gfx::TextAlignment::Center);
        view()->addSubview(label);
    }
};

class Session {
  public:
    explicit Session(std::filesystem::path out) : out_(std::move(out)) {}

    void shoot(const std::string& name) {
        loop().runPending();
        const auto path = out_ / (std::to_string(++shots_) + "-" + name + ".png");
        if (ui::Renderer::writePNG(*window_, path.string())) {
            std::printf("  %s\n", path.c_str());
        } else {
            std::printf("  could not write %s\n", path.c_str());
            failed_ = true;
        }
    }

    int run() {
        std::filesystem::create_directories(out_);
        loop().setClock(std::make_shared<rt::ManualClock>());
        ui::Screen::main().setBounds({0, 0, 375, 667});
        ui::Screen::main().setScale(2);

        window_ = ui::makeView<ui::Window>(ui::Screen::main().bounds());
        auto home = orv::rt::make<HomeController>();
        window_->setRootViewController(home);
        window_->makeKeyAndVisible();
        loop().runFor(0.1);
        std::printf("OrvViews demo: screens written to %s\n", out_.c_str());
        shoot("home");

        // The application makes an option set and a component, and shows it.
        bool called = false;
        auto options = OrvOptions::build<orvdemo::HubDemoOptions>();
        auto component = OrvEditComponent::initWithSourceController<orvdemo::HubDemoComponent>(
            home.get(), [&called](const std::shared_ptr<OrvResult>& result,
                                  const std::shared_ptr<rt::Error>& error,
                                  const std::shared_ptr<ui::ViewController>& controller) {
                called = true;
                std::printf("callback: result %s, error %s, controller %s\n",
                            result ? "yes" : "none", error ? error->description().c_str() : "none",
                            controller ? controller->description().c_str() : "none");
            });
        component->setOptions(options);
        component->setAutoDismissWhenCompelted(true);
        component->showComponent();
        loop().runFor(0.5);
        shoot("flow-screen");

        auto screen = component->controller();
        if (!screen) return fail("the flow's screen did not appear");

        screen->showHubWithStatus("正在处理...");
        loop().runFor(0.3);
        shoot("hub-status");

        for (float progress : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f}) {
            screen->showHubProgress(progress, "Downloading 下载中");
            loop().runFor(0.2);
            if (progress == 0.5f || progress == 1.0f) {
                shoot("hub-progress-" + std::to_string(static_cast<int>(progress * 100)));
            }
        }

        screen->showHubSuccessWithStatus("处理完成");
        loop().runFor(0.3);
        shoot("hub-success");
        loop().runFor(OrvPopupProgress::displayDurationForString("处理完成") + 0.3);
        shoot("hub-success-faded");

        screen->showHubErrorWithStatus("保存到相册失败");
        loop().runFor(0.3);
        shoot("hub-error");
        loop().runFor(5.0);

        // The user taps "Done": the component dismisses the screen and calls back.
        auto injector = ui::EventInjector::injectorForWindow(window_);
        const gfx::Rect button =
            screen->doneButton()->convertRectToView(screen->doneButton()->bounds(), nullptr);
        injector->tap({gfx::rectGetMidX(button), gfx::rectGetMidY(button)});
        loop().runFor(0.5);
        shoot("back-home");

        if (!called) return fail("the tap on Done did not reach the callback");
        return failed_ ? 1 : 0;
    }

  private:
    static rt::RunLoop& loop() { return rt::RunLoop::main(); }
    int fail(const char* why) {
        std::fprintf(stderr, "demo failed: %s\n", why);
        return 1;
    }

    std::filesystem::path out_;
    std::shared_ptr<ui::Window> window_;
    int shots_ = 0;
    bool failed_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    std::filesystem::path out = "out";
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--out") == 0 && i + 1 < argc) out = argv[++i];
    }
    return Session(std::filesystem::absolute(out)).run();
}
