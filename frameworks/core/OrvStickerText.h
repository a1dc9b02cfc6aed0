#pragma once
// One text of a text sticker: its characters, look and place inside the sticker.

#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/AttributedString.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvStickerText : public rt::Object {
    ORV_DECLARE_CLASS(OrvStickerText)
  public:
    // The type is kept for the catalogue's sake; every text type draws the same way.
    static std::shared_ptr<OrvStickerText> textWithType(int type);

    int type() const { return type_; }

    const std::string& text() const { return text_; }
    void setText(std::string text) { text_ = std::move(text); }
    // Font size in points.
    double size() const { return size_; }
    void setSize(double size) { size_ = size; }
    const gfx::Color& color() const { return color_; }
    void setColor(const gfx::Color& color) { color_ = color; }
    const gfx::Color& shadowColor() const { return shadowColor_; }
    void setShadowColor(const gfx::Color& color) { shadowColor_ = color; }
    // The platform's alignment values: 0 left, 1 centred, 2 right.
    int alignment() const { return alignment_; }
    void setAlignment(int alignment) { alignment_ = alignment; }
    // Place inside the sticker in fractions of its size; empty means the whole sticker.
    const gfx::Rect& rect() const { return rect_; }
    void setRect(const gfx::Rect& rect) { rect_ = rect; }
    // The text's box on the screen when it was set, from which composition scales the font;
    // zero means none.
    const gfx::Size& rectSize() const { return rectSize_; }
    void setRectSize(const gfx::Size& size) { rectSize_ = size; }
    // The full attributes of an edited text; none for a plain one.
    const std::optional<gfx::TextAttributes>& textStyleDic() const { return textStyleDic_; }
    void setTextStyleDic(std::optional<gfx::TextAttributes> style) {
        textStyleDic_ = std::move(style);
    }
    // A ready rendering, drawn instead of the characters when present.
    const gfx::ImagePtr& textImage() const { return textImage_; }
    void setTextImage(gfx::ImagePtr image) { textImage_ = std::move(image); }

  private:
    int type_ = 0;
    std::string text_;
    double size_ = 17;
    gfx::Color color_ = gfx::Color::whiteColor();
    gfx::Color shadowColor_ = gfx::Color::black().withAlpha(0.5);
    int alignment_ = 1;
    gfx::Rect rect_;
    gfx::Size rectSize_;
    std::optional<gfx::TextAttributes> textStyleDic_;
    gfx::ImagePtr textImage_;
};
