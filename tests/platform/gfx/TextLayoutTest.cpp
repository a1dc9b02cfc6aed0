#include "platform/gfx/TextLayout.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <thread>

#include "platform/gfx/AttributedString.h"
#include "platform/gfx/Canvas.h"
#include "platform/gfx/ImageContext.h"

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

TextAttributes attributesOf(const Font& font, const Color& color = Color::black()) {
    TextAttributes a;
    a.font = font;
    a.foregroundColor = color;
    return a;
}

AttributedString withParagraph(const std::string& text, TextAttributes a,
                               const ParagraphStyle& paragraph) {
    a.paragraphStyle = paragraph;
    return AttributedString(text, a);
}

// The layout drawn at 1 pixel a point in `rect` of a transparent canvas.
BitmapPtr render(const TextLayout& layout, Size canvasSize, const Rect& rect) {
    Canvas canvas(canvasSize, 1);
    layout.draw(canvas, rect);
    return canvas.snapshot();
}

template <typename Predicate>
int countPixels(const BitmapPtr& b, Predicate predicate, int y0 = 0, int y1 = INT_MAX) {
    int n = 0;
    for (int y = y0; y < std::min(y1, b->height()); ++y) {
        for (int x = 0; x < b->width(); ++x) n += predicate(b->pixel(x, y), x, y);
    }
    return n;
}

auto isOpaque(uint8_t r, uint8_t g, uint8_t b) {
    return [=](const uint8_t* p, int, int) {
        return p[0] == r && p[1] == g && p[2] == b && p[3] == 255;
    };
}

bool rowHasInk(const BitmapPtr& b, int y) {
    return countPixels(
               b, [](const uint8_t* p, int, int) { return p[3] > 0; }, y, y + 1) > 0;
}

TEST(TextLayoutTest, AttributedRunsMeasureInTheirOwnFonts) {
    const AttributedString plain("Hello world", attributesOf(Font::systemFont(14)));
    AttributedString mixed = plain;
    mixed.setAttributes(6, 5, attributesOf(Font::systemFont(28)));
    EXPECT_GT(TextLayout(mixed, {}).size().width, TextLayout(plain, {}).size().width * 1.3);
    EXPECT_GT(TextLayout(mixed, {}).size().height, TextLayout(plain, {}).size().height * 1.5);
    const TextLayout narrow(mixed, {70, 0});
    EXPECT_GE(narrow.lineCount(), 2);
    EXPECT_LE(narrow.size().width, 70);

    // Missing attributes are the system font of 12 points, as sizeWithFont measures it.
    EXPECT_EQ(TextLayout(AttributedString("Hello"), {}).size(),
              TextLayout::measure("Hello", Font::systemFont(12)));
    EXPECT_EQ(TextLayout(AttributedString(""), {100, 100}).size(), (Size{0, 0}));
}

TEST(TextLayoutTest, FontsFallBack) {
    // A Latin-only family still shows Chinese, from the fallback fonts.
    const AttributedString mixed("Photo 照片 photo", attributesOf({"DejaVu Serif", 14}));
    EXPECT_EQ(TextLayout(mixed, {}).unknownGlyphCount(), 0);
    // A family nobody has is the default family.
    const Size missing = TextLayout::measure("Photo 照片", {"No Such Family Anywhere", 14});
    EXPECT_GT(missing.width, 0);
    EXPECT_EQ(missing, TextLayout::measure("Photo 照片", {"sans-serif", 14}));
}

TEST(TextLayoutTest, NaturalAlignmentFollowsTheWritingDirection) {
    const Rect rect{0, 0, 300, 40};
    auto columns = [&](const AttributedString& s) {
        return inkColumns(render(TextLayout(s, rect.size), rect.size, rect));
    };
    const TextAttributes a = attributesOf(Font::systemFont(20));
    EXPECT_GT(columns(AttributedString("שלום עולם", a)).first, 150);
    EXPECT_GT(columns(AttributedString("مرحبا بالعالم", a)).first, 150);
    EXPECT_LT(columns(AttributedString("Hello world", a)).second, 150);

    ParagraphStyle paragraph;
    paragraph.baseWritingDirection = WritingDirection::RightToLeft;
    EXPECT_GT(columns(withParagraph("Hello world", a, paragraph)).first, 150);
    paragraph.alignment = TextAlignment::Left;
    EXPECT_LT(columns(withParagraph("שלום עולם", a, paragraph)).second, 150);
}

TEST(TextLayoutTest, ForcedRunDirectionReversesOnlyThatRun) {
    // The override holds on both sides of the line break, and the run after keeps its colour.
    const TextAttributes blue = attributesOf(Font::systemFont(20), Color::rgb(0, 0, 1));
    TextAttributes forced = blue;
    forced.writingDirection = WritingDirection::RightToLeft;
    const TextAttributes red = attributesOf(Font::systemFont(20), Color::red());
    AttributedString text("ab\ncdef", red);
    text.setAttributes(0, 5, forced);
    AttributedString reversed("ba\ndcef", red);
    reversed.setAttributes(0, 5, blue);

    const Rect rect{0, 0, 100, 60};
    const BitmapPtr a = render(TextLayout(text, rect.size), rect.size, rect);
    const BitmapPtr b = render(TextLayout(reversed, rect.size), rect.size, rect);
    EXPECT_EQ(countPixels(a, [&](const uint8_t* p, int x,
                                 int y) { return std::memcmp(p, b->pixel(x, y), 4) != 0; }),
              0);
    EXPECT_GT(countPixels(a, [](const uint8_t* p, int, int) { return p[0] > 128 && p[2] == 0; }),
              40);
}

