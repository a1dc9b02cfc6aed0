#include "platform/ui/Event.h"

#include <algorithm>

#include "platform/ui/GestureRecognizer.h"
#include "platform/ui/Touch.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Event, rt::Object)

TouchSet Event::touchesForView(const View* view) const {
    TouchSet result;
    std::copy_if(touches_.begin(), touches_.end(), std::back_inserter(result),
                 [view](const TouchPtr& t) { return t->view() == view; });
    return result;
}

TouchSet Event::touchesForGestureRecognizer(const GestureRecognizer* recognizer) const {
    if (!recognizer) return {};
    return recognizer->touches();
}

}  // namespace orv::ui
