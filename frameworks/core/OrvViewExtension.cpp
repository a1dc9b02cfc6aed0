#include "frameworks/core/OrvViewExtension.h"

#include <algorithm>

#include "frameworks/core/OrvBundleImage.h"
#include "frameworks/core/OrvTSMath.h"
#include "frameworks/core/OrvViewGeometry.h"
#include "platform/ui/Control.h"
#include "platform/ui/Layer.h"

void rotationWithDegrees(ui::View& view, double degrees) {
    // y points down, so a positive angle of the transform already turns clockwise.
    view.setTransform(gfx::AffineTransform::rotation(OrvTSMath::radianFromDegrees(degrees)));
}

void orvSetBorderWidth(ui::View& view, double width, const gfx::Color& color) {
    view.layer().setBorderWidth(width);
    view.layer().setBorderColor(color);
}

void initWithFrame(ui::Label& label, const gfx::Rect& frame, double fontSize,
                   const gfx::Color& color, gfx::TextAlignment aligment) {
    label.setFrame(frame);
    label.setFont(gfx::Font::systemFont(fontSize));
    label.setTextColor(color);
    label.setTextAlignment(aligment);
}

void setMultipleText(ui::Label& label, const std::string& text, gfx::Size maxSize) {
    label.setNumberOfLines(0);
    label.setLineBreakMode(gfx::LineBreakMode::WordWrap);
    label.setText(text);
    const gfx::Size fits = label.sizeThatFits(maxSize);
    orvSetSize(label, {std::min(fits.width, maxSize.width), std::min(fits.height, maxSize.height)});
}

void shadowDefault(ui::Label& label) {
    label.setShadowColor(gfx::Color::black().withAlpha(0.5));
    label.setShadowOffset({1, 1});
}

std::shared_ptr<ui::Button> buttonWithFrame(const gfx::Rect& frame,
                                            const std::string& imageORVBundleNamed) {
    auto button = ui::Button::buttonWithType(static_cast<int>(ui::ButtonType::Custom));
    button->setFrame(frame);
    button->setImage(::imageORVBundleNamed(imageORVBundleNamed), ui::ControlStateNormal);
    return button;
}
