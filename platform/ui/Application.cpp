#include "platform/ui/Application.h"

#include <mutex>

#include "platform/ui/Screen.h"
#include "platform/ui/Window.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Application, rt::Object)

namespace {

// Callers on any thread may be the first to ask.
std::mutex& slotMutex() {
    static std::mutex m;
    return m;
}

std::shared_ptr<Application>& sharedSlot() {
    static std::shared_ptr<Application> application;
    return application;
}
}  // namespace

Application& Application::shared() {
    std::lock_guard lock(slotMutex());
    auto& slot = sharedSlot();
    if (!slot) slot = rt::make<Application>();
    return *slot;
}

void Application::resetShared() {
    auto fresh = rt::make<Application>();
    {
        std::lock_guard lock(slotMutex());
        std::swap(sharedSlot(), fresh);
    }
    // The old one (and the windows it holds) goes outside the lock.
}

gfx::Rect Application::statusBarFrame() const {
    const double width = Screen::main().bounds().size.width;
    return {0, 0, width, statusBarHidden_ ? 0 : kStatusBarHeight};
}

}  // namespace orv::ui
