#include "platform/gfx/TextLayout.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/gfx/Canvas.h"

namespace orv::gfx {
namespace {

const std::string kLongText =
    "The quick brown fox jumps over the lazy dog while the photographs load in the background.";

TextStyle styleOf(double size) {
    TextStyle s;
    s.font = Font::systemFont(size);
    return s;
}

TEST(TextLayoutTest, MeasuresInPoints) {
    const TextLayout short_("Hello", styleOf(14), {});
    const TextLayout longer("Hello, world", styleOf(14), {});
    EXPECT_GT(short_.size().width, 0);
    EXPECT_GT(longer.size().width, short_.size().width);
    // One line of a 14 pt font is at least 14 units tall, and not scaled by a screen resolution.
    EXPECT_GE(short_.size().height, 14);
    EXPECT_LT(short_.size().height, 14 * 1.8);
    EXPECT_EQ(short_.lineCount(), 1);
    const TextLayout bigger("Hello", styleOf(28), {});
    EXPECT_NEAR(bigger.size().width, 2 * short_.size().width, 0.5);
}

TEST(TextLayoutTest, ChineseHasRealGlyphs) {
    const TextLayout chinese("保存图片", styleOf(14), {});
    EXPECT_EQ(chinese.unknownGlyphCount(), 0);
    // Full-width glyphs are about an em each.
    EXPECT_GT(chinese.size().width, 4 * 14 * 0.9);
    EXPECT_LT(chinese.size().width, 4 * 14 * 1.1);
    EXPECT_EQ(TextLayout("Mixed 中文 text", styleOf(14), {}).unknownGlyphCount(), 0);
}

TEST(TextLayoutTest, WrapsAtTheMaximumWidth) {
    const TextLayout oneLine(kLongText, styleOf(14), {});
    const TextLayout wrapped(kLongText, styleOf(14), {100, 0});
    EXPECT_EQ(oneLine.lineCount(), 1);
    EXPECT_GT(wrapped.lineCount(), 3);
    EXPECT_LE(wrapped.size().width, 100);
    EXPECT_GT(wrapped.size().height, 3 * oneLine.size().height);
    // A word longer than the box is broken rather than sticking out.
    EXPECT_LE(TextLayout("Supercalifragilisticexpialidocious", styleOf(14), {60, 0}).size().width,
              60);
}

TEST(TextLayoutTest, LimitsTheLines) {
    TextStyle style = styleOf(14);
    style.numberOfLines = 1;
    style.lineBreak = LineBreakMode::TruncateTail;
    const TextLayout truncated(kLongText, style, {100, 0});
    EXPECT_EQ(truncated.lineCount(), 1);
    EXPECT_LE(truncated.size().width, 100);
    EXPECT_GT(truncated.size().width, 50);

    style.numberOfLines = 2;
    style.lineBreak = LineBreakMode::WordWrap;
    EXPECT_EQ(TextLayout(kLongText, style, {100, 0}).lineCount(), 2);

    style.numberOfLines = 1;
    style.lineBreak = LineBreakMode::Clip;
    EXPECT_LE(TextLayout(kLongText, style, {100, 0}).size().width, 100);

    // A box only two lines high keeps two lines.
    const double lineHeight = TextLayout("x", styleOf(14), {}).size().height;
    EXPECT_EQ(TextLayout(kLongText, styleOf(14), {100, 2.5 * lineHeight}).lineCount(), 2);
}

TEST(TextLayoutTest, LineSpacingAddsBetweenLines) {
    TextStyle spaced = styleOf(14);
    spaced.lineSpacing = 10;
    const double plain = TextLayout("a\nb", styleOf(14), {}).size().height;
    EXPECT_NEAR(TextLayout("a\nb", spaced, {}).size().height, plain + 10, 0.01);
}

TEST(TextLayoutTest, EmptyTextHasNoSize) {
    const TextLayout empty("", styleOf(14), {100, 100});
    EXPECT_EQ(empty.size(), (Size{0, 0}));
    EXPECT_EQ(empty.lineCount(), 0);
}

// The columns holding ink in a snapshot, as [first, last].
std::pair<int, int> inkColumns(const BitmapPtr& b) {
    int first = b->width(), last = -1;
    for (int y = 0; y < b->height(); ++y) {
        for (int x = 0; x < b->width(); ++x) {
            if (b->pixel(x, y)[3] > 0) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
        }
    }
    return {first, last};
}

TEST(TextLayoutTest, DrawsAlignedInTheRect) {
    TextStyle style = styleOf(20);
    style.color = Color::red();
    style.alignment = TextAlignment::Center;
    const TextLayout layout("中文", style, {});
    Canvas canvas({200, 40}, 2);
    layout.draw(canvas, {0, 5, 200, 30});
    const auto s = canvas.snapshot();
    const auto [first, last] = inkColumns(s);
    ASSERT_LT(first, last);
    EXPECT_NEAR((first + last) / 2.0, 200, 6);  // centred at 100 points × 2
    EXPECT_GT(last - first, 2 * 30);
    // The ink is the style's colour.
    bool sawRed = false;
    for (int x = first; x <= last && !sawRed; ++x) {
        for (int y = 0; y < s->height(); ++y) {
            const uint8_t* p = s->pixel(x, y);
            if (p[3] == 255 && p[0] == 255 && p[1] == 0) sawRed = true;
        }
    }
    EXPECT_TRUE(sawRed);
}

TEST(TextLayoutTest, MeasuresTheSameOnManyThreads) {
    const Size expected = TextLayout(kLongText, styleOf(13), {120, 0}).size();
    std::vector<std::thread> threads;
    std::vector<Size> results(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&results, i] {
            for (int n = 0; n < 20; ++n)
                results[i] = TextLayout(kLongText, styleOf(13), {120, 0}).size();
        });
    }
    for (auto& t : threads) t.join();
    for (const Size& s : results) EXPECT_EQ(s, expected);
}

}  // namespace
}  // namespace orv::gfx
