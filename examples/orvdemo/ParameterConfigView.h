#pragma once
// The demo's panel of parameter sliders: a tab for each argument of the tool, one slider for
// the chosen argument with its value, and a reset button. The tool owns the parameters; the
// panel only asks and tells it through the delegate.

#include <memory>
#include <string>
#include <vector>

#include "orvviews/filter/OrvParameterConfigViewInterface.h"
#include "orvviews/views/OrvSeekBar.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

namespace orvdemo {

class ParameterConfigView : public ui::View,
                            public OrvParameterConfigViewInterface,
                            public OrvSeekBarDelegate {
    ORV_DECLARE_CLASS(ParameterConfigView)
  public:
    void initWithFrame(const gfx::Rect& frame) override;
    void layoutSubviews() override;

    void setDelegate(std::weak_ptr<OrvParameterConfigDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }
    void setParams(const std::vector<std::string>& keys, unsigned long selectedIndex) override;
    void seekWithProgress(double progress) override;
    void onOrvKitICSeekBar(OrvSeekBar& seekBar, double changedProgress) override;

    // Chooses the argument the slider moves and puts the slider at its value.
    void selectIndex(unsigned long index);
    unsigned long selectedIndex() const { return selected_; }
    const std::shared_ptr<OrvSeekBar>& seekBar() const { return seekBar_; }
    const std::vector<std::shared_ptr<ui::Button>>& tabs() const { return tabs_; }
    const std::shared_ptr<ui::Button>& resetButton() const { return resetButton_; }

  private:
    void showValue(double progress);

    std::weak_ptr<OrvParameterConfigDelegate> delegate_;
    std::vector<std::shared_ptr<ui::Button>> tabs_;
    std::shared_ptr<OrvSeekBar> seekBar_;
    std::shared_ptr<ui::Label> valueLabel_;
    std::shared_ptr<ui::Button> resetButton_;
    unsigned long selected_ = 0;
};

}  // namespace orvdemo
