#pragma once
// One filter argument on a slider, with its name and its value as a two-digit percentage on the
// right. Moving the slider writes the argument, whose listener renders the picture again.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "frameworks/strand/VimraParameterArg.h"
#include "orvviews/views/OrvSeekBar.h"
#include "orvviews/views/OrvSeekBarDelegate.h"
#include "platform/ui/Label.h"
#include "platform/ui/View.h"

class OrvFilterSeekbar : public ui::View, public OrvSeekBarDelegate {
    ORV_DECLARE_CLASS(OrvFilterSeekbar)
  public:
    void initWithFrame(const gfx::Rect& frame) override;

    const std::shared_ptr<OrvSeekBar>& seekBar() const { return seekBar_; }
    const std::shared_ptr<ui::Label>& titleView() const { return titleView_; }
    const std::shared_ptr<ui::Label>& numberView() const { return numberView_; }

    const std::shared_ptr<VimraParameterArg>& filterArg() const { return filterArg_; }
    // Shows the argument: the bar at its place in the range and its localised name.
    void setFilterArg(std::shared_ptr<VimraParameterArg> filterArg);
    // Writes the progress to the argument and shows it as a number from 00 to 100.
    void setProgress(double progress);
    // The argument back at its default, shown again.
    void reset();

    void onOrvKitICSeekBar(OrvSeekBar& seekBar, double changedProgress) override;

  private:
    void orvInitView();

    std::shared_ptr<OrvSeekBar> seekBar_;
    std::shared_ptr<ui::Label> titleView_;
    std::shared_ptr<ui::Label> numberView_;
    std::shared_ptr<VimraParameterArg> filterArg_;
};
