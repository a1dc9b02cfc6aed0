#include "examples/orvdemo/StickerDemoOptions.h"

#include "examples/orvdemo/StickerDemoController.h"

namespace orvdemo {

ORV_DEFINE_CLASS(StickerDemoOptions, PhotoDemoOptions)

const orv::rt::Class* StickerDemoOptions::defaultComponentClazz() const {
    return StickerDemoController::staticClass();
}

}  // namespace orvdemo
