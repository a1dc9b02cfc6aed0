#include "orvviews/OrvViews.h"

#include "orvviews/popup/OrvPopupMessage.h"

ORV_DEFINE_CLASS(OrvViews, orv::rt::Object)

std::shared_ptr<OrvViews> OrvViews::shared() {
    // A function-local static is made once, safely from any thread.
    static const std::shared_ptr<OrvViews> instance = orv::rt::make<OrvViews>();
    return instance;
}

std::shared_ptr<OrvPopupMessageInterface> OrvViews::messageHub() {
    if (!messageHub_) messageHub_ = orv::rt::make<OrvPopupMessage>();
    return messageHub_;
}

void OrvViews::setMessageHub(std::shared_ptr<OrvPopupMessageInterface> hub) {
    messageHub_ = std::move(hub);
}
