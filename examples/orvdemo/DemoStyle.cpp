#include "examples/orvdemo/DemoStyle.h"

#include "platform/ui/Label.h"
#include "platform/ui/Layer.h"

namespace orvdemo {

std::shared_ptr<ui::Button> DemoStyle::button(const std::string& title, const gfx::Rect& frame,
                                              const gfx::Color& colour,
                                              std::weak_ptr<orv::rt::Object> owner,
                                              std::function<void()> action) {
    auto button = ui::Button::buttonWithType(0);
    button->setFrame(frame);
    button->setTitle(title, ui::ControlStateNormal);
    button->setTitleColor(gfx::Color::whiteColor(), ui::ControlStateNormal);
    button->setTitleColor(gfx::Color::white(1, 0.35), ui::ControlStateDisabled);
    button->titleLabel().setFont(gfx::Font::systemFont(15));
    button->setBackgroundColor(colour);
    button->layer().setCornerRadius(frame.size.height / 2);
    if (action) {
        button->addTarget(
            owner, [action = std::move(action)](ui::Control&, ui::Event*) { action(); },
            ui::ControlEventTouchUpInside);
    }
    return button;
}

}  // namespace orvdemo
