#pragma once
#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/ui/ShapeLayer.h"
#include "platform/ui/View.h"

// The spinner: an arc that turns for ever, faded along its length by a mask picture.
class ORVIndefiniteAnimatedView : public ui::View {
    ORV_DECLARE_CLASS(ORVIndefiniteAnimatedView)
  public:
    void initWithFrame(const gfx::Rect& frame) override;

    double strokeThickness() const { return strokeThickness_; }
    void setStrokeThickness(double thickness);
    double radius() const { return radius_; }
    void setRadius(double radius);
    gfx::Color strokeColor() const { return strokeColor_; }
    void setStrokeColor(const gfx::Color& color);

    // Made at first read: the arc with its mask and its two animations.
    std::shared_ptr<ui::ShapeLayer> indefiniteAnimatedLayer();

    void willMoveToSuperview(ui::View* newSuperview) override;
    void layoutSubviews() override { layoutAnimatedLayer(); }
    gfx::Size sizeThatFits(gfx::Size size) const override;
    void layoutAnimatedLayer();

  private:
    double strokeThickness_ = 0;
    double radius_ = 0;
    gfx::Color strokeColor_;
    std::shared_ptr<ui::ShapeLayer> indefiniteAnimatedLayer_;
};
