#include "frameworks/core/OrvViewGeometry.h"

#include <algorithm>
#include <cmath>

gfx::Size orvGetSize(const ui::View& view) {
    return view.frame().size;
}
double orvGetSizeWidth(const ui::View& view) {
    return view.frame().size.width;
}
double orvGetSizeHeight(const ui::View& view) {
    return view.frame().size.height;
}
gfx::Point orvGetOrigin(const ui::View& view) {
    return view.frame().origin;
}
double orvGetOriginX(const ui::View& view) {
    return view.frame().origin.x;
}
double orvGetOriginY(const ui::View& view) {
    return view.frame().origin.y;
}
double orvGetRightX(const ui::View& view) {
    return gfx::rectGetMaxX(view.frame());
}

void orvSetSize(ui::View& view, gfx::Size size) {
    gfx::Rect frame = view.frame();
    frame.size = size;
    view.setFrame(frame);
}

void orvSetSizeHeight(ui::View& view, double height) {
    orvSetSize(view, {view.frame().size.width, height});
}

void orvSetOrigin(ui::View& view, gfx::Point origin) {
    gfx::Rect frame = view.frame();
    frame.origin = origin;
    view.setFrame(frame);
}

void orvSetOriginX(ui::View& view, double x) {
    orvSetOrigin(view, {x, view.frame().origin.y});
}
void orvSetOriginY(ui::View& view, double y) {
    orvSetOrigin(view, {view.frame().origin.x, y});
}

double orvGetCenterX(const ui::View& view, double width) {
    return (view.bounds().size.width - width) / 2;
}

double orvGetCenterY(const ui::View& view, double height) {
    return (view.bounds().size.height - height) / 2;
}

namespace {

gfx::Rect fitCentred(const gfx::Rect& bounds, double ratio) {
    const double width = bounds.size.width, height = bounds.size.height;
    if (!(ratio > 0) || !std::isfinite(ratio) || !(width > 0) || !(height > 0)) return {};
    gfx::Size fit = width / height > ratio ? gfx::Size{height * ratio, height}
                                           : gfx::Size{width, width / ratio};
    return {bounds.origin.x + (width - fit.width) / 2, bounds.origin.y + (height - fit.height) / 2,
            fit.width, fit.height};
}

}  // namespace

gfx::Rect convertScaleAspectFitWithRatio(const ui::View& view, float ratio) {
    return fitCentred(view.bounds(), ratio);
}

gfx::Rect convertScaleAspectFitWithSize(const ui::View& view, gfx::Size size) {
    if (!(size.width > 0) || !(size.height > 0)) return {};
    return fitCentred(view.bounds(), size.width / size.height);
}

gfx::Size convertViewSizeScaleAspectFillWithSize(gfx::Size viewSize, gfx::Size size) {
    if (!(size.width > 0) || !(size.height > 0)) return {};
    const double scale = std::max(viewSize.width / size.width, viewSize.height / size.height);
    return {size.width * scale, size.height * scale};
}
