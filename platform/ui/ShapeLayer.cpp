#include "platform/ui/ShapeLayer.h"

#include <algorithm>

#include "platform/gfx/Canvas.h"

namespace orv::ui {

ORV_DEFINE_CLASS(ShapeLayer, Layer)

void ShapeLayer::drawInCanvas(gfx::Canvas& canvas) const {
    Layer::drawInCanvas(canvas);
    if (path_.isEmpty()) return;
    if (fillColor_ && fillColor_->a > 0) canvas.fillPath(path_, *fillColor_);
    if (!strokeColor_ || strokeColor_->a <= 0 || lineWidth_ <= 0) return;
    gfx::StrokeStyle style;
    style.width = lineWidth_;
    style.cap = lineCap_;
    style.join = lineJoin_;
    style.strokeStart = std::clamp(presentationValue("strokeStart", strokeStart_), 0.0, 1.0);
    style.strokeEnd = std::clamp(presentationValue("strokeEnd", strokeEnd_), 0.0, 1.0);
    if (style.strokeEnd <= style.strokeStart) return;
    canvas.strokePath(path_, *strokeColor_, style);
}

}  // namespace orv::ui
