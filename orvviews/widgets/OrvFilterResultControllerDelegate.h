#pragma once
// What a parameter tool tells the object that opened it.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvFilterResultController;
class OrvResult;

class OrvFilterResultControllerDelegate {
    ORV_DECLARE_PROTOCOL(OrvFilterResultControllerDelegate)
  public:
    virtual ~OrvFilterResultControllerDelegate() = default;

    // The finished result, on the main thread.
    virtual void onOrvKitFilterResult(OrvFilterResultController& controller,
                                      const std::shared_ptr<OrvResult>& result) = 0;
    // On the background thread, before any saving; true takes the result over.
    virtual bool onAsyncOrvKitFilterResult(OrvFilterResultController& controller,
                                           const std::shared_ptr<OrvResult>& result) {
        return false;
    }
};
