#pragma once
// Skin: smoothing of skin tones, fair (whitening) and ruddy (a warm flush). The meaning of each
// value is told in kernels/FilterSettings.h.

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitImageFilter_SkinHazyPropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitImageFilter_SkinHazyPropertyBuilder)
  public:
    float smoothing() const { return settings_.smoothing; }
    void setSmoothing(float v) { settings_.smoothing = v; }
    float fair() const { return settings_.fair; }
    void setFair(float v) { settings_.fair = v; }
    float ruddy() const { return settings_.ruddy; }
    void setRuddy(float v) { settings_.ruddy = v; }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::SkinSettings>::make(settings_);
    }

  private:
    orv::strand::SkinSettings settings_;
};
