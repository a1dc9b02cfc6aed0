#pragma once
// A button of the library's alerts: a title, a style (0 default, 1 cancel, 2 destructive) and
// a block run with the action when the user taps it.

#include <functional>
#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"
#include "platform/ui/AlertAction.h"

class OrvAlertAction : public rt::Object {
    ORV_DECLARE_CLASS(OrvAlertAction)
  public:
    static constexpr long kStyleDefault = 0;
    static constexpr long kStyleCancel = 1;
    static constexpr long kStyleDestructive = 2;
    using Handler = std::function<void(OrvAlertAction& action)>;

    static std::shared_ptr<OrvAlertAction> actionWithTitle(std::string title, Handler handler);
    static std::shared_ptr<OrvAlertAction> actionCancelWithTitle(std::string title,
                                                                 Handler handler);
    static std::shared_ptr<OrvAlertAction> actionDestructiveWithTitle(std::string title,
                                                                      Handler handler);
    static std::shared_ptr<OrvAlertAction> actionWithTitle(std::string title, long style,
                                                           Handler handler);
    void initWithTitle(std::string title, long style, Handler handler);

    const std::string& title() const { return title_; }
    long style() const { return style_; }
    // Runs the handler, when there is one, with this action.
    void handleAction();
    // The platform's style: cancel and destructive as such, anything else default.
    ui::AlertActionStyle uiAlertActionStyle() const;

  private:
    std::string title_;
    long style_ = kStyleDefault;
    Handler handler_;
};
