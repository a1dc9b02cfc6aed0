#include "orvviews/edit/OrvEditSharpnessControllerBase.h"

#include "frameworks/core/OrvStatistics.h"

ORV_DEFINE_CLASS(OrvEditSharpnessControllerBase, OrvFilterResultController)

void OrvEditSharpnessControllerBase::viewDidLoad() {
    OrvStatistics::appendWithComponentIdt(0x409100);
    setFilterParams(createFilterParams());
    OrvFilterResultController::viewDidLoad();
}

OrvFilterResultController::Params OrvEditSharpnessControllerBase::createFilterParams() {
    return VimraParameters::parameterWithCode("_IEBSharpen", kToolModel);
}
