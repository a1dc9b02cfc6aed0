#pragma once
// What a gesture recogniser asks its delegate. Each answer has the default the platform gives
// when the delegate does not answer.

#include "platform/rt/Object.h"

namespace orv::ui {

class GestureRecognizer;
class Touch;

class GestureRecognizerDelegate {
    ORV_DECLARE_PROTOCOL(GestureRecognizerDelegate)
  public:
    virtual ~GestureRecognizerDelegate() = default;

    // Asked when the recogniser is about to leave the possible state; false makes it fail.
    virtual bool gestureRecognizerShouldBegin(GestureRecognizer& recognizer) { return true; }
    // Whether the two may be active at once. Either recogniser's delegate saying yes is enough.
    virtual bool shouldRecognizeSimultaneouslyWithGestureRecognizer(GestureRecognizer& recognizer,
                                                                    GestureRecognizer& other) {
        return false;
    }
    // Asked before the recogniser sees a new touch; false keeps that touch from it.
    virtual bool shouldReceiveTouch(GestureRecognizer& recognizer, Touch& touch) { return true; }
};

}  // namespace orv::ui
