#pragma once
// The platform's layer transaction. Headless layers have no implicit animations, so there is
// nothing to batch or suppress: these keep the calls of the code that brackets its layer changes
// and remember the settings for whoever asks.

#include "platform/rt/Object.h"

namespace orv::ui {

class Transaction : public rt::Object {
    ORV_DECLARE_CLASS(Transaction)
  public:
    static void begin();
    static void commit();
    static void setDisableActions(bool disable);
    static bool disableActions();
    static void setAnimationDuration(double seconds);
    static double animationDuration();
};

}  // namespace orv::ui
