#include "platform/ui/RotationGestureRecognizer.h"

#include <cmath>
#include <numbers>

namespace orv::ui {

ORV_DEFINE_CLASS(RotationGestureRecognizer, TwoTouchGestureRecognizer)

void RotationGestureRecognizer::startTracking() {
    lastAngle_ = fingerAngle();
    turned_ = 0;
}

double RotationGestureRecognizer::trackMove() {
    const double angle = fingerAngle();
    // The shorter way round between two samples, so crossing the ±pi line is no jump.
    const double step = std::remainder(angle - lastAngle_, 2 * std::numbers::pi);
    lastAngle_ = angle;
    rotation_ += step;
    turned_ += step;
    return std::fabs(turned_);
}

void RotationGestureRecognizer::reset() {
    TwoTouchGestureRecognizer::reset();
    rotation_ = lastAngle_ = turned_ = 0;
}

double RotationGestureRecognizer::fingerAngle() const {
    // With y growing downward, a growing angle turns clockwise on the screen.
    const gfx::Point a = firstLocation(), b = secondLocation();
    return std::atan2(b.y - a.y, b.x - a.x);
}

}  // namespace orv::ui
