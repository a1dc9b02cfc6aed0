#include "orvviews/edit/OrvEditHolyLightControllerBase.h"

#include "frameworks/core/OrvStatistics.h"

ORV_DEFINE_CLASS(OrvEditHolyLightControllerBase, OrvFilterResultController)

void OrvEditHolyLightControllerBase::viewDidLoad() {
    OrvStatistics::appendWithComponentIdt(0x409700);
    setFilterParams(createFilterParams());
    OrvFilterResultController::viewDidLoad();
}

OrvFilterResultController::Params OrvEditHolyLightControllerBase::createFilterParams() {
    return VimraParameters::parameterWithCode("_IECHoly", kToolModel);
}
