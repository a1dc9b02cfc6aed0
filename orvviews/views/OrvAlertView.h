#pragma once
// The one way the library asks the user a question: an alert or an action sheet with any
// number of actions, each with a block, presented over a screen.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvviews/views/OrvAlertAction.h"
#include "platform/ui/AlertController.h"
#include "platform/ui/ViewController.h"

class OrvAlertView : public rt::Object {
    ORV_DECLARE_CLASS(OrvAlertView)
  public:
    static constexpr long kStyleActionSheet = 0;
    static constexpr long kStyleAlert = 1;

    // New and not shown.
    static std::shared_ptr<OrvAlertView> alertWithController(
        const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
        std::optional<std::string> message);
    static std::shared_ptr<OrvAlertView> actionSheetWithController(
        const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
        std::optional<std::string> message);
    void initWithController(const std::shared_ptr<ui::ViewController>& controller,
                            std::optional<std::string> title, std::optional<std::string> message,
                            long preferredStyle);

    // Shown at once, with a single cancel button (by default "Done").
    static std::shared_ptr<OrvAlertView> alertShowWithController(
        const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> message);
    static std::shared_ptr<OrvAlertView> alertShowWithController(
        const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
        std::optional<std::string> message);
    static std::shared_ptr<OrvAlertView> alertShowWithController(
        const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
        std::optional<std::string> message, const std::string& cancelTitle);
    // Shown at once, with cancel and a button that opens the application's settings.
    static std::shared_ptr<OrvAlertView> alertShowConfigWithController(
        const std::shared_ptr<ui::ViewController>& controller, std::optional<std::string> title,
        std::optional<std::string> message);

    // A null action is ignored.
    void addAction(const std::shared_ptr<OrvAlertAction>& action);
    // An alert for style 1, a sheet for style 0, nothing for any other style.
    void show();
    // The action at that index, when there is one.
    void handleActionWithIndex(long index);
    // The first cancel action, when there is one; then the instance keeping alerts is cleared.
    void handleCancelAction();

    const std::vector<std::shared_ptr<OrvAlertAction>>& actions() const { return actions_; }
    const std::optional<std::string>& title() const { return title_; }
    const std::optional<std::string>& message() const { return message_; }
    long preferredStyle() const { return preferredStyle_; }
    // The platform's controller of the alert shown last; none before show().
    const std::shared_ptr<ui::AlertController>& presented() const { return presented_; }

    // What the settings button does: the application's settings page where there is one; this
    // system has none, so it is logged.
    static void orvOpenAppSettings();

  private:
    void showAlertController();

    std::vector<std::shared_ptr<OrvAlertAction>> actions_;
    std::optional<std::string> title_;
    std::optional<std::string> message_;
    long preferredStyle_ = kStyleAlert;
    std::weak_ptr<ui::ViewController> controller_;
    std::shared_ptr<ui::AlertController> presented_;
};
