#pragma once
// Aperture: everything but a focused circle or band is blurred. The meaning of each value is told
// in kernels/FilterSettings.h.

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitImageFilter_AperturePropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitImageFilter_AperturePropertyBuilder)
  public:
    float selective() const { return settings_.selective; }
    void setSelective(float v) { settings_.selective = v; }
    gfx::Point center() const { return settings_.center; }
    void setCenter(const gfx::Point& v) { settings_.center = v; }
    float radius() const { return settings_.radius; }
    void setRadius(float v) { settings_.radius = v; }
    float blurSize() const { return settings_.blurSize; }
    void setBlurSize(float v) { settings_.blurSize = v; }
    float degree() const { return settings_.degree; }
    void setDegree(float v) { settings_.degree = v; }
    gfx::Color color() const { return settings_.color; }
    void setColor(const gfx::Color& v) { settings_.color = v; }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::ApertureSettings>::make(settings_);
    }

  private:
    orv::strand::ApertureSettings settings_;
};
