#pragma once
// Two fingers turning about each other. rotation() is in radians, positive clockwise on the
// screen, accumulated since the gesture started or since the last setRotation() (plus the value
// set then); it keeps counting past a half turn.

#include "platform/ui/TwoTouchGestureRecognizer.h"

namespace orv::ui {

class RotationGestureRecognizer : public TwoTouchGestureRecognizer {
    ORV_DECLARE_CLASS(RotationGestureRecognizer)
  public:
    // Radians the fingers must turn before the rotation begins (about two degrees).
    static constexpr double kHysteresis = 0.035;

    double rotation() const { return rotation_; }
    void setRotation(double radians) { rotation_ = radians; }

  protected:
    void startTracking() override;
    double trackMove() override;
    double hysteresis() const override { return kHysteresis; }
    void reset() override;

  private:
    double fingerAngle() const;

    double rotation_ = 0;
    double lastAngle_ = 0;
    double turned_ = 0;  // since the fingers started, for the hysteresis
};

}  // namespace orv::ui
