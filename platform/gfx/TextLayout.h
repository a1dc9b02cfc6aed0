#pragma once
// Text laid out for measuring and drawing (Pango underneath, Chinese and Latin alike, either
// writing direction).

#include <memory>
#include <string>

#include "platform/gfx/Color.h"
#include "platform/gfx/Font.h"
#include "platform/gfx/Geometry.h"

namespace orv::gfx {

class AttributedString;
class BitmapContext;
class Canvas;

enum class TextAlignment { Left = 0, Center = 1, Right = 2, Justified = 3, Natural = 4 };
// The platform's numbering: 0 word wrap, 1 char wrap, 2 clip, 3 head, 4 tail, 5 middle.
enum class LineBreakMode {
    WordWrap = 0,
    CharWrap = 1,
    Clip = 2,
    TruncateHead = 3,
    TruncateTail = 4,
    TruncateMiddle = 5
};

struct TextStyle {
    Font font = Font::systemFont(17);
    Color color = Color::black();
    TextAlignment alignment = TextAlignment::Left;
    LineBreakMode lineBreak = LineBreakMode::WordWrap;
    int numberOfLines = 0;  // 0: as many as fit
    double lineSpacing = 0;
};

class TextLayout {
  public:
    // Lays the text out in a box at most `maxSize` (a non-positive side means unbounded).
    TextLayout(std::string text, TextStyle style, Size maxSize);
    // The same for attributed text: each run in its own font, colours, stroke and underline;
    // the first run's paragraph style applies to the whole text. `numberOfLines` 0 means as
    // many lines as fit.
    TextLayout(const AttributedString& text, Size maxSize, int numberOfLines = 0);
    ~TextLayout();
    TextLayout(TextLayout&&) noexcept;
    TextLayout& operator=(TextLayout&&) noexcept;

    // The size the text takes, in points (fractional, as the platform measures it).
    Size size() const;
    int lineCount() const;
    // Characters no font on the system could show (drawn as boxes); 0 when all have glyphs.
    int unknownGlyphCount() const;
    // Draws the text in `rect`: aligned horizontally by the style, from the rect's top.
    void draw(Canvas& canvas, const Rect& rect) const;
    // The same through the context's transform, clip, alpha and blend mode; upright when the
    // context's user space is y down.
    void draw(BitmapContext& context, const Rect& rect) const;

    // The size of the text in an unbounded box, broken only at its newlines (sizeWithFont:).
    static Size measure(const std::string& text, const Font& font);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace orv::gfx
