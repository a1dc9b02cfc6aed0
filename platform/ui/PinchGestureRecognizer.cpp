#include "platform/ui/PinchGestureRecognizer.h"

#include <cmath>

namespace orv::ui {

ORV_DEFINE_CLASS(PinchGestureRecognizer, TwoTouchGestureRecognizer)

void PinchGestureRecognizer::setScale(double scale) {
    scale_ = scaleAtReference_ = scale;
    if (hasBothTouches()) referenceDistance_ = touchDistance();
}

void PinchGestureRecognizer::startTracking() {
    startDistance_ = referenceDistance_ = touchDistance();
    scaleAtReference_ = scale_;
}

double PinchGestureRecognizer::trackMove() {
    const double d = touchDistance();
    if (referenceDistance_ > 0) {
        scale_ = scaleAtReference_ * d / referenceDistance_;
    } else {
        // Two fingers on one point give no ratio; measure from here on.
        referenceDistance_ = d;
        scaleAtReference_ = scale_;
    }
    return std::fabs(d - startDistance_);
}

void PinchGestureRecognizer::reset() {
    TwoTouchGestureRecognizer::reset();
    scale_ = scaleAtReference_ = 1;
    referenceDistance_ = startDistance_ = 0;
}

}  // namespace orv::ui
