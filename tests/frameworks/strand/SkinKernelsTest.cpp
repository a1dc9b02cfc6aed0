// Skin smoothing and face reshaping: what each must do to skin, to what is not skin, and to
// pictures and arguments that are out of the ordinary.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "frameworks/strand/kernels/FaceWarp.h"
#include "frameworks/strand/kernels/SkinSmooth.h"

namespace orv::strand {
namespace {

struct Rgba {
    int r, g, b, a;
};

constexpr Rgba kSkin{224, 172, 140, 255};
constexpr Rgba kBlue{40, 70, 200, 255};
constexpr Rgba kWhite{255, 255, 255, 255};

void put(gfx::Bitmap& bitmap, int x, int y, Rgba c) {
    uint8_t* p = bitmap.mutableRow(y) + 4 * x;
    p[0] = c.r, p[1] = c.g, p[2] = c.b, p[3] = c.a;
}

// A picture whose columns from `split` on are `right`, the rest `left`, each with noise.
gfx::BitmapPtr halves(int width, int height, Rgba left, Rgba right, int split, int noise) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    std::mt19937 random(7);
    std::uniform_int_distribution<int> jitter(-noise, noise);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const Rgba c = x < split ? left : right;
            const int n = jitter(random);
            auto channel = [&](int v) { return std::clamp(v + n, 0, c.a); };
            put(*bitmap, x, y, {channel(c.r), channel(c.g), channel(c.b), c.a});
        }
    return bitmap;
}

gfx::BitmapPtr patch(Rgba colour, int noise) {
    return halves(96, 96, colour, colour, 96, noise);
}

// Mean and variance of one channel over columns [x0, x1).
std::pair<double, double> stats(const gfx::Bitmap& b, int channel, int x0, int x1) {
    double sum = 0, square = 0;
    const double n = static_cast<double>(x1 - x0) * b.height();
    for (int y = 0; y < b.height(); ++y)
        for (int x = x0; x < x1; ++x) {
            const double v = b.pixel(x, y)[channel];
            sum += v, square += v * v;
        }
    return {sum / n, square / n - (sum / n) * (sum / n)};
}

bool sameBytes(const gfx::Bitmap& a, const gfx::Bitmap& b) {
    return a.width() == b.width() && a.height() == b.height() && a.byteCount() == b.byteCount() &&
           (a.byteCount() == 0 || std::memcmp(a.data(), b.data(), a.byteCount()) == 0);
}

double luma(const gfx::Bitmap& b) {
    return 0.299 * stats(b, 0, 0, b.width()).first + 0.587 * stats(b, 1, 0, b.width()).first +
           0.114 * stats(b, 2, 0, b.width()).first;
}

TEST(SkinSmoothTest, NothingAskedOrNothingThereChangesNothing) {
    const auto skin = patch(kSkin, 12);
    EXPECT_TRUE(sameBytes(*skin, *SkinSmooth::apply(*skin, {})));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(sameBytes(*skin, *SkinSmooth::apply(*skin, {nan, -1, nan})));
    // Out of range is the nearest end of it.
    EXPECT_TRUE(
        sameBytes(*SkinSmooth::apply(*skin, {1, 1, 1}), *SkinSmooth::apply(*skin, {7, 3, 1e9f})));
    for (int side : {0, 1, 2}) {
        const auto tiny = halves(side, side, kSkin, kSkin, side, 0);
        const auto out = SkinSmooth::apply(*tiny, {1, 1, 1});
        ASSERT_EQ(out->width(), side);
        if (side > 0) {
            EXPECT_EQ(out->pixel(0, 0)[3], 255);
        }
    }
}

TEST(SkinSmoothTest, SmoothsSkinButNotOtherColoursNorEdges) {
    const auto skin = patch(kSkin, 16);
    const auto smoothSkin = SkinSmooth::apply(*skin, {1, 0, 0});
    for (int c = 0; c < 3; ++c) {
        const auto [meanBefore, before] = stats(*skin, c, 0, 96);
        const auto [meanAfter, after] = stats(*smoothSkin, c, 0, 96);
        EXPECT_LT(after, before / 4) << c;
        EXPECT_NEAR(meanAfter, meanBefore, 2) << c;
    }
    const auto blue = patch(kBlue, 16);
    const auto smoothBlue = SkinSmooth::apply(*blue, {1, 0, 0});
    for (int c = 0; c < 3; ++c)
        EXPECT_GT(stats(*smoothBlue, c, 0, 96).second, 0.95 * stats(*blue, c, 0, 96).second);

    // The step between skin and a dark background stays a step.
    const auto edge = halves(96, 96, kSkin, {30, 40, 60, 255}, 48, 6);
    const auto smoothEdge = SkinSmooth::apply(*edge, {1, 0, 0});
    for (int c = 0; c < 3; ++c) {
        const double step = stats(*edge, c, 47, 48).first - stats(*edge, c, 48, 49).first;
        const double kept =
            stats(*smoothEdge, c, 47, 48).first - stats(*smoothEdge, c, 48, 49).first;
        EXPECT_GT(kept, 0.9 * step) << c;
    }
}

TEST(SkinSmoothTest, FairBrightensAndRuddyWarmsOnlySkin) {
    const auto skin = patch(kSkin, 4);
    EXPECT_GT(luma(*SkinSmooth::apply(*skin, {0, 1, 0})), luma(*skin) + 10);
    const auto ruddy = SkinSmooth::apply(*skin, {0, 0, 1});
    const auto ratio = [](const gfx::Bitmap& b) {
        return stats(b, 0, 0, 96).first / stats(b, 1, 0, 96).first;
    };
    EXPECT_GT(ratio(*ruddy), ratio(*skin) * 1.05);

    const auto blue = patch(kBlue, 4);
    EXPECT_TRUE(sameBytes(*blue, *SkinSmooth::apply(*blue, {0, 1, 1})));
}

