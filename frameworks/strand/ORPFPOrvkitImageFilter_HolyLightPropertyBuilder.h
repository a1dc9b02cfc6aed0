#pragma once
// Holy light: bright areas bloom. The meaning of each value is told in kernels/FilterSettings.h.

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitImageFilter_HolyLightPropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitImageFilter_HolyLightPropertyBuilder)
  public:
    float strength() const { return settings_.strength; }
    void setStrength(float v) { settings_.strength = v; }
    float brightness() const { return settings_.brightness; }
    void setBrightness(float v) { settings_.brightness = v; }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::HolyLightSettings>::make(settings_);
    }

  private:
    orv::strand::HolyLightSettings settings_;
};
