#pragma once
// The demo's screen for the one-filter tools (vignette, sharpness, holy light, HDR): a title
// bar with cancel and apply, the live preview, and the slider panel under it. It lays itself
// out from its frame, since the tool makes it through the class registry.

#include <memory>
#include <string>

#include "examples/orvdemo/ParameterConfigView.h"
#include "orvviews/widgets/OrvFilterResultViewInterface.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

namespace orvdemo {

class ParameterToolView : public ui::View, public OrvFilterResultViewInterface {
    ORV_DECLARE_CLASS(ParameterToolView)
  public:
    void initWithFrame(const gfx::Rect& frame) override;
    void layoutSubviews() override;

    std::shared_ptr<ui::View> imageView() const override { return surface_; }
    std::shared_ptr<OrvParameterConfigViewInterface> configView() const override { return config_; }
    const std::shared_ptr<ParameterConfigView>& config() const { return config_; }
    const std::shared_ptr<ui::Label>& titleLabel() const { return titleLabel_; }
    const std::shared_ptr<ui::Button>& cancelButton() const { return cancelButton_; }
    const std::shared_ptr<ui::Button>& doneButton() const { return doneButton_; }

  private:
    std::shared_ptr<ui::Label> titleLabel_;
    std::shared_ptr<ui::View> surface_;
    std::shared_ptr<ParameterConfigView> config_;
    std::shared_ptr<ui::Button> cancelButton_;
    std::shared_ptr<ui::Button> doneButton_;
};

}  // namespace orvdemo
