#include "platform/ui/Screen.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Screen, rt::Object)

namespace {
std::shared_ptr<Screen>& mainSlot() {
    static std::shared_ptr<Screen> screen;
    return screen;
}
}  // namespace

Screen& Screen::main() {
    auto& slot = mainSlot();
    if (!slot) slot = rt::make<Screen>();
    return *slot;
}

void Screen::resetMain() {
    mainSlot() = rt::make<Screen>();
}

gfx::Size Screen::sizeInPixels() const {
    return {bounds_.size.width * scale_, bounds_.size.height * scale_};
}

}  // namespace orv::ui
