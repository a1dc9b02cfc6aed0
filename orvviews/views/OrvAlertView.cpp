#include "orvviews/views/OrvAlertView.h"

#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvTSLog.h"
#include "orvviews/views/OrvKitICAlertViewInstance.h"

ORV_DEFINE_CLASS(OrvAlertView, rt::Object)

std::shared_ptr<OrvAlertView> OrvAlertView::alertWithController(
    const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
    std::optional<std::string> message) {
    auto alert = rt::make<OrvAlertView>();
    alert->initWithController(controller, std::move(title), std::move(message), kStyleAlert);
    return alert;
}

std::shared_ptr<OrvAlertView> OrvAlertView::actionSheetWithController(
    const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
    std::optional<std::string> message) {
    auto alert = rt::make<OrvAlertView>();
    alert->initWithController(controller, std::move(title), std::move(message), kStyleActionSheet);
    return alert;
}

void OrvAlertView::initWithController(const std::shared_ptr<ui::ViewController>& controller,
                                      std::optional<std::string> title,
                                      std::optional<std::string> message, long preferredStyle) {
    controller_ = controller;
    title_ = std::move(title);
    message_ = std::move(message);
    preferredStyle_ = preferredStyle;
}

std::shared_ptr<OrvAlertView> OrvAlertView::alertShowWithController(
    const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> message) {
    return alertShowWithController(controller, std::nullopt, std::move(message));
}

std::shared_ptr<OrvAlertView> OrvAlertView::alertShowWithController(
    const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
    std::optional<std::string> message) {
    return alertShowWithController(controller, std::move(title), std::move(message),
                                   orvLocalized("orv_button_done", "Done"));
}

std::shared_ptr<OrvAlertView> OrvAlertView::alertShowWithController(
    const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
    std::optional<std::string> message, const std::string& cancelTitle) {
    auto alert = alertWithController(controller, std::move(title), std::move(message));
    alert->addAction(OrvAlertAction::actionCancelWithTitle(cancelTitle, nullptr));
    alert->show();
    return alert;
}

std::shared_ptr<OrvAlertView> OrvAlertView::alertShowConfigWithController(
    const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
    std::optional<std::string> message) {
    auto alert = alertWithController(controller, std::move(title), std::move(message));
    alert->addAction(
        OrvAlertAction::actionCancelWithTitle(orvLocalized("orv_cancel", "Cancel"), nullptr));
    alert->addAction(OrvAlertAction::actionWithTitle(
        orvLocalized("orv_setting", "Setting"), [](OrvAlertAction&) { orvOpenAppSettings(); }));
    alert->show();
    return alert;
}

void OrvAlertView::orvOpenAppSettings() {
    OrvTSLog::info("the application's settings were asked for; this system has no settings page");
}

void OrvAlertView::addAction(const std::shared_ptr<OrvAlertAction>& action) {
    if (action) actions_.push_back(action);
}

void OrvAlertView::show() {
    if (preferredStyle_ != kStyleAlert && preferredStyle_ != kStyleActionSheet) return;
    showAlertController();
}

void OrvAlertView::showAlertController() {
    auto controller = controller_.lock();
    if (!controller) return;
    presented_ = ui::AlertController::alertControllerWithTitle(
        title_, message_,
        preferredStyle_ == kStyleAlert ? ui::AlertControllerStyle::Alert
                                       : ui::AlertControllerStyle::ActionSheet);
    for (const auto& action : actions_) {
        presented_->addAction(ui::AlertAction::actionWithTitle(
            action->title(), action->uiAlertActionStyle(),
            [action](ui::AlertAction&) { action->handleAction(); }));
    }
    controller->presentViewController(presented_, true, nullptr);
}

void OrvAlertView::handleActionWithIndex(long index) {
    if (index >= 0 && size_t(index) < actions_.size()) actions_[size_t(index)]->handleAction();
}

void OrvAlertView::handleCancelAction() {
    for (const auto& action : actions_) {
        if (action->style() == OrvAlertAction::kStyleCancel) {
            action->handleAction();
            break;
        }
    }
    OrvKitICAlertViewInstance::instance().clear();
}
