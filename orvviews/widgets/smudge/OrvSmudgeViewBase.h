#pragma once
// The host view of a brush tool screen: it holds the canvas view and the round cursor that shows
// the brush's size, growing to a new size when the size changes and following the finger while
// it paints. A concrete screen supplies both views.

#include <memory>

#include "frameworks/core/OrvTSAnimation.h"
#include "orvviews/views/OrvSmudgeImageViewInterface.h"
#include "platform/ui/View.h"

class OrvSmudgeViewBase : public ui::View {
    ORV_DECLARE_CLASS(OrvSmudgeViewBase)
  public:
    // The cursor is this many points wide for each point of brush size.
    static constexpr double kCursorFactor = 12;
    static constexpr double kGrowSeconds = 0.26;
    static constexpr double kHideDelaySeconds = 0.5;
    static constexpr double kFadeSeconds = 0.15;

    // The canvas view and the cursor; none in the base.
    virtual std::shared_ptr<ui::View> smudgeWrap() const { return nullptr; }
    virtual std::shared_ptr<ui::View> sizeAnimView() const { return nullptr; }

    // Shows the cursor in the middle of the canvas, growing from one size to the other, and
    // fades it out half a second after.
    void showBrushSizeAnim(double from, double to);
    // Puts the cursor's centre on the point of the canvas view; hides it outside the canvas.
    void showBrushSizeCursor(gfx::Point point);
    void hideBrushSizeCursor();
    void viewWillDestory() override;

  protected:
    void applyAnimationWithStep(double step);
    void setBrushSizeViewHidden();

  private:
    OrvTSAnimation& anim();
    // The cursor at that size, centred in the canvas view, round.
    void placeCursorCentred(gfx::Size size);

    std::shared_ptr<OrvTSAnimation> anim_;
    gfx::Size toSize_;
    gfx::Size diffSize_;
};
