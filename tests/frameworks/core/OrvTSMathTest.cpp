#include "frameworks/core/OrvTSMath.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frameworks/core/OrvViewExtension.h"

namespace {

TEST(OrvTSMath, AnglesGrowClockwiseAsAViewTurns) {
    const gfx::Point c{10, 10};
    EXPECT_DOUBLE_EQ(OrvTSMath::degreesWithPoint({20, 10}, c), 0);
    EXPECT_DOUBLE_EQ(OrvTSMath::degreesWithPoint({10, 20}, c), 90);  // below: a quarter clockwise
    EXPECT_DOUBLE_EQ(OrvTSMath::degreesWithPoint({10, 0}, c), -90);
    EXPECT_DOUBLE_EQ(OrvTSMath::degreesWithPoint({0, 10}, c), 180);
    EXPECT_DOUBLE_EQ(OrvTSMath::degreesWithPoint({0, -0.0}, {10, 0}), 180);  // never -180

    // A view turned by the angle of a point carries its own x axis onto that point.
    auto view = ui::makeView<ui::View>(gfx::Rect{0, 0, 40, 40});
    const gfx::Point p{13, 14};
    rotationWithDegrees(*view, OrvTSMath::degreesWithPoint(p, c));
    const gfx::Point axis = gfx::applyTransform(gfx::Point{5, 0}, view->transform());
    EXPECT_NEAR(axis.x, 3, 1e-9);
    EXPECT_NEAR(axis.y, 4, 1e-9);
}

TEST(OrvTSMath, AngleDifferencesWrapAcrossTheLeftAxis) {
    // The item turns by (degree + 360 + (a1 − a0)) mod 360; crossing the left axis must give a
    // small turn either way, not most of a circle.
    const gfx::Point c{0, 0};
    const double below = OrvTSMath::degreesWithPoint({-100, 2}, c);
    const double above = OrvTSMath::degreesWithPoint({-100, -2}, c);
    const double turn = 2 * OrvTSMath::degreesFromRadian(std::atan2(2, 100));
    EXPECT_NEAR(OrvTSMath::numberFloat(0 + 360.0 + (above - below), 360), turn, 1e-9);
    EXPECT_NEAR(OrvTSMath::numberFloat(0 + 360.0 + (below - above), 360), 360 - turn, 1e-9);
}

TEST(OrvTSMath, RemaindersDistancesAndUnits) {
    EXPECT_DOUBLE_EQ(OrvTSMath::numberFloat(725.5, 360), 5.5);
    EXPECT_DOUBLE_EQ(OrvTSMath::numberFloat(-30.25, 360), -30.25);  // the sign of the number
    EXPECT_DOUBLE_EQ(OrvTSMath::numberFloat(720, 360), 0);
    EXPECT_DOUBLE_EQ(OrvTSMath::distanceOfEndPoint({4, 6}, {1, 2}), 5);
    EXPECT_DOUBLE_EQ(OrvTSMath::distanceOfPointX1(-1, -1, 2, 3), 5);
    EXPECT_DOUBLE_EQ(OrvTSMath::degreesFromRadian(M_PI / 2), 90);
    EXPECT_DOUBLE_EQ(OrvTSMath::radianFromDegrees(-180), -M_PI);
}

}  // namespace
