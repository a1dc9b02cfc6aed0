#pragma once
// What a controller shows in the navigation bar while it is on top: a title and its bar
// buttons, plus the back item that the next controller's bar shows to return to it.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/rt/Object.h"
#include "platform/ui/BarButtonItem.h"

namespace orv::ui {

class NavigationItem : public rt::Object {
    ORV_DECLARE_CLASS(NavigationItem)
  public:
    using Ptr = std::shared_ptr<NavigationItem>;

    void initWithTitle(std::optional<std::string> title);

    const std::optional<std::string>& title() const { return title_; }
    void setTitle(std::optional<std::string> title);
    const BarButtonItem::Ptr& leftBarButtonItem() const { return left_; }
    void setLeftBarButtonItem(BarButtonItem::Ptr item);
    const BarButtonItem::Ptr& rightBarButtonItem() const { return right_; }
    void setRightBarButtonItem(BarButtonItem::Ptr item);
    const BarButtonItem::Ptr& backBarButtonItem() const { return back_; }
    void setBackBarButtonItem(BarButtonItem::Ptr item);
    bool hidesBackButton() const { return hidesBackButton_; }
    void setHidesBackButton(bool hides);

    // Called after every change, so that a bar showing this item can redraw; one observer.
    void setChangeObserver(std::function<void()> observer) { observer_ = std::move(observer); }

  private:
    void changed();

    std::optional<std::string> title_;
    BarButtonItem::Ptr left_;
    BarButtonItem::Ptr right_;
    BarButtonItem::Ptr back_;
    bool hidesBackButton_ = false;
    std::function<void()> observer_;
};

}  // namespace orv::ui
