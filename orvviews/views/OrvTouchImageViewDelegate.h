#pragma once
// What the zoomable image tells its host: a turn, mirror or ratio animation started or ended.

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvTouchImageViewInterface;

class OrvTouchImageViewDelegate {
    ORV_DECLARE_PROTOCOL(OrvTouchImageViewDelegate)
  public:
    virtual ~OrvTouchImageViewDelegate() = default;
    virtual void onOrvKitICTouchImageView(OrvTouchImageViewInterface& view, bool inAniming) = 0;
};
