#pragma once
// Two fingers moving apart or together. scale() is the factor by which the fingers' distance has
// changed since the gesture started or since the last setScale(), times the value set then.

#include "platform/ui/TwoTouchGestureRecognizer.h"

namespace orv::ui {

class PinchGestureRecognizer : public TwoTouchGestureRecognizer {
    ORV_DECLARE_CLASS(PinchGestureRecognizer)
  public:
    // Points the fingers' distance must change by before the pinch begins.
    static constexpr double kHysteresis = 4;

    double scale() const { return scale_; }
    void setScale(double scale);

  protected:
    void startTracking() override;
    double trackMove() override;
    double hysteresis() const override { return kHysteresis; }
    void reset() override;

  private:
    double scale_ = 1;
    double scaleAtReference_ = 1;
    double referenceDistance_ = 0;
    double startDistance_ = 0;
};

}  // namespace orv::ui
