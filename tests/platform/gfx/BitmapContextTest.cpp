#include "platform/gfx/BitmapContext.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>

namespace orv::gfx {
namespace {

using Px = std::array<int, 4>;
constexpr Px kClear{0, 0, 0, 0};
constexpr Px kRed{255, 0, 0, 255};
constexpr Px kBlue{0, 0, 255, 255};
constexpr double kQuarterTurn = std::numbers::pi / 2;

// Bytes at column x of device row `row` (row 0 is the first in memory, the top).
Px at(const BitmapContext& c, int x, int row) {
    const uint8_t* p = c.data() + c.rowBytes() * row + 4 * x;
    return {p[0], p[1], p[2], p[3]};
}

BitmapPtr bitmapOf(int w, int h, const std::vector<Px>& px,
                   PixelFormat f = PixelFormat::RGBA8888Premultiplied) {
    auto b = std::make_shared<Bitmap>(w, h, f);
    for (size_t i = 0; i < px.size(); ++i)
        for (int k = 0; k < 4; ++k) b->mutableData()[4 * i + k] = static_cast<uint8_t>(px[i][k]);
    return b;
}

void fillAll(BitmapContext& c, const Color& color) {
    c.saveGState();
    c.setBlendMode(BlendMode::Copy);
    c.setFillColor(color);
    c.fillRect({0, 0, double(c.width()), double(c.height())});
    c.restoreGState();
}

int div255(int v) {
    return (v + 127) / 255;
}

TEST(BitmapContextTest, OwnedBufferStartsClearAndYGoesUp) {
    BitmapContext c(4, 3);
    ASSERT_EQ(c.width(), 4);
    ASSERT_EQ(c.rowBytes(), 16u);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(at(c, x, y), kClear);
    c.setFillColor(Color::red());
    c.fillRect({1, 0, 1, 1});  // bottom left area: the last row in memory
    EXPECT_EQ(at(c, 1, 2), kRed);
    EXPECT_EQ(at(c, 1, 0), kClear);
}

TEST(BitmapContextTest, DrawImageReproducesRowForRowAndStaysInItsRect) {
    const std::vector<Px> px{{1, 2, 3, 255},    {4, 5, 6, 255},    {7, 8, 9, 255},
                             {10, 11, 12, 255}, {13, 14, 15, 255}, {16, 17, 18, 200}};
    const BitmapPtr image = bitmapOf(3, 2, px);
    BitmapContext same(3, 2);
    same.drawImage({0, 0, 3, 2}, *image);
    EXPECT_EQ(std::memcmp(same.data(), image->data(), 24), 0);

    // Copy into a bigger, filled context: the picture lands with its top row at y 2..3 (row 1)
    // and nothing around it changes.
    BitmapContext big(5, 4);
    fillAll(big, Color::rgb(0, 0, 1));
    big.setBlendMode(BlendMode::Copy);
    big.drawImage({1, 1, 3, 2}, *image);
    EXPECT_EQ(at(big, 1, 1), px[0]);
    EXPECT_EQ(at(big, 3, 2), px[5]);
    for (Px p : {at(big, 0, 1), at(big, 4, 2), at(big, 1, 0), at(big, 1, 3)}) EXPECT_EQ(p, kBlue);
}

TEST(BitmapContextTest, BlendModesOnPremultipliedValues) {
    const Px d{60, 20, 100, 128};
    const Color src = Color::rgb(1, 0.5, 0, 0.5);  // premultiplied 128, 64, 0, 128
    const Px s{128, 64, 0, 128};
    auto expected = [&](BlendMode m) -> Px {
        Px r{};
        for (int k = 0; k < 4; ++k) {
            switch (m) {
                case BlendMode::Normal:
                    r[k] = s[k] + div255(d[k] * (255 - s[3]));
                    break;
                case BlendMode::Copy:
                    r[k] = s[k];
                    break;
                case BlendMode::SourceIn:
                    r[k] = div255(s[k] * d[3]);
                    break;
                case BlendMode::DestinationOut:
                    r[k] = div255(d[k] * (255 - s[3]));
                    break;
                case BlendMode::Clear:
                    r[k] = 0;
                    break;
            }
        }
        return r;
    };
    const BitmapPtr image = bitmapOf(2, 2, std::vector<Px>(4, s));
    for (BlendMode m : {BlendMode::Normal, BlendMode::Copy, BlendMode::SourceIn,
                        BlendMode::DestinationOut, BlendMode::Clear}) {
        for (bool picture : {false, true}) {
            SCOPED_TRACE(testing::Message() << "mode " << int(m) << " picture " << picture);
            BitmapContext c(4, 4);
            fillAll(c, Color::rgb(60 / 128.0, 20 / 128.0, 100 / 128.0, 128 / 255.0));
            ASSERT_EQ(at(c, 0, 0), d);
            c.setBlendMode(m);
            c.setFillColor(src);
            if (picture)
                c.drawImage({1, 1, 2, 2}, *image);
            else
                c.fillRect({1, 1, 2, 2});
            EXPECT_EQ(at(c, 1, 1), expected(m));
            EXPECT_EQ(at(c, 2, 2), expected(m));
            EXPECT_EQ(at(c, 0, 0), d);  // outside the shape nothing changes
            EXPECT_EQ(at(c, 3, 2), d);
        }
    }
}

TEST(BitmapContextTest, RotatedCopyAndSourceInLeaveTheCornersOfTheirBoxAlone) {
    for (BlendMode m : {BlendMode::Copy, BlendMode::SourceIn}) {
        BitmapContext c(21, 21);
        fillAll(c, Color::rgb(0, 0, 1));
        c.setBlendMode(m);
        c.translateCTM(10.5, 10.5);
        c.rotateCTM(std::numbers::pi / 4);
        c.drawImage({-8, -8, 16, 16}, *bitmapOf(1, 1, {kRed}));
        EXPECT_EQ(at(c, 10, 10), kRed);
        // The turned square's box reaches the corners; the square itself does not.
        EXPECT_EQ(at(c, 0, 10), kRed);
        EXPECT_EQ(at(c, 0, 0), kBlue);
        EXPECT_EQ(at(c, 20, 20), kBlue);
        // Its edges blend by coverage.
        const Px edge = at(c, 5, 4);
        EXPECT_GT(edge[0], 0);
        EXPECT_GT(edge[2], 0);
    }
}

TEST(BitmapContextTest, SamplingNearestGivesBlocksAndReductionAverages) {
    const BitmapPtr quad = bitmapOf(2, 2, {kRed, kBlue, kBlue, kRed});
    BitmapContext c(8, 8);
    c.setInterpolationQuality(InterpolationQuality::None);
    c.drawImage({0, 0, 8, 8}, *quad);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) EXPECT_EQ(at(c, x, y), (x < 4) == (y < 4) ? kRed : kBlue);

