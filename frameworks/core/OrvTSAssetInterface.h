#pragma once
#include "platform/rt/Object.h"

// A photo of the album. What it can do (its pixels, a download from the cloud) grows with the
// album itself; the component frame only carries it from the application to a screen.
class OrvTSAssetInterface {
    ORV_DECLARE_PROTOCOL(OrvTSAssetInterface)
  public:
    virtual ~OrvTSAssetInterface() = default;
};
