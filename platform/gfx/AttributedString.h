#pragma once
// A string with text attributes over ranges of it (NSAttributedString and its attribute keys).

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/gfx/Color.h"
#include "platform/gfx/Font.h"
#include "platform/gfx/TextLayout.h"

namespace orv::gfx {

// The platform's numbering (NSWritingDirection).
enum class WritingDirection { Natural = -1, LeftToRight = 0, RightToLeft = 1 };

struct ParagraphStyle {
    TextAlignment alignment = TextAlignment::Natural;
    LineBreakMode lineBreakMode = LineBreakMode::WordWrap;
    double lineSpacing = 0;  // extra points between lines
    WritingDirection baseWritingDirection = WritingDirection::Natural;
    bool operator==(const ParagraphStyle&) const = default;
};

// The attributes of a run; a missing one takes the platform default (system font of 12
// points, black, no stroke, no underline, natural paragraph).
struct TextAttributes {
    std::optional<Font> font;              // NSFontAttributeName
    std::optional<Color> foregroundColor;  // NSForegroundColorAttributeName
    std::optional<Color> strokeColor;      // NSStrokeColorAttributeName; else foreground
    double strokeWidth = 0;                // NSStrokeWidthAttributeName: percent of the
                                           // font size; > 0 strokes only, < 0 fills and
                                           // strokes, 0 fills only
    int underlineStyle = 0;                // NSUnderlineStyleAttributeName: 0 none, 1 single
    std::optional<ParagraphStyle> paragraphStyle;  // NSParagraphStyleAttributeName
    // NSWritingDirectionAttributeName: forces the run's direction.
    std::optional<WritingDirection> writingDirection;
    bool operator==(const TextAttributes&) const = default;
};

class AttributedString {
  public:
    struct Run {
        size_t start = 0;  // byte offsets into the UTF-8 text
        size_t length = 0;
        TextAttributes attributes;
    };

    AttributedString() = default;
    // The whole text under one set of attributes.
    AttributedString(std::string text, TextAttributes attributes = {});

    const std::string& string() const { return text_; }
    // Runs cover the text in order without gaps.
    const std::vector<Run>& runs() const { return runs_; }
    // Replaces the attributes over [start, start + length) (clamped to the text and widened to
    // whole characters).
    void setAttributes(size_t start, size_t length, const TextAttributes& attributes);
    // The paragraph style of the first run (the platform reads a paragraph's style there).
    ParagraphStyle paragraphStyle() const;

  private:
    std::string text_;
    std::vector<Run> runs_;
};

}  // namespace orv::gfx
