#include "platform/gfx/Canvas.h"

#include <gtest/gtest.h>

#include <array>
#include <numbers>

namespace orv::gfx {
namespace {

using Rgba = std::array<int, 4>;
constexpr Rgba kClear{0, 0, 0, 0};
constexpr Rgba kRed{255, 0, 0, 255};
constexpr Rgba kBlue{0, 0, 255, 255};

Rgba at(const BitmapPtr& b, int x, int y) {
    const uint8_t* p = b->pixel(x, y);
    return {p[0], p[1], p[2], p[3]};
}

void expectNear(const Rgba& actual, const Rgba& expected, int tolerance) {
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(actual[i], expected[i], tolerance) << "component " << i;
}

// A picture of one row and `colors.size()` columns of opaque colours, or with the given alpha.
ImagePtr strip(std::vector<Rgba> colors, int rows = 1, ImageOrientation o = ImageOrientation::Up) {
    auto b = std::make_shared<Bitmap>(static_cast<int>(colors.size()), rows);
    for (int y = 0; y < rows; ++y) {
        for (size_t x = 0; x < colors.size(); ++x) {
            for (int c = 0; c < 4; ++c)
                b->mutableRow(y)[4 * x + c] = static_cast<uint8_t>(colors[x][c]);
        }
    }
    return Image::withBitmap(b, 1, o);
}

TEST(CanvasTest, FillRectCoversExactlyItsPixelsAtTheDeviceScale) {
    Canvas canvas({10, 10}, 2);
    canvas.fillRect({2, 2, 4, 4}, Color::red());
    const auto s = canvas.snapshot();
    ASSERT_EQ(s->width(), 20);
    EXPECT_EQ(at(s, 4, 4), kRed);
    EXPECT_EQ(at(s, 11, 11), kRed);
    EXPECT_EQ(at(s, 3, 4), kClear);
    EXPECT_EQ(at(s, 12, 11), kClear);
}

TEST(CanvasTest, HalfTransparentFillBlendsOverOpaque) {
    Canvas canvas({4, 4}, 1);
    canvas.fill(Color::whiteColor());
    canvas.fillRect({0, 0, 4, 4}, Color::black().withAlpha(0.5));
    expectNear(at(canvas.snapshot(), 1, 1), {128, 128, 128, 255}, 1);
}

TEST(CanvasTest, GlobalAlphaMultipliesAndIsRestored) {
    Canvas canvas({4, 4}, 1);
    canvas.save();
    canvas.setAlpha(0.5);
    canvas.setAlpha(0.5);
    EXPECT_DOUBLE_EQ(canvas.alpha(), 0.25);
    canvas.fillRect({0, 0, 2, 4}, Color::red());
    canvas.restore();
    EXPECT_DOUBLE_EQ(canvas.alpha(), 1);
    canvas.fillRect({2, 0, 2, 4}, Color::red());
    const auto s = canvas.snapshot();
    expectNear(at(s, 0, 0), {64, 0, 0, 64}, 1);  // premultiplied
    EXPECT_EQ(at(s, 3, 0), kRed);
}

TEST(CanvasTest, TransparencyLayerBlendsAsOneSheet) {
    Canvas canvas({10, 4}, 1);
    canvas.setAlpha(0.5);
    canvas.beginTransparencyLayer();
    EXPECT_DOUBLE_EQ(canvas.alpha(), 1);
    canvas.save();  // left open on purpose: ending the layer closes it
    canvas.fillRect({0, 0, 6, 4}, Color::red());
    canvas.fillRect({4, 0, 6, 4}, Color::red());
    canvas.endTransparencyLayer(0.5);
    EXPECT_DOUBLE_EQ(canvas.alpha(), 0.5);
    const auto s = canvas.snapshot();
    // The overlap is no darker than the rest: 0.5 × 0.5 of opaque red, premultiplied.
    expectNear(at(s, 1, 1), {64, 0, 0, 64}, 1);
    EXPECT_EQ(at(s, 5, 1), at(s, 1, 1));
    canvas.restore();  // nothing left to restore: ignored
    canvas.endTransparencyLayer();
    EXPECT_DOUBLE_EQ(canvas.alpha(), 0.5);
}

TEST(CanvasTest, ClipLimitsDrawingUntilRestore) {
    Canvas canvas({10, 10}, 1);
    canvas.save();
    canvas.clipToRect({0, 0, 5, 10});
    canvas.fill(Color::red());
    canvas.restore();
    auto s = canvas.snapshot();
    EXPECT_EQ(at(s, 4, 5), kRed);
    EXPECT_EQ(at(s, 5, 5), kClear);

    Canvas rounded({10, 10}, 1);
    rounded.clipToRoundedRect({0, 0, 10, 10}, 5);
    rounded.fill(Color::red());
    s = rounded.snapshot();
    EXPECT_EQ(at(s, 0, 0), kClear);
    EXPECT_EQ(at(s, 5, 5), kRed);
}

TEST(CanvasTest, TransformsApplyNewestFirst) {
    Canvas canvas({20, 20}, 1);
    canvas.translate(10, 0);
    canvas.concat(AffineTransform::rotation(std::numbers::pi / 2));
    // (x, y) lands at (10 - y, x): the 4×2 rectangle becomes x 8..10, y 0..4.
    canvas.fillRect({0, 0, 4, 2}, Color::red());
    const auto s = canvas.snapshot();
    EXPECT_EQ(at(s, 8, 3), kRed);
    EXPECT_EQ(at(s, 9, 0), kRed);
    EXPECT_EQ(at(s, 10, 1), kClear);
    EXPECT_EQ(at(s, 8, 4), kClear);
}

TEST(CanvasTest, SingularTransformDrawsNothingUntilRestored) {
    Canvas canvas({4, 4}, 1);
    canvas.save();
    canvas.concat(AffineTransform::scale(0, 0));
    canvas.fill(Color::red());
    canvas.restore();
    EXPECT_EQ(at(canvas.snapshot(), 1, 1), kClear);
    canvas.translate(1, 0);
    canvas.fillRect({0, 0, 1, 1}, Color::red());
    EXPECT_EQ(at(canvas.snapshot(), 1, 0), kRed);
}

TEST(CanvasTest, BorderIsDrawnInsideTheEdgeAndFollowsTheCorners) {
    Canvas canvas({10, 10}, 1);
    canvas.strokeRectInside({0, 0, 10, 10}, 2, 0, Color::red());
    auto s = canvas.snapshot();
    EXPECT_EQ(at(s, 0, 5), kRed);
    EXPECT_EQ(at(s, 1, 5), kRed);
    EXPECT_EQ(at(s, 9, 5), kRed);
    EXPECT_EQ(at(s, 5, 8), kRed);
    EXPECT_EQ(at(s, 2, 5), kClear);
    EXPECT_EQ(at(s, 5, 5), kClear);

    Canvas round({20, 20}, 1);
    round.strokeRectInside({0, 0, 20, 20}, 2, 8, Color::red());
    s = round.snapshot();
    EXPECT_EQ(at(s, 0, 0), kClear);
    EXPECT_EQ(at(s, 10, 0), kRed);
    EXPECT_EQ(at(s, 10, 10), kClear);
}

TEST(CanvasTest, StrokeEndAndStartDrawAFractionOfTheLength) {
    const Path circle =
        Path::arc({10, 10}, 8, -std::numbers::pi / 2, 3 * std::numbers::pi / 2, true);
    StrokeStyle half;
    half.width = 4;
    half.strokeEnd = 0.5;
    Canvas first({20, 20}, 1);
    first.strokePath(circle, Color::rgb(0, 0, 1), half);
    auto s = first.snapshot();
    // From the top, clockwise: the right half only.
    EXPECT_EQ(at(s, 17, 10), kBlue);
    EXPECT_EQ(at(s, 2, 10), kClear);

    half.strokeStart = 0.5;
    half.strokeEnd = 1;
    Canvas second({20, 20}, 1);
    second.strokePath(circle, Color::rgb(0, 0, 1), half);
    s = second.snapshot();
    EXPECT_EQ(at(s, 17, 10), kClear);
    EXPECT_EQ(at(s, 2, 10), kBlue);

    half.strokeStart = half.strokeEnd = 0.5;
    Canvas none({20, 20}, 1);
    none.strokePath(circle, Color::rgb(0, 0, 1), half);
    EXPECT_EQ(at(none.snapshot(), 17, 10), kClear);
}

TEST(CanvasTest, StrokeCapsReachPastTheEnds) {
    Path line;
    line.moveTo({5, 10});
    line.lineTo({15, 10});
    StrokeStyle style;
    style.width = 4;
    Canvas butt({20, 20}, 1);
    butt.strokePath(line, Color::red(), style);
    EXPECT_EQ(at(butt.snapshot(), 4, 10), kClear);
    style.cap = LineCap::Square;
    Canvas square({20, 20}, 1);
    square.strokePath(line, Color::red(), style);
    EXPECT_EQ(at(square.snapshot(), 4, 10), kRed);
}

TEST(CanvasTest, DrawImageScalesIntoTheRect) {
    Canvas canvas({20, 20}, 1);
    canvas.drawImage(*strip({kRed, kBlue}, 2), {0, 0, 20, 10});
    const auto s = canvas.snapshot();
    EXPECT_EQ(at(s, 0, 0), kRed);
    EXPECT_EQ(at(s, 3, 9), kRed);
    EXPECT_EQ(at(s, 19, 9), kBlue);
    EXPECT_EQ(at(s, 16, 0), kBlue);
    EXPECT_EQ(at(s, 5, 10), kClear);
}

TEST(CanvasTest, DrawImageAppliesTheOrientation) {
    // Two columns, red then blue; turned a quarter they stand one above the other.
    Canvas right({10, 20}, 1);
    right.drawImage(*strip({kRed, kBlue}, 1, ImageOrientation::Right), {0, 0, 10, 20});
    EXPECT_EQ(at(right.snapshot(), 5, 1), kRed);
    EXPECT_EQ(at(right.snapshot(), 5, 18), kBlue);
    Canvas left({10, 20}, 1);
    left.drawImage(*strip({kRed, kBlue}, 1, ImageOrientation::Left), {0, 0, 10, 20});
    EXPECT_EQ(at(left.snapshot(), 5, 1), kBlue);
    EXPECT_EQ(at(left.snapshot(), 5, 18), kRed);
    Canvas mirrored({20, 10}, 1);
    mirrored.drawImage(*strip({kRed, kBlue}, 1, ImageOrientation::UpMirrored), {0, 0, 20, 10});
    EXPECT_EQ(at(mirrored.snapshot(), 1, 5), kBlue);
}

TEST(CanvasTest, DrawImageHonoursGlobalAlphaAndOtherFormats) {
    auto bgra = std::make_shared<Bitmap>(1, 1, PixelFormat::BGRA8888Premultiplied);
    bgra->mutableData()[0] = 255;  // blue
    bgra->mutableData()[3] = 255;
    Canvas canvas({4, 4}, 1);
    canvas.setAlpha(0.5);
    canvas.drawImage(*Image::withBitmap(bgra), {0, 0, 4, 4});
    expectNear(at(canvas.snapshot(), 2, 2), {0, 0, 128, 128}, 1);
}

TEST(CanvasTest, TintedImageFillsTheImageAlpha) {
    Canvas canvas({20, 10}, 1);
    canvas.drawImageTinted(*strip({{255, 255, 255, 255}, kClear}), {0, 0, 20, 10},
                           Color::rgb(0, 0, 1));
    const auto s = canvas.snapshot();
    EXPECT_EQ(at(s, 2, 5), kBlue);
    EXPECT_EQ(at(s, 17, 5), kClear);
}

TEST(CanvasTest, RadialGradientFillsOnlyItsDisc) {
    Canvas canvas({20, 20}, 1);
    canvas.drawRadialGradient({10, 10}, 8, Color::red(), Color::rgb(0, 0, 1));
    const auto s = canvas.snapshot();
    expectNear(at(s, 10, 10), kRed, 40);
    EXPECT_GT(at(s, 17, 10)[2], 200);
    EXPECT_EQ(at(s, 0, 0), kClear);
}

TEST(CanvasTest, SnapshotIsUnaffectedByLaterDrawing) {
    Canvas canvas({4, 4}, 1);
    canvas.fill(Color::red());
    const auto before = canvas.snapshot();
    canvas.fill(Color::rgb(0, 0, 1));
    EXPECT_EQ(at(before, 1, 1), kRed);
    EXPECT_EQ(at(canvas.snapshot(), 1, 1), kBlue);
}

}  // namespace
}  // namespace orv::gfx
