#pragma once
// How a water mark is stamped on a finished photo: a picture, a text, or both side by side.

#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvWaterMarkOption : public rt::Object {
    ORV_DECLARE_CLASS(OrvWaterMarkOption)
  public:
    enum Position : int {
        kBottomLeft = 1,
        kBottomRight = 2,
        kTopRight = 3,
        kTopLeft = 4,
        kCenter = 5,
    };
    // The text position that puts the picture first and the text after it.
    static constexpr int kTextAfterPicture = 2;

    static std::shared_ptr<OrvWaterMarkOption> option() { return rt::make<OrvWaterMarkOption>(); }

    // Usable: a picture or a non-empty text is set.
    bool isValid() const { return markImage_ || !markText_.empty(); }

    const gfx::ImagePtr& markImage() const { return markImage_; }
    void setMarkImage(gfx::ImagePtr image) { markImage_ = std::move(image); }
    const std::string& markText() const { return markText_; }
    void setMarkText(std::string text) { markText_ = std::move(text); }
    double markTextSize() const { return markTextSize_; }
    void setMarkTextSize(double size) { markTextSize_ = size; }
    const gfx::Color& markTextColor() const { return markTextColor_; }
    void setMarkTextColor(const gfx::Color& color) { markTextColor_ = color; }
    const gfx::Color& markTextShadowColor() const { return markTextShadowColor_; }
    void setMarkTextShadowColor(const gfx::Color& color) { markTextShadowColor_ = color; }
    // Gap between picture and text, and distance from the photo's edges, in points.
    double markTextPadding() const { return markTextPadding_; }
    void setMarkTextPadding(double padding) { markTextPadding_ = padding; }
    double markMargin() const { return markMargin_; }
    void setMarkMargin(double margin) { markMargin_ = margin; }
    int markPosition() const { return markPosition_; }
    void setMarkPosition(int position) { markPosition_ = position; }
    int markTextPosition() const { return markTextPosition_; }
    void setMarkTextPosition(int position) { markTextPosition_ = position; }

  private:
    gfx::ImagePtr markImage_;
    std::string markText_;
    double markTextSize_ = 14;
    gfx::Color markTextColor_ = gfx::Color::whiteColor();
    gfx::Color markTextShadowColor_ = gfx::Color::black().withAlpha(0.5);
    double markTextPadding_ = 4;
    double markMargin_ = 10;
    int markPosition_ = kBottomRight;
    int markTextPosition_ = kTextAfterPicture;
};
