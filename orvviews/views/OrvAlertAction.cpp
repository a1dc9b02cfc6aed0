#include "orvviews/views/OrvAlertAction.h"

ORV_DEFINE_CLASS(OrvAlertAction, rt::Object)

std::shared_ptr<OrvAlertAction> OrvAlertAction::actionWithTitle(std::string title,
                                                                Handler handler) {
    return actionWithTitle(std::move(title), kStyleDefault, std::move(handler));
}

std::shared_ptr<OrvAlertAction> OrvAlertAction::actionCancelWithTitle(std::string title,
                                                                      Handler handler) {
    return actionWithTitle(std::move(title), kStyleCancel, std::move(handler));
}

std::shared_ptr<OrvAlertAction> OrvAlertAction::actionDestructiveWithTitle(std::string title,
                                                                           Handler handler) {
    return actionWithTitle(std::move(title), kStyleDestructive, std::move(handler));
}

std::shared_ptr<OrvAlertAction> OrvAlertAction::actionWithTitle(std::string title, long style,
                                                                Handler handler) {
    auto action = rt::make<OrvAlertAction>();
    action->initWithTitle(std::move(title), style, std::move(handler));
    return action;
}

void OrvAlertAction::initWithTitle(std::string title, long style, Handler handler) {
    title_ = std::move(title);
    style_ = style;
    handler_ = std::move(handler);
}

void OrvAlertAction::handleAction() {
    if (handler_) handler_(*this);
}

ui::AlertActionStyle OrvAlertAction::uiAlertActionStyle() const {
    switch (style_) {
        case kStyleCancel:
            return ui::AlertActionStyle::Cancel;
        case kStyleDestructive:
            return ui::AlertActionStyle::Destructive;
        default:
            return ui::AlertActionStyle::Default;
    }
}
