#pragma once
// Frame accessors that views are laid out with throughout the library.

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Geometry.h"
#include "platform/ui/View.h"

gfx::Size orvGetSize(const ui::View& view);
double orvGetSizeWidth(const ui::View& view);
double orvGetSizeHeight(const ui::View& view);
gfx::Point orvGetOrigin(const ui::View& view);
double orvGetOriginX(const ui::View& view);
double orvGetOriginY(const ui::View& view);
// The frame's right edge.
double orvGetRightX(const ui::View& view);
void orvSetSize(ui::View& view, gfx::Size size);
void orvSetSizeHeight(ui::View& view, double height);
void orvSetOrigin(ui::View& view, gfx::Point origin);
void orvSetOriginX(ui::View& view, double x);
void orvSetOriginY(ui::View& view, double y);
// The origin that centres a child of that extent in the view's bounds.
double orvGetCenterX(const ui::View& view, double width);
double orvGetCenterY(const ui::View& view, double height);
