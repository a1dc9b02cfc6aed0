#pragma once
// View, label and button helpers the sticker screens are built with.

#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/TextLayout.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/View.h"

// Sets the view's whole rotation to that many degrees (clockwise on the screen) about its
// centre; absolute, not added to what was there.
void rotationWithDegrees(ui::View& view, double degrees);
// The layer's border width and colour.
void orvSetBorderWidth(ui::View& view, double width, const gfx::Color& color);

// A label of that frame with the system font at `fontSize`, the colour and alignment.
void initWithFrame(ui::Label& label, const gfx::Rect& frame, double fontSize,
                   const gfx::Color& color, gfx::TextAlignment aligment);
// Sets the text on as many lines as it needs and sizes the label to the text's measured size,
// at most `maxSize` (the label's origin stays).
void setMultipleText(ui::Label& label, const std::string& text, gfx::Size maxSize);
// The default drop shadow: black at half alpha, one point down and right.
void shadowDefault(ui::Label& label);

// A custom button of that frame showing the library's style image of that name.
std::shared_ptr<ui::Button> buttonWithFrame(const gfx::Rect& frame,
                                            const std::string& imageORVBundleNamed);