TEST(TextLayoutTest, StrokeWidthOutlinesOrFillsAndOutlines) {
    TextAttributes a = attributesOf(Font::boldSystemFont(100));
    a.strokeColor = Color::red();
    const Rect rect{0, 0, 100, 150};
    auto draw = [&](double strokeWidth) {
        a.strokeWidth = strokeWidth;
        return render(TextLayout(AttributedString("I", a), rect.size), rect.size, rect);
    };
    // A point inside the stem, from the filled glyph.
    const BitmapPtr filled = draw(0);
    const auto [first, last] = inkColumns(filled);
    ASSERT_GT(last - first, 10);
    const int x = (first + last) / 2;
    int y = 0;
    while (y < filled->height() && !rowHasInk(filled, y)) ++y;
    y += 30;
    ASSERT_TRUE(isOpaque(0, 0, 0)(filled->pixel(x, y), x, y));
    EXPECT_EQ(countPixels(filled, isOpaque(255, 0, 0)), 0);

    const BitmapPtr hollow = draw(4);
    EXPECT_EQ(hollow->pixel(x, y)[3], 0);
    EXPECT_GT(countPixels(hollow, isOpaque(255, 0, 0)), 100);
    const BitmapPtr both = draw(-4);
    EXPECT_TRUE(isOpaque(0, 0, 0)(both->pixel(x, y), x, y));
    EXPECT_GT(countPixels(both, isOpaque(255, 0, 0)), 100);
    // Without a stroke colour the outline takes the foreground's.
    a.strokeColor.reset();
    a.foregroundColor = Color::red();
    EXPECT_GT(countPixels(draw(4), isOpaque(255, 0, 0)), 100);
}

TEST(TextLayoutTest, UnderlineRunsBelowTheBaseline) {
    TextAttributes a = attributesOf(Font::systemFont(30));
    const Rect rect{10, 0, 180, 60};
    const BitmapPtr plain =
        render(TextLayout(AttributedString("ace", a), rect.size), {200, 60}, rect);
    a.underlineStyle = 1;
    const BitmapPtr lined =
        render(TextLayout(AttributedString("ace", a), rect.size), {200, 60}, rect);
    int baseline = plain->height() - 1;  // "ace" has no descender: its ink ends at the baseline
    while (baseline > 0 && !rowHasInk(plain, baseline)) --baseline;
    const auto [first, last] = inkColumns(plain);
    int underlineRows = 0;
    for (int y = 0; y < plain->height(); ++y) {
        if (!rowHasInk(lined, y) || rowHasInk(plain, y)) continue;
        EXPECT_GT(y, baseline);
        ++underlineRows;
        // A solid rule under the whole word.
        for (int x = first + 2; x <= last - 2; ++x) EXPECT_GT(lined->pixel(x, y)[3], 0) << x;
    }
    EXPECT_GE(underlineRows, 1);
}

TEST(TextLayoutTest, LongTextTruncatesOrWrapsInsideTheBox) {
    std::string longText;
    for (int i = 0; i < 2000; ++i) longText += "word 字 ";
    const TextAttributes a = attributesOf(Font::systemFont(14));
    ParagraphStyle paragraph;
    paragraph.lineBreakMode = LineBreakMode::TruncateTail;
    const TextLayout truncated(withParagraph(longText, a, paragraph), {150, 0}, 1);
    EXPECT_EQ(truncated.lineCount(), 1);
    EXPECT_GT(truncated.size().width, 100);
    EXPECT_LT(inkColumns(render(truncated, {200, 30}, {0, 0, 150, 30})).second, 150);

    paragraph.lineBreakMode = LineBreakMode::CharWrap;
    const TextLayout wrapped(withParagraph(longText, a, paragraph), {150, 100});
    EXPECT_GT(wrapped.lineCount(), 2);
    EXPECT_LE(wrapped.size().height, 100);
    EXPECT_LE(wrapped.size().width, 150);
}

TEST(TextLayoutTest, DrawsIntoAnImageContextAsOnACanvas) {
    // Descenders, an outline, an underline and a right-aligned second line: all of it must
    // come out upright and uncut, where the canvas puts it.
    TextAttributes a = attributesOf(Font::boldSystemFont(24), Color::rgb(0, 0, 1));
    a.strokeWidth = -3;
    a.strokeColor = Color::red();
    a.underlineStyle = 1;
    ParagraphStyle paragraph;
    paragraph.alignment = TextAlignment::Right;
    const Rect rect{6, 4, 180, 90};
    const TextLayout layout(withParagraph("Typography gjq\n照片 photo", a, paragraph), rect.size);
    Canvas canvas({200, 100}, 2);
    layout.draw(canvas, rect);
    ImageContext context({200, 100}, false, 2);
    layout.draw(context, rect);
    const BitmapPtr expected = canvas.snapshot();
    const BitmapPtr actual = context.makeImage();
    EXPECT_GT(countPixels(expected, [](const uint8_t* p, int, int) { return p[3] > 0; }), 1000);
    EXPECT_EQ(countPixels(actual,
                          [&](const uint8_t* p, int x, int y) {
                              const uint8_t* q = expected->pixel(x, y);
                              return std::abs(p[0] - q[0]) > 2 || std::abs(p[1] - q[1]) > 2 ||
                                     std::abs(p[2] - q[2]) > 2 || std::abs(p[3] - q[3]) > 2;
                          }),
              0);
}

}  // namespace
}  // namespace orv::gfx
