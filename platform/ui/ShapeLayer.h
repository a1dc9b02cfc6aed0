#pragma once
// A layer that fills and strokes a path in its own bounds space. strokeStart and strokeEnd pick
// the part of the path's length that is stroked (and are what spinners and rings animate).

#include <optional>
#include <vector>

#include "platform/gfx/Path.h"
#include "platform/ui/Layer.h"

namespace orv::ui {

class ShapeLayer : public Layer {
    ORV_DECLARE_CLASS(ShapeLayer)
  public:
    const gfx::Path& path() const { return path_; }
    void setPath(gfx::Path path) { path_ = std::move(path); }
    // The platform's defaults: filled black, not stroked.
    std::optional<gfx::Color> fillColor() const { return fillColor_; }
    void setFillColor(std::optional<gfx::Color> c) { fillColor_ = c; }
    std::optional<gfx::Color> strokeColor() const { return strokeColor_; }
    void setStrokeColor(std::optional<gfx::Color> c) { strokeColor_ = c; }
    double lineWidth() const { return lineWidth_; }
    void setLineWidth(double w) { lineWidth_ = w; }
    gfx::LineCap lineCap() const { return lineCap_; }
    void setLineCap(gfx::LineCap cap) { lineCap_ = cap; }
    gfx::LineJoin lineJoin() const { return lineJoin_; }
    void setLineJoin(gfx::LineJoin join) { lineJoin_ = join; }
    double strokeStart() const { return strokeStart_; }
    void setStrokeStart(double v) { strokeStart_ = v; }
    double strokeEnd() const { return strokeEnd_; }
    void setStrokeEnd(double v) { strokeEnd_ = v; }
    // Kept for the callers that set it; strokes are drawn solid.
    const std::vector<double>& lineDashPattern() const { return lineDashPattern_; }
    void setLineDashPattern(std::vector<double> pattern) { lineDashPattern_ = std::move(pattern); }

    void drawInCanvas(gfx::Canvas& canvas) const override;

  private:
    gfx::Path path_;
    std::optional<gfx::Color> fillColor_ = gfx::Color::black();
    std::optional<gfx::Color> strokeColor_;
    double lineWidth_ = 1;
    gfx::LineCap lineCap_ = gfx::LineCap::Butt;
    gfx::LineJoin lineJoin_ = gfx::LineJoin::Miter;
    double strokeStart_ = 0;
    double strokeEnd_ = 1;
    std::vector<double> lineDashPattern_;
};

}  // namespace orv::ui
