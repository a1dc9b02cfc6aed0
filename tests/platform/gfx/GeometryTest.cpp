#include "platform/gfx/Geometry.h"

#include <gtest/gtest.h>

#include <numbers>

namespace orv::gfx {
namespace {

void expectNear(Point actual, Point expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

TEST(AffineTransformTest, ConcatAppliesTheReceiverFirst) {
    const auto t = AffineTransform::translation(10, 0).concat(AffineTransform::scale(2, 2));
    expectNear(applyTransform(Point{1, 1}, t), {22, 2});
    // The Translate/Scale/Rotate forms put the new step before the existing one.
    const auto u = AffineTransform::scale(2, 2).translated(10, 0);
    expectNear(applyTransform(Point{1, 1}, u), {22, 2});
    const auto r = AffineTransform::translation(5, 0).rotated(std::numbers::pi / 2);
    expectNear(applyTransform(Point{1, 0}, r), {5, 1});
}

TEST(AffineTransformTest, InvertedUndoesAndSingularComesBack) {
    const auto t = AffineTransform::rotation(0.3).translated(5, 7).scaled(2, 3);
    const Point p{4, -9};
    expectNear(applyTransform(applyTransform(p, t), t.inverted()), p);
    const AffineTransform singular{1, 2, 2, 4, 3, 3};
    EXPECT_EQ(singular.inverted(), singular);
}

TEST(GeometryTest, RectIntersectionAndUnionEdges) {
    const Rect a{0, 0, 10, 10};
    EXPECT_EQ(rectIntersection(a, Rect{5, 5, 10, 10}), (Rect{5, 5, 5, 5}));
    // Rectangles that only touch do not intersect.
    EXPECT_FALSE(rectIntersectsRect(a, Rect{10, 0, 5, 5}));
    EXPECT_TRUE(rectIsEmpty(rectIntersection(a, Rect{10, 0, 5, 5})));
    EXPECT_TRUE(rectIsNull(rectIntersection(a, Rect{20, 20, 1, 1})));
    // Negative sizes are standardised; a null rectangle leaves the other unchanged.
    EXPECT_EQ(rectUnion(Rect{10, 10, -5, -5}, Rect{0, 0, 1, 1}), (Rect{0, 0, 10, 10}));
    EXPECT_EQ(rectUnion(rectNull(), a), a);
}

TEST(GeometryTest, ContainsPointHasOpenMaxEdges) {
    const Rect r{0, 0, 10, 10};
    EXPECT_TRUE(rectContainsPoint(r, {0, 0}));
    EXPECT_FALSE(rectContainsPoint(r, {10, 5}));
    EXPECT_FALSE(rectContainsPoint(r, {5, 10}));
    EXPECT_FALSE(rectContainsPoint(Rect{0, 0, 0, 10}, {0, 5}));
    EXPECT_TRUE(rectContainsRect(r, r));
}

TEST(GeometryTest, TransformedRectIsTheBoundingBox) {
    const Rect r =
        applyTransform(Rect{0, 0, 10, 20}, AffineTransform::rotation(std::numbers::pi / 2));
    EXPECT_NEAR(r.origin.x, -20, 1e-9);
    EXPECT_NEAR(r.origin.y, 0, 1e-9);
    EXPECT_NEAR(r.size.width, 20, 1e-9);
    EXPECT_NEAR(r.size.height, 10, 1e-9);
    const Rect d =
        applyTransform(Rect{0, 0, 10, 10}, AffineTransform::rotation(std::numbers::pi / 4));
    EXPECT_NEAR(d.size.width, 10 * std::numbers::sqrt2, 1e-9);
}

}  // namespace
}  // namespace orv::gfx
