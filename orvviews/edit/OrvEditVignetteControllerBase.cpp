#include "orvviews/edit/OrvEditVignetteControllerBase.h"

#include "frameworks/core/OrvStatistics.h"

ORV_DEFINE_CLASS(OrvEditVignetteControllerBase, OrvFilterResultController)

void OrvEditVignetteControllerBase::viewDidLoad() {
    OrvStatistics::appendWithComponentIdt(0x409300);
    setFilterParams(createFilterParams());
    OrvFilterResultController::viewDidLoad();
}

OrvFilterResultController::Params OrvEditVignetteControllerBase::createFilterParams() {
    return VimraParameters::parameterWithCode("_IELVignette", kToolModel);
}
