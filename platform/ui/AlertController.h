#pragma once
// The platform's question to the user, presented over a screen: an alert (a box in the middle
// with the buttons under the text, side by side when there are two) or an action sheet (the
// buttons in a panel at the bottom, the cancel button apart below them). A tap on a button
// dismisses the controller, then runs the button's action.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ui/AlertAction.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/ViewController.h"

namespace orv::ui {

enum class AlertControllerStyle { ActionSheet = 0, Alert = 1 };

class AlertController : public ViewController {
    ORV_DECLARE_CLASS(AlertController)
  public:
    static std::shared_ptr<AlertController> alertControllerWithTitle(
        std::optional<std::string> title, std::optional<std::string> message,
        AlertControllerStyle style);

    void addAction(const std::shared_ptr<AlertAction>& action);
    const std::vector<std::shared_ptr<AlertAction>>& actions() const { return actions_; }
    AlertControllerStyle preferredStyle() const { return style_; }
    const std::optional<std::string>& alertTitle() const { return title_; }
    const std::optional<std::string>& message() const { return message_; }

    void loadView() override;
    // The buttons in the order of the actions, once the view is loaded.
    const std::vector<std::shared_ptr<Button>>& buttons() const { return buttons_; }

  private:
    std::shared_ptr<View> makeBox(double width, double buttonsHeight, bool sheet);
    std::shared_ptr<Button> makeButton(const std::shared_ptr<AlertAction>& action);

    std::optional<std::string> title_;
    std::optional<std::string> message_;
    AlertControllerStyle style_ = AlertControllerStyle::Alert;
    std::vector<std::shared_ptr<AlertAction>> actions_;
    std::vector<std::shared_ptr<Button>> buttons_;
};

}  // namespace orv::ui
