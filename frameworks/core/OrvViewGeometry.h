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
// The largest rectangle of that width-to-height ratio inside the view's bounds, centred in them;
// empty for a ratio that is not above 0 (or not a number) and for a view without area.
gfx::Rect convertScaleAspectFitWithRatio(const ui::View& view, float ratio);
// A size brought to fit inside the view's bounds with its proportions, centred in them; empty
// for a size without area.
gfx::Rect convertScaleAspectFitWithSize(const ui::View& view, gfx::Size size);
// `size` scaled with its proportions to cover `viewSize` (its short side fits).
gfx::Size convertViewSizeScaleAspectFillWithSize(gfx::Size viewSize, gfx::Size size);
