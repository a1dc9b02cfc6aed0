#include "orvviews/edit/OrvEditHDRControllerBase.h"

#include "frameworks/core/OrvStatistics.h"
#include "platform/rt/RunLoop.h"

ORV_DEFINE_CLASS(OrvEditHDRControllerBase, OrvFilterResultController)

namespace {

constexpr long kHdrIdt = 0x409900;
// The filter's own key, spelt as the filter spells it.
constexpr const char* kHdrStrengthKey = "mixied";
constexpr double kHdrStrength = 0.5;

}  // namespace

void OrvEditHDRControllerBase::viewDidLoad() {
    OrvStatistics::appendWithComponentIdt(kHdrIdt);
    OrvFilterResultController::viewDidLoad();
}

bool OrvEditHDRControllerBase::preProcessWithImage(const gfx::ImagePtr& image) {
    setDisplayImage(image);
    auto params = VimraParameters::parameterWithCode("_IECHdr", kToolModel);
    params->appendFloatArgWithKey(kHdrStrengthKey, kHdrStrength);
    setFilterParams(params);
    auto me = self<OrvEditHDRControllerBase>();
    rt::RunLoop::main().post([me, image] { me->postProcessWithImage(image); });
    return true;
}

void OrvEditHDRControllerBase::postProcessWithImage(const gfx::ImagePtr& image) {
    refreshConfigView();
    OrvFilterResultController::postProcessWithImage(image);
}
