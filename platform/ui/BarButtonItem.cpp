#include "platform/ui/BarButtonItem.h"

namespace orv::ui {

ORV_DEFINE_CLASS(BarButtonItem, rt::Object)

void BarButtonItem::initWithTitle(std::optional<std::string> title, int style,
                                  const std::shared_ptr<rt::Object>& target, Action action) {
    init();
    title_ = std::move(title);
    style_ = style;
    setTarget(target);
    action_ = std::move(action);
}

void BarButtonItem::initWithImage(gfx::ImagePtr image, int style,
                                  const std::shared_ptr<rt::Object>& target, Action action) {
    initWithTitle(std::nullopt, style, target, std::move(action));
    image_ = std::move(image);
}

BarButtonItem::Ptr BarButtonItem::itemWithTitle(std::optional<std::string> title, int style,
                                                const std::shared_ptr<rt::Object>& target,
                                                Action action) {
    return rt::makeWith<BarButtonItem>([&](BarButtonItem& item) {
        item.initWithTitle(std::move(title), style, target, std::move(action));
    });
}

void BarButtonItem::setTarget(const std::shared_ptr<rt::Object>& target) {
    target_ = target;
    hasTarget_ = target != nullptr;
}

BarButtonItem::TitleAttributes BarButtonItem::titleTextAttributes(unsigned state) const {
    auto it = titleAttributes_.find(state);
    return it == titleAttributes_.end() ? TitleAttributes{} : it->second;
}

void BarButtonItem::setTitleTextAttributes(const TitleAttributes& attributes, unsigned state) {
    titleAttributes_[state] = attributes;
}

bool BarButtonItem::perform() const {
    if (!enabled_ || !action_) return false;
    // Holding the target for the call keeps it alive while its action runs.
    std::shared_ptr<rt::Object> target = target_.lock();
    if (hasTarget_ && !target) return false;
    Action action = action_;  // the action may replace itself
    action();
    return true;
}

}  // namespace orv::ui
