#include "platform/ui/Screen.h"

#include <mutex>

namespace orv::ui {

ORV_DEFINE_CLASS(Screen, rt::Object)

namespace {

// Callers on any thread may be the first to ask.
std::mutex& slotMutex() {
    static std::mutex m;
    return m;
}

std::shared_ptr<Screen>& mainSlot() {
    static std::shared_ptr<Screen> screen;
    return screen;
}
}  // namespace

Screen& Screen::main() {
    std::lock_guard lock(slotMutex());
    auto& slot = mainSlot();
    if (!slot) slot = rt::make<Screen>();
    return *slot;
}

void Screen::resetMain() {
    auto fresh = rt::make<Screen>();
    {
        std::lock_guard lock(slotMutex());
        std::swap(mainSlot(), fresh);
    }
    // The old one (and the windows it holds) goes outside the lock.
}

gfx::Size Screen::sizeInPixels() const {
    return {bounds_.size.width * scale_, bounds_.size.height * scale_};
}

}  // namespace orv::ui
