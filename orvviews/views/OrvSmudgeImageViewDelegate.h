#pragma once
// What a brush canvas view tells its tool: the history's counts after each change, each touch
// move before it is drawn, and the end of a stroke. The last two are optional.

#include <cstdint>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

class OrvSmudgeImageViewDelegate {
    ORV_DECLARE_PROTOCOL(OrvSmudgeImageViewDelegate)
  public:
    virtual ~OrvSmudgeImageViewDelegate() = default;

    // After each stroke, undo and redo.
    virtual void onRefreshStepStatesWithHistories(uint64_t undoCount, uint64_t redoCount) = 0;
    // Each move, for each touch: the point in the picture's view, the same point in the canvas
    // view, and the picture view's size.
    virtual void onSmudgeActionChanged(gfx::Point location, gfx::Point viewLocation,
                                       double canvasWidth, double canvasHeight) {}
    // A stroke ended and is in the history.
    virtual void onSmudgeActionEnd() {}
};
