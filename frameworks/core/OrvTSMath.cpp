#include "frameworks/core/OrvTSMath.h"

#include <cmath>

double OrvTSMath::distanceOfPointX1(double x1, double y1, double x2, double y2) {
    return std::hypot(x2 - x1, y2 - y1);
}

double OrvTSMath::distanceOfEndPoint(gfx::Point end, gfx::Point start) {
    return distanceOfPointX1(start.x, start.y, end.x, end.y);
}

double OrvTSMath::degreesWithPoint(gfx::Point point, gfx::Point center) {
    // With y downward, atan2 already grows clockwise on the screen. A zero of negative sign
    // would give -180; the range is kept half-open as (-180, 180].
    const double degrees = degreesFromRadian(std::atan2(point.y - center.y, point.x - center.x));
    return degrees == -180.0 ? 180.0 : degrees;
}

double OrvTSMath::numberFloat(double number, long modulus) {
    return std::fmod(number, static_cast<double>(modulus));
}

double OrvTSMath::degreesFromRadian(double radian) {
    return radian * 180.0 / M_PI;
}

double OrvTSMath::radianFromDegrees(double degrees) {
    return degrees * M_PI / 180.0;
}
