#pragma once
// Face plastic: larger eyes and thinner cheeks, by a local warp around the faces' landmarks. The
// meaning of each value is told in kernels/FilterSettings.h.

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitFaceEditPlasticFilter_PropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitFaceEditPlasticFilter_PropertyBuilder)
  public:
    double eyeEnlarge() const { return settings_.eyeEnlarge; }
    void setEyeEnlarge(double v) { settings_.eyeEnlarge = v; }
    double cheekThin() const { return settings_.cheekThin; }
    void setCheekThin(double v) { settings_.cheekThin = v; }
    // The faces to reshape, found by a face analyser.
    const std::vector<orv::strand::FaceLandmarks>& faces() const { return settings_.faces; }
    void setFaces(std::vector<orv::strand::FaceLandmarks> faces) {
        settings_.faces = std::move(faces);
    }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::PlasticSettings>::make(settings_);
    }

  private:
    orv::strand::PlasticSettings settings_;
};
