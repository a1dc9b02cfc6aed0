#include "examples/orvdemo/HubDemoComponent.h"

#include "frameworks/core/OrvResult.h"
#include "orvviews/views/OrvViewControllerExtension.h"

namespace orvdemo {

ORV_DEFINE_CLASS(HubDemoComponent, OrvPhotoEditComponentBase, HubDemoDelegate)

void HubDemoComponent::showComponent() {
    if (!options_) options_ = OrvOptions::build<HubDemoOptions>();
    auto controller = std::dynamic_pointer_cast<HubDemoController>(options_->componentInstance());
    if (!controller || !sourceController()) return;
    controller->setErrorDelegate(self<OrvEditComponent>());
    controller->setDelegate(self<HubDemoComponent>());
    controller_ = controller;
    orvPresentModalNavigationController(*sourceController(), controller, true, true);
}

void HubDemoComponent::hubDemoControllerDidFinish(HubDemoController& controller) {
    auto result = orv::rt::make<OrvResult>();
    notifyResult(result, nullptr, controller.self<ui::ViewController>());
}

}  // namespace orvdemo
