#pragma once
#include "examples/orvdemo/PhotoDemoOptions.h"

namespace orvdemo {

// The option set of the sticker demo: it makes a StickerDemoController.
class StickerDemoOptions : public PhotoDemoOptions {
    ORV_DECLARE_CLASS(StickerDemoOptions)
  public:
    const orv::rt::Class* defaultComponentClazz() const override;
};

}  // namespace orvdemo
