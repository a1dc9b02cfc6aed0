#include "platform/ui/Label.h"

#include <algorithm>
#include <cmath>

#include "platform/gfx/Canvas.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Label, View)

void Label::initWithFrame(const gfx::Rect& frame) {
    View::initWithFrame(frame);
    setUserInteractionEnabled(false);
}

void Label::setText(std::string text) {
    text_ = std::move(text);
    setNeedsDisplay();
}

void Label::setFont(const gfx::Font& font) {
    font_ = font;
    setNeedsDisplay();
}

void Label::setTextColor(const gfx::Color& color) {
    textColor_ = color;
    setNeedsDisplay();
}

void Label::setTextAlignment(gfx::TextAlignment alignment) {
    textAlignment_ = alignment;
    setNeedsDisplay();
}

void Label::setNumberOfLines(int lines) {
    numberOfLines_ = std::max(0, lines);
    setNeedsDisplay();
}

void Label::setLineBreakMode(gfx::LineBreakMode mode) {
    lineBreakMode_ = mode;
    setNeedsDisplay();
}

void Label::setShadowColor(std::optional<gfx::Color> color) {
    shadowColor_ = color;
    setNeedsDisplay();
}

void Label::setShadowOffset(gfx::Size offset) {
    shadowOffset_ = offset;
    setNeedsDisplay();
}

void Label::setAttributedText(std::optional<gfx::AttributedString> text) {
    attributedText_ = std::move(text);
    setNeedsDisplay();
}

bool Label::hasText() const {
    return attributedText_ ? !attributedText_->string().empty() : !text_.empty();
}

gfx::TextLayout Label::layoutText(gfx::Size box, int numberOfLines,
                                  std::optional<gfx::Color> color) const {
    if (!attributedText_) {
        gfx::TextStyle style = textStyle(numberOfLines);
        style.color = color.value_or(style.color);
        return gfx::TextLayout(text_, style, box);
    }
    if (!color) return gfx::TextLayout(*attributedText_, box, numberOfLines);
    gfx::AttributedString recoloured = *attributedText_;
    for (const gfx::AttributedString::Run& run : attributedText_->runs()) {
        gfx::TextAttributes attributes = run.attributes;
        attributes.foregroundColor = attributes.strokeColor = color;
        recoloured.setAttributes(run.start, run.length, attributes);
    }
    return gfx::TextLayout(recoloured, box, numberOfLines);
}

gfx::TextStyle Label::textStyle(int numberOfLines) const {
    gfx::TextStyle style;
    style.font = font_;
    style.color = textColor_;
    style.alignment = textAlignment_;
    style.lineBreak = lineBreakMode_;
    style.numberOfLines = numberOfLines;
    return style;
}

gfx::Rect Label::textRectForBounds(const gfx::Rect& bounds, int numberOfLines) const {
    if (!hasText()) return {bounds.origin, {0, 0}};
    const gfx::Size size = layoutText(bounds.size, numberOfLines).size();
    // Whole points, as the platform measures labels, but never beyond the bounds.
    return {bounds.origin,
            {std::min(std::ceil(size.width), bounds.size.width),
             std::min(std::ceil(size.height), bounds.size.height)}};
}

void Label::drawTextInRect(gfx::Canvas& canvas, const gfx::Rect& rect) {
    if (!hasText()) return;
    const gfx::Rect textRect = textRectForBounds(rect, numberOfLines_);
    const gfx::Rect box{rect.origin.x,
                        rect.origin.y + (rect.size.height - textRect.size.height) / 2,
                        rect.size.width, textRect.size.height};
    if (shadowColor_ && shadowColor_->a > 0) {
        layoutText(rect.size, numberOfLines_, shadowColor_)
            .draw(canvas, gfx::rectOffset(box, shadowOffset_.width, shadowOffset_.height));
    }
    layoutText(rect.size, numberOfLines_).draw(canvas, box);
}

gfx::Size Label::sizeThatFits(gfx::Size size) const {
    if (!hasText()) return {0, 0};
    // One line runs as long as the text; more lines wrap at the width asked about.
    const double width = numberOfLines_ == 1 ? 0 : size.width;
    const gfx::Size measured = layoutText({width, 0}, numberOfLines_).size();
    return {std::ceil(measured.width), std::ceil(measured.height)};
}

void Label::drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) {
    drawTextInRect(canvas, bounds());
}

}  // namespace orv::ui
