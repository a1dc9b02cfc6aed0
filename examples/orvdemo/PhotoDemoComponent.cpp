#include "examples/orvdemo/PhotoDemoComponent.h"

#include "frameworks/core/OrvResult.h"
#include "orvviews/views/OrvViewControllerExtension.h"

namespace orvdemo {

ORV_DEFINE_CLASS(PhotoDemoComponent, OrvPhotoEditComponentBase, PhotoDemoDelegate)

void PhotoDemoComponent::showComponent() {
    if (!options_) options_ = OrvOptions::build<PhotoDemoOptions>();
    auto controller = std::dynamic_pointer_cast<PhotoDemoController>(options_->componentInstance());
    if (!controller || !sourceController()) return;
    controller->setInputTempFilePath(inputTempFilePath());
    controller->setInputAsset(inputAsset());
    controller->setInputImage(inputImage());
    controller->setErrorDelegate(self<OrvEditComponent>());
    controller->setDelegate(self<PhotoDemoComponent>());
    controller_ = controller;
    orvPresentModalNavigationController(*sourceController(), controller, true, true);
}

void PhotoDemoComponent::photoDemoControllerDidFinish(PhotoDemoController& controller,
                                                      const std::shared_ptr<OrvResult>& result) {
    notifyResult(result, nullptr, controller.self<ui::ViewController>());
}

}  // namespace orvdemo
