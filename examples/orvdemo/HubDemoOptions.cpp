#include "examples/orvdemo/HubDemoOptions.h"

#include "examples/orvdemo/HubDemoController.h"

namespace orvdemo {

ORV_DEFINE_CLASS(HubDemoOptions, OrvImageResultOptions)

const orv::rt::Class* HubDemoOptions::defaultComponentClazz() const {
    return HubDemoController::staticClass();
}

}  // namespace orvdemo
