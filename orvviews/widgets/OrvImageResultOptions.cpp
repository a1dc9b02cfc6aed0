#include "orvviews/widgets/OrvImageResultOptions.h"

#include "orvviews/widgets/OrvImageResultController.h"

ORV_DEFINE_CLASS(OrvImageResultOptions, OrvResultOptions)

std::shared_ptr<OrvComponentsViewController> OrvImageResultOptions::componentInstance() {
    auto controller = OrvResultOptions::componentInstance();
    if (auto image = std::dynamic_pointer_cast<OrvImageResultController>(controller)) {
        image->setShowResultPreview(showResultPreview_);
        image->setIsAutoRemoveTemp(isAutoRemoveTemp_);
    }
    return controller;
}
