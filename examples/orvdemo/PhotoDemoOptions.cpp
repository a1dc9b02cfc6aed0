#include "examples/orvdemo/PhotoDemoOptions.h"

#include "examples/orvdemo/PhotoDemoController.h"

namespace orvdemo {

ORV_DEFINE_CLASS(PhotoDemoOptions, OrvImageResultOptions)

const orv::rt::Class* PhotoDemoOptions::defaultComponentClazz() const {
    return PhotoDemoController::staticClass();
}

}  // namespace orvdemo