TEST(SkinSmoothTest, KeepsAlphaAndPremultiplication) {
    // Half-transparent skin on the left, fully transparent on the right.
    const auto picture = halves(64, 64, {112, 86, 70, 128}, {0, 0, 0, 0}, 40, 8);
    const auto out = SkinSmooth::apply(*picture, {1, 1, 1});
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const uint8_t* p = out->pixel(x, y);
            ASSERT_EQ(p[3], picture->pixel(x, y)[3]);
            ASSERT_LE(std::max({p[0], p[1], p[2]}), p[3]) << x << "," << y;
        }
    EXPECT_GT(luma(*out), luma(*picture));
}

// A face of the 68-point layout: jaw on the lower half of an ellipse, eyes as small hexagons.
FaceLandmarks face(double cx, double cy, double halfWidth) {
    FaceLandmarks f;
    f.points.assign(68, gfx::Point{cx, cy});
    for (int i = 0; i <= 16; ++i) {
        const double angle = M_PI * i / 16;  // from the left ear under the chin to the right
        f.points[i] = {cx - halfWidth * std::cos(angle), cy + 1.2 * halfWidth * std::sin(angle)};
    }
    const double eyeHalf = 0.18 * halfWidth;
    for (int eye : {36, 42}) {
        const double ex = cx + (eye == 36 ? -0.4 : 0.4) * halfWidth, ey = cy - 0.3 * halfWidth;
        for (int k = 0; k < 6; ++k) {
            const double angle = M_PI * k / 3;
            f.points[eye + k] = {ex - eyeHalf * std::cos(angle),
                                 ey - 0.4 * eyeHalf * std::sin(angle)};
        }
    }
    return f;
}

// The centre of the dark pixels in a picture.
gfx::Point darkCentre(const gfx::Bitmap& b) {
    double sx = 0, sy = 0, weight = 0;
    for (int y = 0; y < b.height(); ++y)
        for (int x = 0; x < b.width(); ++x) {
            const double w = 255 - b.pixel(x, y)[0];
            sx += w * x, sy += w * y, weight += w;
        }
    return {sx / weight, sy / weight};
}

gfx::BitmapPtr whiteWithDot(int x0, int y0, int x1, int y1) {
    auto b = std::make_shared<gfx::Bitmap>(200, 200);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            put(*b, x, y, x >= x0 && x < x1 && y >= y0 && y < y1 ? Rgba{0, 0, 0, 255} : kWhite);
    return b;
}

TEST(FaceWarpTest, WithoutFacesOrStrengthsOrUsableLandmarksNothingMoves) {
    const auto picture = halves(120, 100, kSkin, kBlue, 60, 10);
    EXPECT_TRUE(sameBytes(*picture, *FaceWarp::apply(*picture, {1, 1, {}})));
    EXPECT_TRUE(sameBytes(*picture, *FaceWarp::apply(*picture, {0, 0, {face(60, 50, 30)}})));
    FaceLandmarks few{{{10, 10}, {20, 20}}};
    FaceLandmarks broken = face(60, 50, 30);
    broken.points[40].x = std::numeric_limits<double>::quiet_NaN();
    FaceLandmarks point = face(60, 50, 0);
    EXPECT_TRUE(sameBytes(*picture, *FaceWarp::apply(*picture, {1, 1, {few, broken, point}})));

    // Landmarks far outside are pulled to the border; tiny pictures survive.
    EXPECT_EQ(FaceWarp::apply(*picture, {1, 1, {face(1e6, -1e6, 1e7)}})->height(), 100);
    for (int side : {0, 1}) {
        const auto tiny = halves(side, side, kSkin, kSkin, side, 0);
        EXPECT_TRUE(sameBytes(*tiny, *FaceWarp::apply(*tiny, {1, 1, {face(0, 0, 10)}})));
    }
}

TEST(FaceWarpTest, EnlargedEyesPushADotOutwardAndLeaveTheRestAlone) {
    const FaceLandmarks f = face(100, 100, 60);  // left eye centre (76, 82), width about 22
    const auto picture = whiteWithDot(84, 80, 88, 84);
    const auto out = FaceWarp::apply(*picture, {1, 0, {f}});
    const gfx::Point before = darkCentre(*picture), after = darkCentre(*out);
    EXPECT_GT(after.x, before.x + 1);
    EXPECT_NEAR(after.y, before.y, 0.5);
    // Outside the eyes' reach nothing changes, and colour stays within alpha.
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x) {
            if (y < 40 || y > 125 || x < 30 || x > 170) {
                ASSERT_EQ(out->pixel(x, y)[0], 255);
            }
            ASSERT_EQ(out->pixel(x, y)[3], 255);
        }
}

TEST(FaceWarpTest, ThinnedCheeksPullTheJawLineTowardsTheNose) {
    const FaceLandmarks f = face(100, 80, 60);
    const gfx::Point jaw = f.points[4];  // left side, about (58, 131)
    const int x = static_cast<int>(jaw.x), y = static_cast<int>(jaw.y);
    const auto picture = whiteWithDot(x - 2, y - 2, x + 2, y + 2);
    const auto out = FaceWarp::apply(*picture, {0, 1, {f}});
    const gfx::Point before = darkCentre(*picture), after = darkCentre(*out);
    EXPECT_GT(after.x, before.x + 1);  // towards the nose at x = 100
    EXPECT_LT(after.y, before.y);      // and up, the nose being above
}

}  // namespace
}  // namespace orv::strand
