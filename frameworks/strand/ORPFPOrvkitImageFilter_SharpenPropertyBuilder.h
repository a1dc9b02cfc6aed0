#pragma once
// Sharpen: an unsharp mask. The meaning of each value is told in kernels/FilterSettings.h.

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitImageFilter_SharpenPropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitImageFilter_SharpenPropertyBuilder)
  public:
    float sharpness() const { return settings_.sharpness; }
    void setSharpness(float v) { settings_.sharpness = v; }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::SharpenSettings>::make(settings_);
    }

  private:
    orv::strand::SharpenSettings settings_;
};
