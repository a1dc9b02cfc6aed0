#pragma once
// A small modal alert: a dimmed screen with a white rounded box holding a title, a message and
// one button that closes it. The album shows it when it cannot be reached.

#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/ViewController.h"

class OrvTSAlertController : public ui::ViewController {
    ORV_DECLARE_CLASS(OrvTSAlertController)
  public:
    static std::shared_ptr<OrvTSAlertController> alertWithTitle(std::string title,
                                                                std::string message);

    void loadView() override;

    const std::string& alertTitle() const { return alertTitle_; }
    const std::string& message() const { return message_; }
    // The views, once the view is loaded (tests tap the button).
    const std::shared_ptr<ui::Label>& titleLabel() const { return titleLabel_; }
    const std::shared_ptr<ui::Label>& messageLabel() const { return messageLabel_; }
    const std::shared_ptr<ui::Button>& okButton() const { return okButton_; }

  private:
    std::shared_ptr<ui::Label> makeLabel(const std::string& text, const gfx::Font& font,
                                         const gfx::Rect& frame) const;
    void makeOkButton(const gfx::Rect& frame);

    std::string alertTitle_;
    std::string message_;
    std::shared_ptr<ui::Label> titleLabel_;
    std::shared_ptr<ui::Label> messageLabel_;
    std::shared_ptr<ui::Button> okButton_;
};
