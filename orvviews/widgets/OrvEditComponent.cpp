#include "orvviews/widgets/OrvEditComponent.h"

#include "orvviews/views/OrvViewControllerExtension.h"
#include "platform/ui/ViewController.h"

ORV_DEFINE_CLASS(OrvEditComponent, orv::rt::Object, OrvComponentErrorDelegate)

void OrvEditComponent::onComponent(const std::shared_ptr<ui::ViewController>& controller,
                                   const std::shared_ptr<OrvResult>& result,
                                   const std::shared_ptr<rt::Error>& error) {
    notifyResult(result, error, controller);
}

void OrvEditComponent::notifyResult(const std::shared_ptr<OrvResult>& result,
                                    const std::shared_ptr<rt::Error>& error,
                                    const std::shared_ptr<ui::ViewController>& controller) {
    if (autoDismissWhenCompelted_ && controller) orvDismissModalViewControllerAnimated(*controller);
    if (callbackBlock_) callbackBlock_(result, error, controller);
}
