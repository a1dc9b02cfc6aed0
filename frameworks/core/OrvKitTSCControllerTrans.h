#pragma once
#include <memory>

#include "platform/rt/Object.h"

namespace orv::ui {
class Animation;
}

// A controller's custom transitions: outTran runs on the window when the controller leaves.
class OrvKitTSCControllerTrans : public orv::rt::Object {
    ORV_DECLARE_CLASS(OrvKitTSCControllerTrans)
  public:
    const std::shared_ptr<orv::ui::Animation>& outTran() const { return outTran_; }
    void setOutTran(std::shared_ptr<orv::ui::Animation> animation) {
        outTran_ = std::move(animation);
    }

  private:
    std::shared_ptr<orv::ui::Animation> outTran_;
};
