#pragma once
// The dim overlay of a crop: a translucent colour over the picture with a clear window of a
// width-to-height ratio in the middle and a line round the window. A change of ratio moves the
// window in an eased animation. It takes no touches.

#include <memory>
#include <optional>

#include "frameworks/core/OrvTSAnimation.h"
#include "platform/gfx/Color.h"
#include "platform/ui/View.h"

class OrvMaskRegionView : public ui::View {
    ORV_DECLARE_CLASS(OrvMaskRegionView)
  public:
    static constexpr double kAnimationSeconds = 0.26;

    void initWithFrame(const gfx::Rect& frame) override;

    // The clear window, in the view's coordinates.
    gfx::Rect regionRect() const { return regionRect_; }
    double regionRatio() const { return regionRatio_; }
    // At once. A ratio at or below 0 hides the view and leaves no window.
    void setRegionRatio(double ratio);
    // With the window moving to the new ratio; gives the window it moves to. The same ratio
    // again changes nothing and gives the last animation's difference rectangle.
    gfx::Rect changeRegionRatio(double ratio);
    // After a change of size: the window fits the new bounds.
    void needUpdateLayout() { setRegionRatio(regionRatio_); }

    const std::optional<gfx::Color>& edgeMaskColor() const { return edgeMaskColor_; }
    void setEdgeMaskColor(std::optional<gfx::Color> color);
    const std::optional<gfx::Color>& edgeSideColor() const { return edgeSideColor_; }
    void setEdgeSideColor(std::optional<gfx::Color> color);
    double edgeSideWidth() const { return edgeSideWidth_; }
    void setEdgeSideWidth(double width);

    void applyAnimationWithStep(double step);
    void viewWillDestory() override;

    bool hasCustomDrawing() const override { return true; }
    void drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) override;

  private:
    OrvTSAnimation& anim();

    gfx::Rect regionRect_;
    double regionRatio_ = 0;
    std::optional<gfx::Color> edgeMaskColor_ = gfx::Color::black().withAlpha(0.5);
    std::optional<gfx::Color> edgeSideColor_ = gfx::Color::clear();
    double edgeSideWidth_ = 0;
    std::shared_ptr<OrvTSAnimation> anim_;
    gfx::Rect toRect_;
    gfx::Rect reduceRect_;
};
