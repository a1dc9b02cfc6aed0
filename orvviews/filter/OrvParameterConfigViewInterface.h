#pragma once
// A panel of parameter sliders as a parameter screen drives it: it is told the argument keys
// and which one to show, and moved when the screen resets an argument.

#include <memory>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "orvviews/filter/OrvParameterConfigDelegate.h"

class OrvParameterConfigViewInterface {
    ORV_DECLARE_PROTOCOL(OrvParameterConfigViewInterface)
  public:
    virtual ~OrvParameterConfigViewInterface() = default;

    virtual void setDelegate(std::weak_ptr<OrvParameterConfigDelegate> delegate) = 0;
    virtual void setParams(const std::vector<std::string>& keys, unsigned long selectedIndex) = 0;
    // Puts the shown slider at `progress` without telling the delegate.
    virtual void seekWithProgress(double progress) = 0;
};
