#pragma once
// A control with a title, an image and a background image for each state. What it shows is the
// value set for its current state, or the normal state's value when none was set for it. The
// image and the title sit side by side, centred together; the background image fills the bounds.

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/gfx/Color.h"
#include "platform/gfx/Image.h"
#include "platform/ui/Control.h"

namespace orv::ui {

class Label;
class ImageView;

// The platform's numbering.
enum class ButtonType {
    Custom = 0,
    System = 1,
    DetailDisclosure = 2,
    InfoLight = 3,
    InfoDark = 4,
    ContactAdd = 5
};

class Button : public Control {
    ORV_DECLARE_CLASS(Button)
  public:
    static std::shared_ptr<Button> buttonWithType(int type);

    void initWithFrame(const gfx::Rect& frame) override;
    int buttonType() const { return buttonType_; }

    // Per-state content; `state` is a ControlState value (normal 0, highlighted 1, disabled 2,
    // selected 4, or a combination).
    void setTitle(std::optional<std::string> title, unsigned state);
    std::optional<std::string> titleForState(unsigned state) const;
    void setTitleColor(std::optional<gfx::Color> color, unsigned state);
    std::optional<gfx::Color> titleColorForState(unsigned state) const;
    void setImage(gfx::ImagePtr image, unsigned state);
    gfx::ImagePtr imageForState(unsigned state) const;
    void setBackgroundImage(gfx::ImagePtr image, unsigned state);
    gfx::ImagePtr backgroundImageForState(unsigned state) const;

    std::optional<std::string> currentTitle() const { return titleForState(state()); }
    gfx::Color currentTitleColor() const;
    gfx::ImagePtr currentImage() const { return imageForState(state()); }
    gfx::ImagePtr currentBackgroundImage() const { return backgroundImageForState(state()); }

    // The views showing the title and the image; they take no touches of their own.
    Label& titleLabel() const { return *titleLabel_; }
    ImageView& imageView() const { return *imageView_; }

    void layoutSubviews() override;
    gfx::Size sizeThatFits(gfx::Size size) const override;

  protected:
    void stateDidChange() override;

  private:
    struct Content {
        std::optional<std::string> title;
        std::optional<gfx::Color> titleColor;
        gfx::ImagePtr image;
        gfx::ImagePtr backgroundImage;
    };

    // The field's value for the state, falling back to the normal state's.
    template <class T>
    T lookup(unsigned state, T Content::*field) const;
    void showCurrentContent();
    gfx::Size titleSize(gfx::Size limit) const;
    gfx::Size imageSize() const;

    int buttonType_ = static_cast<int>(ButtonType::Custom);
    std::map<unsigned, Content> content_;
    std::shared_ptr<ImageView> backgroundView_;
    std::shared_ptr<ImageView> imageView_;
    std::shared_ptr<Label> titleLabel_;
};

}  // namespace orv::ui
