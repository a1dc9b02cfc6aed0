#pragma once
// A view that shows a picture placed by its content mode. Like the platform's, it takes no
// touches unless told to. A template image is drawn as its shape alone, filled with the tint.

#include <optional>

#include "platform/gfx/Image.h"
#include "platform/ui/View.h"

namespace orv::ui {

class ImageView : public View {
    ORV_DECLARE_CLASS(ImageView)
  public:
    // An image view the size of the picture, at the origin.
    static std::shared_ptr<ImageView> withImage(gfx::ImagePtr image);

    void initWithFrame(const gfx::Rect& frame) override;

    const gfx::ImagePtr& image() const { return image_; }
    virtual void setImage(gfx::ImagePtr image);
    // The tint of template drawing; the platform's default tint when none is set.
    std::optional<gfx::Color> tintColor() const { return tintColor_; }
    void setTintColor(std::optional<gfx::Color> color);
    // Template rendering (the picture's rendering mode "always template"): only its alpha counts.
    bool rendersAsTemplate() const { return rendersAsTemplate_; }
    void setRendersAsTemplate(bool on);

    gfx::Size sizeThatFits(gfx::Size size) const override;
    void drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) override;
    bool hasCustomDrawing() const override { return true; }

    // Where a picture of `imageSize` lands in `bounds` under `mode`.
    static gfx::Rect imageRect(ContentMode mode, const gfx::Rect& bounds, gfx::Size imageSize);

    static gfx::Color defaultTintColor() { return gfx::Color::rgb(0, 122 / 255.0, 1); }

  private:
    gfx::ImagePtr image_;
    std::optional<gfx::Color> tintColor_;
    bool rendersAsTemplate_ = false;
};

}  // namespace orv::ui
