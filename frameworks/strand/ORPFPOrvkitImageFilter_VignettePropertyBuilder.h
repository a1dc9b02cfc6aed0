#pragma once
// Vignette: the edges darken from `start` outwards. The meaning of each value is told in
// kernels/FilterSettings.h.

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitImageFilter_VignettePropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitImageFilter_VignettePropertyBuilder)
  public:
    float start() const { return settings_.start; }
    void setStart(float v) { settings_.start = v; }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::VignetteSettings>::make(settings_);
    }

  private:
    orv::strand::VignetteSettings settings_;
};
