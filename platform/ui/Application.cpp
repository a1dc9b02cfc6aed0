#include "platform/ui/Application.h"

#include "platform/ui/Screen.h"
#include "platform/ui/Window.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Application, rt::Object)

namespace {
std::shared_ptr<Application>& sharedSlot() {
    static std::shared_ptr<Application> application;
    return application;
}
}  // namespace

Application& Application::shared() {
    auto& slot = sharedSlot();
    if (!slot) slot = rt::make<Application>();
    return *slot;
}

void Application::resetShared() {
    sharedSlot() = rt::make<Application>();
}

gfx::Rect Application::statusBarFrame() const {
    const double width = Screen::main().bounds().size.width;
    return {0, 0, width, statusBarHidden_ ? 0 : kStatusBarHeight};
}

}  // namespace orv::ui
