#pragma once
#include <memory>

#include "examples/orvdemo/HubDemoController.h"
#include "examples/orvdemo/HubDemoOptions.h"
#include "orvviews/OrvPhotoEditComponentBase.h"

namespace orvdemo {

// Shows the hub demo screen in a navigation controller over the source screen, and reports
// back when the user is done.
class HubDemoComponent : public OrvPhotoEditComponentBase, public HubDemoDelegate {
    ORV_DECLARE_CLASS(HubDemoComponent)
  public:
    const std::shared_ptr<HubDemoOptions>& options() const { return options_; }
    void setOptions(std::shared_ptr<HubDemoOptions> options) { options_ = std::move(options); }

    void showComponent() override;
    void hubDemoControllerDidFinish(HubDemoController& controller) override;

    // The screen while it is shown.
    std::shared_ptr<HubDemoController> controller() const { return controller_.lock(); }

  private:
    std::shared_ptr<HubDemoOptions> options_;
    std::weak_ptr<HubDemoController> controller_;
};

}  // namespace orvdemo
