#pragma once
#include "orvviews/widgets/OrvImageResultOptions.h"

namespace orvdemo {

// The option set of the demo's editor: it makes an EditorController with the step size.
class EditorOptions : public OrvImageResultOptions {
    ORV_DECLARE_CLASS(EditorOptions)
  public:
    const orv::rt::Class* defaultComponentClazz() const override;
    std::shared_ptr<OrvComponentsViewController> componentInstance() override;

    // The longest side of a step in pixels; 0 is the screen's.
    unsigned long limitSideSize() const { return limitSideSize_; }
    void setLimitSideSize(unsigned long size) { limitSideSize_ = size; }

  private:
    unsigned long limitSideSize_ = 0;
};

}  // namespace orvdemo
