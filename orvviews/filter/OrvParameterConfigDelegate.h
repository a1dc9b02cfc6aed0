#pragma once
// What a panel of parameter sliders asks of the screen it serves: the screen owns the parameter
// set, so the panel reads and moves the arguments through it by place or by key.

#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

namespace orv::ui {
class View;
}

class OrvParameterConfigDelegate {
    ORV_DECLARE_PROTOCOL(OrvParameterConfigDelegate)
  public:
    virtual ~OrvParameterConfigDelegate() = default;

    // The slider at `index` moved to `progress` (0 to 1).
    virtual void onOrvKitCPParameterConfigChangeWithIndex(ui::View& view, unsigned long index,
                                                          double progress) = 0;
    // The place (0 to 1) of the argument at `index`.
    virtual double onOrvKitCPParameterConfigValueWithIndex(ui::View& view, unsigned long index) = 0;
    // The raw value of the argument named `key`.
    virtual double onOrvKitCPParameterConfigValueWithKey(ui::View& view,
                                                         const std::string& key) = 0;
    // Back to the default of the argument at `index`.
    virtual void onOrvKitCPParameterConfigResetWithIndex(ui::View& view, unsigned long index) = 0;
};
