#include "frameworks/strand/ORPFPColorAdjustFilter_PropertyItem.h"

#include <utility>

ORV_DEFINE_CLASS(ORPFPColorAdjustFilter_PropertyItem, rt::Object)

std::shared_ptr<const ORPFPColorAdjustFilter_PropertyItem>
ORPFPColorAdjustFilter_PropertyItem::init(std::string name, float with) {
    auto item = rt::make<ORPFPColorAdjustFilter_PropertyItem>();
    item->name_ = std::move(name);
    item->values_ = {with};
    return item;
}

std::shared_ptr<const ORPFPColorAdjustFilter_PropertyItem>
ORPFPColorAdjustFilter_PropertyItem::init(std::string name, float with, float and_) {
    auto item = rt::make<ORPFPColorAdjustFilter_PropertyItem>();
    item->name_ = std::move(name);
    item->values_ = {with, and_};
    return item;
}
