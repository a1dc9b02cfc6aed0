#pragma once
// Keeps an alert alive while it is on the screen. Each clear() flips whether the next one drops
// it: the first call after storing keeps the alert, the second lets it go.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvAlertView;

class OrvKitICAlertViewInstance : public rt::Object {
    ORV_DECLARE_CLASS(OrvKitICAlertViewInstance)
  public:
    static OrvKitICAlertViewInstance& instance();

    const std::shared_ptr<OrvAlertView>& alertView() const { return alertView_; }
    // Stores the alert, and sets the flag so that the next clear() keeps it.
    void setAlertView(std::shared_ptr<OrvAlertView> alertView);
    bool enableClear() const { return enableClear_; }
    void clear();

  private:
    std::shared_ptr<OrvAlertView> alertView_;
    bool enableClear_ = false;
};
