#pragma once
// What the brush package tells the brush bars when its brushes change.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvBrush;
class OrvBrushLocalPackage;

class OrvBrushLocalPackageDelegate {
    ORV_DECLARE_PROTOCOL(OrvBrushLocalPackageDelegate)
  public:
    virtual ~OrvBrushLocalPackageDelegate() = default;
    // `status` is OrvBrushLocalPackage::kStatusAdded or kStatusChanged; `item` is the brush
    // concerned, or null when the whole catalogue changed.
    virtual void brushManager(OrvBrushLocalPackage& package, const std::shared_ptr<OrvBrush>& item,
                              long status) = 0;
};
