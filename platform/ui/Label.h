#pragma once
// A view that shows a text: one line by default, cut with an ellipsis at the tail, centred
// vertically in its bounds. Subclasses change the text's box by overriding textRectForBounds()
// and drawTextInRect(), which the label's own measuring and drawing go through.

#include <optional>
#include <string>

#include "platform/gfx/AttributedString.h"
#include "platform/gfx/TextLayout.h"
#include "platform/ui/View.h"

namespace orv::ui {

class Label : public View {
    ORV_DECLARE_CLASS(Label)
  public:
    void initWithFrame(const gfx::Rect& frame) override;

    const std::string& text() const { return text_; }
    void setText(std::string text);
    const gfx::Font& font() const { return font_; }
    void setFont(const gfx::Font& font);
    gfx::Color textColor() const { return textColor_; }
    void setTextColor(const gfx::Color& color);
    gfx::TextAlignment textAlignment() const { return textAlignment_; }
    void setTextAlignment(gfx::TextAlignment alignment);
    // 0 means as many lines as the bounds hold.
    int numberOfLines() const { return numberOfLines_; }
    void setNumberOfLines(int lines);
    gfx::LineBreakMode lineBreakMode() const { return lineBreakMode_; }
    void setLineBreakMode(gfx::LineBreakMode mode);
    std::optional<gfx::Color> shadowColor() const { return shadowColor_; }
    void setShadowColor(std::optional<gfx::Color> color);
    gfx::Size shadowOffset() const { return shadowOffset_; }
    void setShadowOffset(gfx::Size offset);
    // While set, the label measures and draws this instead of its text, font, colour,
    // alignment and line break mode (the number of lines still applies).
    const std::optional<gfx::AttributedString>& attributedText() const { return attributedText_; }
    void setAttributedText(std::optional<gfx::AttributedString> text);

    // The box the text takes inside `bounds` with at most `numberOfLines` lines, from the
    // bounds' origin.
    virtual gfx::Rect textRectForBounds(const gfx::Rect& bounds, int numberOfLines) const;
    // Draws the text centred vertically in `rect`.
    virtual void drawTextInRect(gfx::Canvas& canvas, const gfx::Rect& rect);

    gfx::Size sizeThatFits(gfx::Size size) const override;
    void drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) override;
    bool hasCustomDrawing() const override { return true; }

  protected:
    gfx::TextStyle textStyle(int numberOfLines) const;

  private:
    bool hasText() const;
    // The label's text laid out in `box`; `color` replaces every colour (for the shadow).
    gfx::TextLayout layoutText(gfx::Size box, int numberOfLines,
                               std::optional<gfx::Color> color = std::nullopt) const;

    std::string text_;
    gfx::Font font_ = gfx::Font::systemFont(17);
    gfx::Color textColor_ = gfx::Color::black();
    gfx::TextAlignment textAlignment_ = gfx::TextAlignment::Natural;
    int numberOfLines_ = 1;
    gfx::LineBreakMode lineBreakMode_ = gfx::LineBreakMode::TruncateTail;
    std::optional<gfx::Color> shadowColor_;
    gfx::Size shadowOffset_{0, -1};
    std::optional<gfx::AttributedString> attributedText_;
};

}  // namespace orv::ui
