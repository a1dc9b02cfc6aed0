#include "orvviews/popup/OrvPopupMessage.h"

#include "orvviews/popup/OrvPopupProgress.h"

ORV_DEFINE_CLASS(OrvPopupMessage, orv::rt::Object, OrvPopupMessageInterface)

void OrvPopupMessage::setStatus(const OrvText& status) {
    OrvPopupProgress::showMainThreadWithStatus(status);
}

void OrvPopupMessage::showToast(const OrvText& message) {
    OrvPopupProgress::showMainThreadWithMessage(message);
}

void OrvPopupMessage::showProgress(float progress, const OrvText& status) {
    OrvPopupProgress::showMainThreadProgress(progress, status);
}

void OrvPopupMessage::showSuccess(const OrvText& status) {
    OrvPopupProgress::showMainThreadSuccessWithStatus(status);
}

void OrvPopupMessage::showError(const OrvText& status) {
    OrvPopupProgress::showMainThreadErrorWithStatus(status);
}

void OrvPopupMessage::dismiss() {
    OrvPopupProgress::dismiss();
}
