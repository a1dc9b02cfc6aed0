#include "platform/ui/AlertAction.h"

namespace orv::ui {

ORV_DEFINE_CLASS(AlertAction, rt::Object)

std::shared_ptr<AlertAction> AlertAction::actionWithTitle(std::string title, AlertActionStyle style,
                                                          Handler handler) {
    auto action = rt::make<AlertAction>();
    action->title_ = std::move(title);
    action->style_ = style;
    action->handler_ = std::move(handler);
    return action;
}

void AlertAction::perform() {
    if (handler_) handler_(*this);
}

}  // namespace orv::ui
