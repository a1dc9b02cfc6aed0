#include "examples/orvdemo/EditorComponent.h"

#include "frameworks/core/OrvResult.h"
#include "orvviews/views/OrvViewControllerExtension.h"

namespace orvdemo {

ORV_DEFINE_CLASS(EditorComponent, OrvPhotoEditMultipleComponentBase, EditorDelegate)

void EditorComponent::showComponent() {
    if (!options_) options_ = OrvOptions::build<EditorOptions>();
    auto controller = std::dynamic_pointer_cast<EditorController>(options_->componentInstance());
    if (!controller || !sourceController()) return;
    controller->setInputTempFilePath(inputTempFilePath());
    controller->setInputAsset(inputAsset());
    controller->setInputImage(inputImage());
    controller->setErrorDelegate(self<OrvEditComponent>());
    controller->setDelegate(self<EditorComponent>());
    controller_ = controller;
    orvPresentModalNavigationController(*sourceController(), controller, true, true);
}

void EditorComponent::editorDidFinish(EditorController& editor,
                                      const std::shared_ptr<OrvResult>& result) {
    notifyResult(result, nullptr, editor.self<ui::ViewController>());
}

}  // namespace orvdemo
