#include "frameworks/strand/ORPFPFilter.h"

#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/kernels/FilterKernels.h"
#include "frameworks/strand/kernels/LookCatalogue.h"

ORV_DEFINE_CLASS(ORPFPFilter, rt::Object)

std::shared_ptr<ORPFPFilter> ORPFPFilter::init(const std::shared_ptr<ORPFPContext>& context,
                                               const std::string& withName) {
    auto filter = rt::make<ORPFPFilter>();
    filter->context_ = context ? context : rt::make<ORPFPContext>();
    filter->typeName_ = withName;
    return filter;
}

void ORPFPFilter::setConfig(const std::shared_ptr<ORPConfig>& config) {
    if (!config || typeName_ != ORPFPOrvkitImageFilter_TYPE_NAME) return;
    name_ = config->stringForKey(ORPFPOrvkitImageFilter_CONFIG_NAME).value_or("");
}

std::shared_ptr<const orv::strand::LookCatalogue> ORPFPFilter::catalogue() const {
    return orv::strand::FilterKernels::needsCatalogue(typeName_, name_) ? context_->catalogue()
                                                                        : nullptr;
}

ORPFPProperty ORPFPFilter::getProperty(const std::string& key) const {
    if (auto it = properties_.find(key); it != properties_.end()) return it->second;
    if (key != ORPFPOrvkitImageFilter_PROP_PARAM) return nullptr;
    return orv::strand::FilterKernels::defaultProperty(name_, catalogue().get());
}

void ORPFPFilter::setProperty(ORPFPProperty property, const std::string& forKey) {
    if (property) {
        properties_[forKey] = std::move(property);
    } else {
        properties_.erase(forKey);
    }
}

gfx::BitmapPtr ORPFPFilter::apply(const gfx::BitmapPtr& input) const {
    // Every filter type keeps its settings under the one parameter key.
    auto it = properties_.find(ORPFPOrvkitImageFilter_PROP_PARAM);
    const ORPFPProperty property = it == properties_.end() ? nullptr : it->second;
    return orv::strand::FilterKernels::apply(typeName_, name_, property, catalogue().get(), input);
}
