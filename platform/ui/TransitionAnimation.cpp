#include "platform/ui/TransitionAnimation.h"

namespace orv::ui {

ORV_DEFINE_CLASS(TransitionAnimation, Animation)

}  // namespace orv::ui
