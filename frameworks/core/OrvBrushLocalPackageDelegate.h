#pragma once
// What the brush package tells the brush bars when its brushes change.

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvBrushLocalPackage;

class OrvBrushLocalPackageDelegate {
    ORV_DECLARE_PROTOCOL(OrvBrushLocalPackageDelegate)
  public:
    virtual ~OrvBrushLocalPackageDelegate() = default;
    // `status` is OrvBrushLocalPackage::kStatusAdded or kStatusChanged.
    virtual void onOrvBrushLocalPackageChanged(OrvBrushLocalPackage& package, long status) = 0;
};
