#pragma once
// The panel of sliders over the picture: one slider per argument of the filter's parameters, a
// reset button, and a round state button that folds the sliders away and back. Touches on the
// panel's empty area reach the picture below it.

#include <memory>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/strand/VimraParameters.h"
#include "orvviews/filter/OrvFilterSeekbar.h"
#include "platform/ui/Button.h"
#include "platform/ui/View.h"

class OrvFilterConfigView : public ui::View {
    ORV_DECLARE_CLASS(OrvFilterConfigView)
  public:
    // Time the panel takes to fold or unfold, and its backdrop to follow the sliders.
    static constexpr double kAnimationDuration = 0.26;

    void initWithFrame(const gfx::Rect& frame) override;

    bool isAniming() const { return isAniming_; }
    void setIsAniming(bool animing) { isAniming_ = animing; }
    std::vector<std::shared_ptr<OrvFilterSeekbar>>& seekBars() { return seekBars_; }
    void setSeekBars(std::vector<std::shared_ptr<OrvFilterSeekbar>> bars) {
        seekBars_ = std::move(bars);
    }
    const std::shared_ptr<ui::Button>& resetButton() const { return resetButton_; }
    const std::shared_ptr<ui::Button>& stateButton() const { return stateButton_; }
    const std::shared_ptr<ui::View>& stateBg() const { return stateBg_; }
    const std::shared_ptr<ui::View>& configWrap() const { return configWrap_; }

    const std::shared_ptr<VimraParameters>& filterParams() const { return filterParams_; }
    // Sliders for the parameters' arguments; nil or parameters without arguments hide the panel.
    void setFilterParams(std::shared_ptr<VimraParameters> filterParams);

    // Hidden and folded, as a new panel starts.
    void hiddenDefault();
    // Removes the sliders.
    void clean();
    // One slider per argument, stacked from the top of the sliders' area.
    void resetConfigView();
    std::shared_ptr<OrvFilterSeekbar> buildSeekbarWithTop(double top);

    void handleResetAction();
    // Folds the sliders when they show, unfolds them otherwise; ignored while animating.
    void handleShowStateAction();

    // The panel itself takes no touches, only its controls do.
    ui::View* hitTest(gfx::Point p, ui::Event* event) override;

  private:
    void orvInitView();
    // Stretches the backdrop of the state button down to the sliders' bottom.
    void animateStateBgToConfigBottom();

    bool isAniming_ = false;
    std::vector<std::shared_ptr<OrvFilterSeekbar>> seekBars_;
    std::shared_ptr<ui::Button> resetButton_;
    std::shared_ptr<ui::Button> stateButton_;
    std::shared_ptr<ui::View> stateBg_;
    std::shared_ptr<ui::View> configWrap_;
    std::shared_ptr<VimraParameters> filterParams_;
};
