#pragma once
// The message hub: the one object through which every screen tells the user what it is doing.
// Calls may come from any thread.

#include <optional>
#include <string>

#include "platform/rt/Object.h"

using OrvText = std::optional<std::string>;  // a text that may be nil

class OrvPopupMessageInterface {
    ORV_DECLARE_PROTOCOL(OrvPopupMessageInterface)
  public:
    virtual ~OrvPopupMessageInterface() = default;
    virtual void setStatus(const OrvText& status) = 0;
    virtual void showToast(const OrvText& message) = 0;
    virtual void showProgress(float progress, const OrvText& status) = 0;
    virtual void showSuccess(const OrvText& status) = 0;
    virtual void showError(const OrvText& status) = 0;
    virtual void dismiss() = 0;
};
