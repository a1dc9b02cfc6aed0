#pragma once
#include "orvviews/popup/OrvPopupMessageInterface.h"

// The default hub: every call goes to the shared progress overlay through its thread bridge.
class OrvPopupMessage : public orv::rt::Object, public OrvPopupMessageInterface {
    ORV_DECLARE_CLASS(OrvPopupMessage)
  public:
    void setStatus(const OrvText& status) override;
    void showToast(const OrvText& message) override;
    void showProgress(float progress, const OrvText& status) override;
    void showSuccess(const OrvText& status) override;
    void showError(const OrvText& status) override;
    void dismiss() override;
};
