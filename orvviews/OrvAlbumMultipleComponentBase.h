#pragma once
#include "orvviews/widgets/OrvEditComponent.h"

// Base of the components that pick several photos; it counts each one made.
class OrvAlbumMultipleComponentBase : public OrvEditComponent {
    ORV_DECLARE_CLASS(OrvAlbumMultipleComponentBase)
  public:
    void init() override;
};
