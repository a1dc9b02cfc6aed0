#pragma once
#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvResult;
namespace orv::rt {
class Error;
}
namespace orv::ui {
class ViewController;
}

// Receives a screen's failures (normally the component that showed the screen).
class OrvComponentErrorDelegate {
    ORV_DECLARE_PROTOCOL(OrvComponentErrorDelegate)
  public:
    virtual ~OrvComponentErrorDelegate() = default;
    virtual void onComponent(const std::shared_ptr<ui::ViewController>& controller,
                             const std::shared_ptr<OrvResult>& result,
                             const std::shared_ptr<rt::Error>& error) = 0;
};
