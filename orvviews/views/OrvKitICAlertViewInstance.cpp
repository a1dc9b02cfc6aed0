#include "orvviews/views/OrvKitICAlertViewInstance.h"

#include "orvviews/views/OrvAlertView.h"

ORV_DEFINE_CLASS(OrvKitICAlertViewInstance, rt::Object)

OrvKitICAlertViewInstance& OrvKitICAlertViewInstance::instance() {
    static const std::shared_ptr<OrvKitICAlertViewInstance> shared =
        rt::make<OrvKitICAlertViewInstance>();
    return *shared;
}

void OrvKitICAlertViewInstance::setAlertView(std::shared_ptr<OrvAlertView> alertView) {
    alertView_ = std::move(alertView);
    enableClear_ = false;
}

void OrvKitICAlertViewInstance::clear() {
    if (enableClear_) alertView_.reset();
    enableClear_ = !enableClear_;
}
