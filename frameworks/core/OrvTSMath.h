#pragma once
// Plane geometry on doubles for the gesture code.

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Geometry.h"

class OrvTSMath {
  public:
    static double distanceOfPointX1(double x1, double y1, double x2, double y2);
    static double distanceOfEndPoint(gfx::Point end, gfx::Point start);
    // The polar angle of the point about the centre in degrees, growing clockwise on the
    // screen (as rotationWithDegrees turns a view), in (−180, 180].
    static double degreesWithPoint(gfx::Point point, gfx::Point center);
    // The floating remainder of number by a whole modulus, with the sign of number (fmod).
    static double numberFloat(double number, long modulus);
    static double degreesFromRadian(double radian);
    static double radianFromDegrees(double degrees);
};
