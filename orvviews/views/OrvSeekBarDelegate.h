#pragma once
// What a seek bar tells its owner when the user moves it.

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvSeekBar;

class OrvSeekBarDelegate {
    ORV_DECLARE_PROTOCOL(OrvSeekBarDelegate)
  public:
    virtual ~OrvSeekBarDelegate() = default;
    // A touch moved the bar to `changedProgress` (0 to 1).
    virtual void onOrvKitICSeekBar(OrvSeekBar& seekBar, double changedProgress) = 0;
};
