#include "frameworks/core/OrvImageColorCorrection.h"

#include "frameworks/strand/ORPFPColorCorrectionFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/ORPFilterPipe.h"

namespace {

// Where the correction sits in its pipe: the first place of the one-shot renderings.
constexpr long kCorrectionPosition = 2;

}  // namespace

gfx::ImagePtr orvColorCorrectedImage(const gfx::ImagePtr& image,
                                     const std::shared_ptr<OrvNKImageColorArgument>& args) {
    if (!image || !args) return nullptr;
    auto builder = rt::make<ORPFPColorCorrectionFilter_PropertyBuilder>();
    builder->args() = {args->maxR(), args->maxG(), args->maxB(), args->maxY(),
                       args->minR(), args->minG(), args->minB(), args->minY(),
                       args->midR(), args->midG(), args->midB()};
    return ORPFilterPipe::runOnce(image, [&](ORPFilterPipe& pipe) {
        auto filter = ORPFPFilter::init(pipe.getContext(), ORPFPColorCorrectionFilter_TYPE_NAME);
        pipe.addFilter(filter, kCorrectionPosition);
        filter->setProperty(builder->makeProperty(), ORPFPColorCorrectionFilter_PROP_PARAM);
    });
}
