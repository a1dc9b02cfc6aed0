#pragma once
// One button of an alert or action sheet: its title, its style and what it does.

#include <functional>
#include <memory>
#include <string>

#include "platform/rt/Object.h"

namespace orv::ui {

enum class AlertActionStyle { Default = 0, Cancel = 1, Destructive = 2 };

class AlertAction : public rt::Object {
    ORV_DECLARE_CLASS(AlertAction)
  public:
    using Handler = std::function<void(AlertAction& action)>;

    static std::shared_ptr<AlertAction> actionWithTitle(std::string title, AlertActionStyle style,
                                                        Handler handler);
    const std::string& title() const { return title_; }
    AlertActionStyle style() const { return style_; }
    // Runs the handler, when there is one.
    void perform();

  private:
    std::string title_;
    AlertActionStyle style_ = AlertActionStyle::Default;
    Handler handler_;
};

}  // namespace orv::ui
