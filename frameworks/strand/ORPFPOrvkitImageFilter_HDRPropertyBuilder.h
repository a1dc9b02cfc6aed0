#pragma once
// HDR: local tone mapping. The meaning of each value is told in kernels/FilterSettings.h.

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitImageFilter_HDRPropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitImageFilter_HDRPropertyBuilder)
  public:
    float strength() const { return settings_.strength; }
    void setStrength(float v) { settings_.strength = v; }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::HdrSettings>::make(settings_);
    }

  private:
    orv::strand::HdrSettings settings_;
};
