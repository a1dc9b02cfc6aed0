#include "platform/ui/Touch.h"

#include "platform/ui/View.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Touch, rt::Object)

namespace {
gfx::Point fromWindow(gfx::Point p, const View* view) {
    return view ? view->convertPointFromView(p, nullptr) : p;
}
}  // namespace

gfx::Point Touch::locationInView(const View* view) const {
    return fromWindow(location_, view);
}

gfx::Point Touch::previousLocationInView(const View* view) const {
    return fromWindow(previousLocation_, view);
}

}  // namespace orv::ui
