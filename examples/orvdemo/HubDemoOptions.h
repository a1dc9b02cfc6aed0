#pragma once
#include "orvviews/widgets/OrvImageResultOptions.h"

namespace orvdemo {

// The option set of the hub demo: it makes a HubDemoController.
class HubDemoOptions : public OrvImageResultOptions {
    ORV_DECLARE_CLASS(HubDemoOptions)
  public:
    const orv::rt::Class* defaultComponentClazz() const override;
};

}  // namespace orvdemo