    // A one-pixel checkerboard reduced 16 times is an even mix, not a sample of it.
    std::vector<Px> board;
    for (int i = 0; i < 64 * 64; ++i)
        board.push_back((i % 64 + i / 64) % 2 ? Px{255, 255, 255, 255} : Px{0, 0, 0, 255});
    BitmapContext small(4, 4);
    small.drawImage({0, 0, 4, 4}, *bitmapOf(64, 64, board));
    for (int x = 0; x < 4; ++x) EXPECT_NEAR(at(small, x, 2)[0], 128, 3);
}

TEST(BitmapContextTest, NewestTransformStepActsFirst) {
    BitmapContext a(20, 20), b(20, 20);
    for (BitmapContext* c : {&a, &b}) c->setFillColor(Color::red());
    a.translateCTM(10, 10);
    a.rotateCTM(kQuarterTurn);  // counter-clockwise: x along +y
    a.fillRect({0, 0, 4, 1});   // base x 9..10, y 10..14
    EXPECT_EQ(at(a, 9, 7), kRed);
    EXPECT_EQ(at(a, 9, 10), kClear);
    EXPECT_EQ(at(a, 10, 7), kClear);
    b.rotateCTM(kQuarterTurn);
    b.translateCTM(10, -15);
    b.fillRect({0, 0, 4, 1});  // base x 14..15, y 10..14
    EXPECT_EQ(at(b, 14, 7), kRed);
    EXPECT_EQ(at(b, 9, 7), kClear);
}

TEST(BitmapContextTest, ClearRectAndStateSaving) {
    BitmapContext c(6, 6);
    fillAll(c, Color::red());
    c.saveGState();
    c.setBlendMode(BlendMode::Normal);
    c.translateCTM(1, 1);
    c.setAlpha(0.5);
    c.clearRect({0, 0, 2, 2});  // whatever the mode and alpha: transparent
    EXPECT_EQ(at(c, 1, 4), kClear);
    EXPECT_EQ(at(c, 0, 5), kRed);
    c.setFillColor(Color::rgb(0, 0, 1));
    c.clipToRect({3, 3, 1, 1});
    c.restoreGState();
    c.restoreGState();  // unbalanced: nothing happens
    EXPECT_TRUE(c.ctm().isIdentity());
    c.fillRect({0, 0, 1, 1});  // black, opaque, unclipped, untranslated
    EXPECT_EQ(at(c, 0, 5), (Px{0, 0, 0, 255}));
}

TEST(BitmapContextTest, ClipsToPlainAndTurnedRects) {
    BitmapContext c(20, 20);
    c.setFillColor(Color::red());
    c.clipToRect({2, 2, 16, 10});  // device rows 8..17
    c.translateCTM(10, 10);
    c.rotateCTM(std::numbers::pi / 4);
    c.clipToRect({-6, -6, 12, 12});
    c.fillRect({-100, -100, 200, 200});
    EXPECT_EQ(at(c, 10, 10), kRed);
    EXPECT_EQ(at(c, 10, 16), kRed);
    EXPECT_EQ(at(c, 2, 16), kClear);  // inside the plain clip, outside the turned one
    EXPECT_EQ(at(c, 10, 5), kClear);  // inside the turned clip, outside the plain one
}

TEST(BitmapContextTest, ShadowFallsByItsOffsetInBaseSpace) {
    BitmapContext c(20, 20);
    c.scaleCTM(2, 2);  // the offset does not follow the transform
    c.setShadow({3, 4}, 0, Color::black());
    c.setFillColor(Color::red());
    c.fillRect({2, 2, 2, 2});  // device columns 4..7, rows 12..15
    EXPECT_EQ(at(c, 5, 13), kRed);
    EXPECT_EQ(at(c, 9, 9), (Px{0, 0, 0, 255}));  // right and up
    EXPECT_EQ(at(c, 9, 13), kClear);

    BitmapContext blurred(30, 30);
    blurred.setShadow({0, 0}, 6, Color::black());
    blurred.setFillColor(Color::whiteColor());
    blurred.fillRect({10, 10, 10, 10});
    EXPECT_EQ(at(blurred, 15, 15), (Px{255, 255, 255, 255}));
    const int outside = at(blurred, 15, 8)[3];  // two pixels above the square
    EXPECT_GT(outside, 20);
    EXPECT_LT(outside, 200);
    EXPECT_EQ(at(blurred, 15, 0)[3], 0);
}

TEST(BitmapContextTest, SnapshotsAreCopiesAndCallerBuffersStayTheCallers) {
    std::vector<uint8_t> buffer(3 * 12, 0xee);  // 2 pixels and 4 padding bytes a row
    {
        BitmapContext c(buffer.data(), 2, 3, 12);
        EXPECT_EQ(c.data(), buffer.data());
        c.setBlendMode(BlendMode::Copy);
        c.setFillColor(Color::red());
        c.fillRect({0, 0, 2, 3});
        const BitmapPtr before = c.makeImage();
        c.clearRect({0, 0, 2, 3});
        EXPECT_EQ(before->pixel(1, 2)[0], 255);
        EXPECT_EQ(before->rowBytes(), 8u);
        c.setFillColor(Color::rgb(0, 0, 1));
        c.fillRect({1, 0, 1, 1});
    }
    EXPECT_EQ(buffer[2 * 12 + 4 + 2], 255);  // blue written in place
    EXPECT_EQ(buffer[0], 0);                 // cleared
    EXPECT_EQ(buffer[8], 0xee);              // padding untouched
}

TEST(BitmapContextTest, BlueFirstFormatsAsDestinationAndSource) {
    BitmapContext c(2, 1, PixelFormat::BGRA8888Premultiplied);
    c.setFillColor(Color::red());
    c.fillRect({0, 0, 1, 1});
    EXPECT_EQ(at(c, 0, 0), (Px{0, 0, 255, 255}));
    BitmapContext rgba(2, 1);
    rgba.drawImage({0, 0, 2, 1},
                   *bitmapOf(2, 1, {{10, 20, 30, 0}, {40, 50, 60, 7}}, PixelFormat::BGRX8888));
    EXPECT_EQ(at(rgba, 0, 0), (Px{30, 20, 10, 255}));
    EXPECT_EQ(at(rgba, 1, 0), (Px{60, 50, 40, 255}));
}

TEST(BitmapContextTest, PathsStrokesAndCairoDrawings) {
    BitmapContext c(10, 10);
    c.setShouldAntialias(false);
    c.setFillColor(Color::red());
    Path ring = Path::rect({1, 1, 8, 8});
    ring.addRect({3, 3, 4, 4});
    c.fillPath(ring, true);
    EXPECT_EQ(at(c, 1, 1), kRed);
    EXPECT_EQ(at(c, 5, 5), kClear);  // the even-odd hole
    c.fillPath(ring);
    EXPECT_EQ(at(c, 5, 5), kRed);

    BitmapContext line(10, 10);
    line.setShouldAntialias(false);
    line.setLineWidth(2);
    line.setStrokeColor(Color::rgb(0, 0, 1));
    Path p;
    p.moveTo({2, 5});
    p.lineTo({8, 5});
    line.strokePath(p);  // y 4..6: rows 4 and 5
    EXPECT_EQ(at(line, 2, 4), kBlue);
    EXPECT_EQ(at(line, 7, 5), kBlue);
    EXPECT_EQ(at(line, 1, 4), kClear);  // butt cap
    line.setLineCap(LineCap::Square);
    line.strokePath(p);
    EXPECT_EQ(at(line, 1, 4), kBlue);

    BitmapContext drawn(10, 10);
    drawn.translateCTM(2, 0);
    drawn.drawWithCairo({0, 0, 4, 4}, [](cairo_t* cr) {
        cairo_set_source_rgba(cr, 1, 0, 0, 1);
        cairo_rectangle(cr, 0, 0, 2, 1);
        cairo_fill(cr);
    });
    EXPECT_EQ(at(drawn, 2, 9), kRed);  // same space as fillRect: y up, translated
    EXPECT_EQ(at(drawn, 3, 9), kRed);
    EXPECT_EQ(at(drawn, 4, 9), kClear);
    EXPECT_EQ(at(drawn, 2, 8), kClear);
}

TEST(BitmapContextTest, OddInputsDrawNothingOrSomethingSensible) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    BitmapContext none(0, -3);
    none.fillRect({0, 0, 10, 10});
    EXPECT_EQ(none.makeImage()->width(), 0);
    BitmapContext c(8, 8);
    c.setFillColor(Color::red());
    c.fillRect({nan, 0, 1, 1});
    c.fillRect({0, 0, inf, 1});
    c.fillPath(Path());
    c.fillEllipseInRect({1e12, 1e12, 1e13, 1e13});
    c.drawImage({0, 0, 0, 5}, *bitmapOf(1, 1, {kRed}));
    EXPECT_EQ(at(c, 0, 7), kClear);
    c.saveGState();
    c.scaleCTM(0, 1);
    c.fillRect({0, 0, 8, 8});
    c.strokePath(Path::rect({1, 1, 2, 2}));
    c.drawWithCairo({0, 0, 8, 8}, [](cairo_t* cr) { cairo_paint(cr); });
    c.restoreGState();
    EXPECT_EQ(at(c, 0, 7), kClear);
    c.fillRect({-1e9, -1e9, 2e9, 2e9});  // huge but finite: covers everything
    EXPECT_EQ(at(c, 0, 0), kRed);
    EXPECT_EQ(at(c, 7, 7), kRed);
}

