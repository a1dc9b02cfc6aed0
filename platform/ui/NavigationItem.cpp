#include "platform/ui/NavigationItem.h"

namespace orv::ui {

ORV_DEFINE_CLASS(NavigationItem, rt::Object)

void NavigationItem::initWithTitle(std::optional<std::string> title) {
    init();
    title_ = std::move(title);
}

void NavigationItem::setTitle(std::optional<std::string> title) {
    title_ = std::move(title);
    changed();
}

void NavigationItem::setLeftBarButtonItem(BarButtonItem::Ptr item) {
    left_ = std::move(item);
    changed();
}

void NavigationItem::setRightBarButtonItem(BarButtonItem::Ptr item) {
    right_ = std::move(item);
    changed();
}

void NavigationItem::setBackBarButtonItem(BarButtonItem::Ptr item) {
    back_ = std::move(item);
    changed();
}

void NavigationItem::setHidesBackButton(bool hides) {
    hidesBackButton_ = hides;
    changed();
}

void NavigationItem::changed() {
    if (observer_) {
        auto observer = observer_;  // the observer may replace itself
        observer();
    }
}

}  // namespace orv::ui
