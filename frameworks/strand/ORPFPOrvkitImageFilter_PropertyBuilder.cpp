#include "frameworks/strand/ORPFPOrvkitImageFilter_PropertyBuilder.h"

ORV_DEFINE_CLASS(ORPFPOrvkitImageFilter_PropertyBuilder, rt::Object)

std::shared_ptr<ORPFPOrvkitImageFilter_PropertyBuilder>
ORPFPOrvkitImageFilter_PropertyBuilder::initWithProperty(const ORPFPProperty& property) {
    auto builder = rt::make<ORPFPOrvkitImageFilter_PropertyBuilder>();
    if (auto* settings = ORPFPPropertyOf<orv::strand::LookSettings>::in(property))
        builder->propertyDic_ = *settings;
    return builder;
}