// A snapshot recycled from an earlier one must equal a fresh copy, whatever was drawn between,
// and one still held must never change.
TEST(BitmapContextSnapshots, RecycledSnapshotsMatchFreshCopiesAndHeldOnesStayPut) {
    BitmapContext recycling(64, 48), plain(64, 48);
    recycling.setRecyclesSnapshots(true);
    // Fills, and turned pictures (which the context composes itself) drawn over and erased.
    const BitmapPtr picture = bitmapOf(3, 2, {kRed, kBlue, kRed, {0, 0, 90, 90}, kBlue, kRed});
    auto drawBoth = [&](const Color& color, const Rect& rect, double angle) {
        for (BitmapContext* c : {&recycling, &plain}) {
            c->saveGState();
            c->translateCTM(rect.origin.x, rect.origin.y);
            c->rotateCTM(angle);
            const Rect area{0, 0, rect.size.width, rect.size.height};
            const int kind = int(rect.origin.x) % 3;
            c->setFillColor(color);
            if (kind == 0) {
                c->fillRect(area);
            } else {
                c->setBlendMode(kind == 1 ? BlendMode::Normal : BlendMode::DestinationOut);
                c->drawImage(area, *picture);
            }
            c->restoreGState();
        }
    };
    auto same = [](const BitmapPtr& a, const BitmapPtr& b) {
        return a->byteCount() == b->byteCount() &&
               std::memcmp(a->data(), b->data(), a->byteCount()) == 0;
    };
    BitmapPtr held = recycling.makeImage();
    const BitmapPtr heldCopy = plain.makeImage();
    for (int i = 0; i < 40; ++i) {
        drawBoth(Color::rgb(i / 40.0, 0.5, 1 - i / 40.0, 0.7),
                 {double(i % 50), double(i % 30), 9, 7}, i * 0.3);
        // Every third snapshot is dropped at once, so its buffer comes back for the next one.
        BitmapPtr snapshot = recycling.makeImage();
        ASSERT_TRUE(same(snapshot, plain.makeImage())) << i;
        if (i % 3) held = snapshot;
    }
    // A write the context cannot see, announced as asked.
    recycling.data()[0] = plain.data()[0] = 77;
    recycling.markChanged();
    EXPECT_TRUE(same(recycling.makeImage(), plain.makeImage()));
    // A snapshot taken before all that is untouched.
    BitmapContext untouched(64, 48);
    untouched.setRecyclesSnapshots(true);
    BitmapPtr first = untouched.makeImage();
    fillAll(untouched, Color::red());
    EXPECT_EQ(first->pixel(10, 10)[0], 0);
    EXPECT_EQ(untouched.makeImage()->pixel(10, 10)[0], 255);
    EXPECT_EQ(first->pixel(10, 10)[0], 0);
}

}  // namespace
}  // namespace orv::gfx
