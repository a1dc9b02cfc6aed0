#pragma once
// The view of a parameter tool: a surface the live preview draws on, and the panel of sliders.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "orvviews/filter/OrvParameterConfigViewInterface.h"
#include "platform/ui/View.h"

class OrvFilterResultViewInterface {
    ORV_DECLARE_PROTOCOL(OrvFilterResultViewInterface)
  public:
    virtual ~OrvFilterResultViewInterface() = default;

    // The preview's surface.
    virtual std::shared_ptr<ui::View> imageView() const = 0;
    // The sliders; null for a tool without any.
    virtual std::shared_ptr<OrvParameterConfigViewInterface> configView() const = 0;
};
