#pragma once
// A screen that only talks through the message hub: it has a title, a short explanation and a
// "Done" button. Tapping the button finishes the flow.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "orvviews/widgets/OrvImageResultController.h"

namespace orv::ui {
class Button;
class Label;
}  // namespace orv::ui

namespace orvdemo {

class HubDemoController;

// What a component hears from the screen when the user is done.
class HubDemoDelegate {
    ORV_DECLARE_PROTOCOL(HubDemoDelegate)
  public:
    virtual ~HubDemoDelegate() = default;
    virtual void hubDemoControllerDidFinish(HubDemoController& controller) = 0;
};

class HubDemoController : public OrvImageResultController {
    ORV_DECLARE_CLASS(HubDemoController)
  public:
    void setDelegate(std::weak_ptr<HubDemoDelegate> delegate) { delegate_ = std::move(delegate); }

    void buildDefaultStyleView() override;
    void configDefaultStyleView(const std::shared_ptr<ui::View>& view) override;

    const std::shared_ptr<ui::Button>& doneButton() const { return doneButton_; }
    void onDone();

  private:
    std::weak_ptr<HubDemoDelegate> delegate_;
    std::shared_ptr<ui::Label> titleLabel_;
    std::shared_ptr<ui::Label> detailLabel_;
    std::shared_ptr<ui::Button> doneButton_;
};

}  // namespace orvdemo
