#include "frameworks/core/OrvViewGeometry.h"

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
