#include "platform/ui/Label.h"

#include <gtest/gtest.h>

#include "platform/gfx/Canvas.h"
#include "tests/platform/ui/ViewTestSupport.h"

namespace orv::ui::test {
namespace {

// Narrows the text's box on both sides, as subclasses with insets do.
class InsetLabel : public Label {
    ORV_DECLARE_CLASS(InsetLabel)
  public:
    gfx::Rect textRectForBounds(const gfx::Rect& bounds, int lines) const override {
        return Label::textRectForBounds(gfx::rectInset(bounds, 10, 0), lines);
    }
};
ORV_DEFINE_CLASS(InsetLabel, Label)

TEST_F(ViewTest, LabelSizeGrowsWithItsText) {
    auto label = makeView<Label>();
    EXPECT_EQ(label->sizeThatFits({100, 100}), gfx::Size(0, 0));
    label->setText("Hi");
    const gfx::Size shortSize = label->sizeThatFits({0, 0});
    label->setText("Hi there, a longer line");
    const gfx::Size longSize = label->sizeThatFits({0, 0});
    EXPECT_GT(shortSize.width, 0);
    EXPECT_GT(longSize.width, shortSize.width);
    EXPECT_EQ(longSize.height, shortSize.height);
    EXPECT_EQ(longSize.width, std::ceil(longSize.width));

    // One line ignores the width asked about; more lines wrap at it.
    EXPECT_EQ(label->sizeThatFits({50, 0}), longSize);
    label->setNumberOfLines(0);
    const gfx::Size wrapped = label->sizeThatFits({60, 0});
    EXPECT_LE(wrapped.width, 60);
    EXPECT_GT(wrapped.height, 2 * shortSize.height);

    label->setFont(gfx::Font::systemFont(34));
    EXPECT_GT(label->sizeThatFits({0, 0}).height, 1.5 * shortSize.height);
}

TEST_F(ViewTest, LabelTextRectStaysInsideTheBounds) {
    auto label = makeView<InsetLabel>({0, 0, 100, 40});
    label->setText("A text far too long for a hundred points");
    const gfx::Rect r = label->textRectForBounds(label->bounds(), 1);
    EXPECT_EQ(r.origin, gfx::Point(10, 0));
    EXPECT_LE(r.size.width, 80);
    EXPECT_GT(r.size.height, 0);
    EXPECT_LE(r.size.height, 40);
}

// Pixels of the label's drawing in pure `channel` (0 red, 1 green, 2 blue).
int pixelsIn(Label& label, int channel) {
    gfx::Canvas canvas(label.bounds().size, 1);
    label.drawRect(canvas, label.bounds());
    const gfx::BitmapPtr b = canvas.snapshot();
    int n = 0;
    for (int y = 0; y < b->height(); ++y) {
        for (int x = 0; x < b->width(); ++x) {
            const uint8_t* p = b->pixel(x, y);
            n += p[3] > 128 && p[channel] > 128 && p[(channel + 1) % 3] + p[(channel + 2) % 3] == 0;
        }
    }
    return n;
}

TEST_F(ViewTest, LabelAttributedTextStandsInForTheTextWhileSet) {
    auto label = makeView<Label>({0, 0, 200, 60});
    label->setText("Hi");
    label->setTextColor(gfx::Color::rgb(0, 1, 0));
    const gfx::Size plain = label->sizeThatFits({0, 0});
    gfx::TextAttributes big;
    big.font = gfx::Font::systemFont(34);
    big.foregroundColor = gfx::Color::red();
    label->setAttributedText(gfx::AttributedString("Hi", big));
    EXPECT_GT(label->sizeThatFits({0, 0}).height, 1.5 * plain.height);
    EXPECT_EQ(pixelsIn(*label, 1), 0);
    // The shadow is the attributed text in the shadow's colour.
    label->setShadowColor(gfx::Color::rgb(0, 0, 1));
    label->setShadowOffset({3, 3});
    EXPECT_GT(pixelsIn(*label, 0), 20);
    EXPECT_GT(pixelsIn(*label, 2), 20);

    label->setAttributedText(gfx::AttributedString(""));
    EXPECT_EQ(label->sizeThatFits({0, 0}), gfx::Size(0, 0));
    label->setAttributedText(std::nullopt);
    EXPECT_EQ(label->sizeThatFits({0, 0}), plain);
}

}  // namespace
}  // namespace orv::ui::test
