#include "examples/orvdemo/EditorOptions.h"

#include "examples/orvdemo/EditorController.h"

namespace orvdemo {

ORV_DEFINE_CLASS(EditorOptions, OrvImageResultOptions)

const orv::rt::Class* EditorOptions::defaultComponentClazz() const {
    return EditorController::staticClass();
}

std::shared_ptr<OrvComponentsViewController> EditorOptions::componentInstance() {
    auto controller = OrvImageResultOptions::componentInstance();
    if (auto editor = std::dynamic_pointer_cast<EditorController>(controller)) {
        editor->setLimitSideSize(limitSideSize_);
    }
    return controller;
}

}  // namespace orvdemo
