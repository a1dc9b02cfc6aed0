#pragma once
#include "orvviews/widgets/OrvEditComponent.h"

// Base of the components that pick one photo; it counts each one made, avatar pickers apart.
class OrvAlbumComponentBase : public OrvEditComponent {
    ORV_DECLARE_CLASS(OrvAlbumComponentBase)
  public:
    void init() override;
};
