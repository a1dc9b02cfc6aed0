#include "platform/gfx/Path.h"

#include <gtest/gtest.h>

#include <numbers>

namespace orv::gfx {
namespace {

using Type = Path::ElementType;
constexpr double kPi = std::numbers::pi;

std::vector<Type> types(const Path& p) {
    std::vector<Type> out;
    for (const auto& e : p.elements()) out.push_back(e.type);
    return out;
}

Point cubicMidpoint(Point p0, const Path::Element& e) {
    const Point* c = e.points;
    return {(p0.x + 3 * c[0].x + 3 * c[1].x + c[2].x) / 8,
            (p0.y + 3 * c[0].y + 3 * c[1].y + c[2].y) / 8};
}

void expectNear(Point a, Point b) {
    EXPECT_NEAR(a.x, b.x, 1e-9);
    EXPECT_NEAR(a.y, b.y, 1e-9);
}

void expectNear(const Rect& a, const Rect& b) {
    expectNear(a.origin, b.origin);
    EXPECT_NEAR(a.size.width, b.size.width, 1e-9);
    EXPECT_NEAR(a.size.height, b.size.height, 1e-9);
}

TEST(PathTest, RectIsFourCornersClosed) {
    const Path p = Path::rect({1, 2, 10, 20});
    EXPECT_EQ(types(p),
              (std::vector{Type::MoveTo, Type::LineTo, Type::LineTo, Type::LineTo, Type::Close}));
    EXPECT_EQ(p.elements()[2].points[0], (Point{11, 22}));
    EXPECT_EQ(p.boundingBox(), (Rect{1, 2, 10, 20}));
    EXPECT_TRUE(rectIsNull(Path().boundingBox()));
}

TEST(PathTest, ClockwiseArcTurnsClockwiseOnScreen) {
    // From the right-hand point to the bottom one: with y down that is a quarter turn clockwise.
    const Path p = Path::arc({0, 0}, 10, 0, kPi / 2, true);
    ASSERT_EQ(types(p), (std::vector{Type::MoveTo, Type::CurveTo}));
    expectNear(p.elements()[1].points[2], {0, 10});
    const Point mid = cubicMidpoint(p.elements()[0].points[0], p.elements()[1]);
    EXPECT_NEAR(std::hypot(mid.x, mid.y), 10, 0.01);
    EXPECT_GT(mid.y, 0);
}

TEST(PathTest, CounterClockwiseArcTakesTheLongWayRound) {
    const Path p = Path::arc({0, 0}, 10, 0, kPi / 2, false);
    ASSERT_EQ(types(p), (std::vector{Type::MoveTo, Type::CurveTo, Type::CurveTo, Type::CurveTo}));
    // It passes the top of the circle (negative y) on its way.
    expectNear(p.elements()[1].points[2], {0, -10});
    expectNear(p.elements()[3].points[2], {0, 10});
}

TEST(PathTest, FullCircleFromTheTopHasTheCircleAsBounds) {
    const Path p = Path::arc({50, 50}, 20, -kPi / 2, 3 * kPi / 2, true);
    EXPECT_EQ(p.elements().size(), 5u);
    expectNear(p.elements().front().points[0], {50, 30});
    expectNear(p.elements().back().points[2], {50, 30});
    expectNear(p.boundingBox(), Rect{30, 30, 40, 40});
}

TEST(PathTest, ArcJoinsTheCurrentPointWithALine) {
    Path p;
    p.moveTo({0, 0});
    p.lineTo({5, 0});
    p.close();
    p.addArc({10, 10}, 5, 0, kPi, true);
    // After close the pen is back at the sub-path's start, so the join is a line from there.
    EXPECT_EQ(types(p)[3], Type::LineTo);
    expectNear(p.elements()[3].points[0], {15, 10});
}

TEST(PathTest, RoundedRectClampsTheRadiusAndKeepsTheBounds) {
    const Path p = Path::roundedRect({0, 0, 40, 10}, 50);
    expectNear(p.elements().front().points[0], {5, 0});
    expectNear(p.boundingBox(), Rect{0, 0, 40, 10});
    EXPECT_EQ(types(p).back(), Type::Close);
    EXPECT_EQ(types(Path::roundedRect({0, 0, 4, 4}, 0)).size(), 5u);  // plain rectangle
}

TEST(PathTest, BoundingBoxCountsControlPointsAndFollowsTransforms) {
    Path p;
    p.moveTo({0, 0});
    p.quadCurveTo({5, 20}, {10, 0});
    EXPECT_EQ(p.boundingBox(), (Rect{0, 0, 10, 20}));
    EXPECT_EQ(p.transformed(AffineTransform::translation(3, 4)).boundingBox(),
              (Rect{3, 4, 10, 20}));
}

}  // namespace
}  // namespace orv::gfx
