#pragma once
// The demo's look: the colours and the rounded buttons its screens share.

#include <functional>
#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Color.h"
#include "platform/rt/Object.h"
#include "platform/ui/Button.h"

namespace orvdemo {

struct DemoStyle {
    static gfx::Color background() { return gfx::Color::rgb(0.13, 0.14, 0.18); }
    static gfx::Color panel() { return gfx::Color::rgb(0.18, 0.19, 0.24); }
    static gfx::Color accent() { return gfx::Color::rgb(0.16, 0.49, 0.98); }
    static gfx::Color quiet() { return gfx::Color::rgb(0.30, 0.31, 0.37); }

    // A rounded button with a white title that runs `action` (when there is one) on a tap while
    // `owner` lives; its title dims when disabled.
    static std::shared_ptr<ui::Button> button(const std::string& title, const gfx::Rect& frame,
                                              const gfx::Color& colour,
                                              std::weak_ptr<orv::rt::Object> owner,
                                              std::function<void()> action);
};

}  // namespace orvdemo
