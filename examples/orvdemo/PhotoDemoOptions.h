#pragma once
#include "orvviews/widgets/OrvImageResultOptions.h"

namespace orvdemo {

// The option set of the photo demo: it makes a PhotoDemoController.
class PhotoDemoOptions : public OrvImageResultOptions {
    ORV_DECLARE_CLASS(PhotoDemoOptions)
  public:
    const orv::rt::Class* defaultComponentClazz() const override;
};

}  // namespace orvdemo
