#pragma once
// The parameters a look filter publishes, by key, as numbers (at least "strength").

#include <map>
#include <memory>
#include <string>

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPOrvkitImageFilter_PropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPOrvkitImageFilter_PropertyBuilder)
  public:
    // A builder over a copy of the property's map (empty when it is none or another kind).
    static std::shared_ptr<ORPFPOrvkitImageFilter_PropertyBuilder> initWithProperty(
        const ORPFPProperty& property);

    orv::strand::LookSettings& propertyDic() { return propertyDic_; }
    const orv::strand::LookSettings& propertyDic() const { return propertyDic_; }
    ORPFPProperty makeProperty() const {
        return ORPFPPropertyOf<orv::strand::LookSettings>::make(propertyDic_);
    }

  private:
    orv::strand::LookSettings propertyDic_;
};
