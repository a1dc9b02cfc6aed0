#pragma once
// The bar a navigation controller shows above its top controller: the top item's title in the
// middle, its left button (or, without one, a back button to the controller below) and its right
// button. A tap on a button runs that button's action.

#include <functional>
#include <optional>
#include <string>

#include "platform/gfx/Color.h"
#include "platform/ui/NavigationItem.h"
#include "platform/ui/View.h"

namespace orv::ui {

class NavigationBar : public View {
    ORV_DECLARE_CLASS(NavigationBar)
  public:
    void initWithFrame(const gfx::Rect& frame) override;
    void dealloc() override;

    // The item on top and the one below it (whose back item, or title, names the back button).
    void setItems(NavigationItem::Ptr top, NavigationItem::Ptr below);
    const NavigationItem::Ptr& topItem() const { return top_; }
    const NavigationItem::Ptr& backItem() const { return below_; }
    // What the back button does (the controller pops).
    void setBackAction(std::function<void()> action) { backAction_ = std::move(action); }

    // The colour of button titles that set none of their own.
    gfx::Color tintColor() const { return tint_; }
    void setTintColor(const gfx::Color& color);

    // Where the buttons are, in the bar's coordinates; empty when there is none.
    struct Button {
        gfx::Rect frame;
        std::string title;
        BarButtonItem::Ptr item;  // null for the back button
    };
    std::optional<Button> leftButton() const;
    std::optional<Button> rightButton() const;

    void drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) override;
    bool hasCustomDrawing() const override { return true; }

    // The bar takes its touches: a touch that ends on a button presses it.
    void touchesBegan(const TouchSet& touches, Event* event) override {}
    void touchesMoved(const TouchSet& touches, Event* event) override {}
    void touchesEnded(const TouchSet& touches, Event* event) override;
    void touchesCancelled(const TouchSet& touches, Event* event) override {}

  private:
    std::optional<Button> buttonFor(const BarButtonItem::Ptr& item, bool left) const;
    std::optional<std::string> backTitle() const;
    void press(const Button& button) const;
    void observe(const NavigationItem::Ptr& item);

    NavigationItem::Ptr top_;
    NavigationItem::Ptr below_;
    std::function<void()> backAction_;
    gfx::Color tint_ = gfx::Color::rgb(0, 122 / 255.0, 1);
};

}  // namespace orv::ui
