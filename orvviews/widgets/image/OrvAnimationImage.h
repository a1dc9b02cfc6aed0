#pragma once
// What an image with frames shows a player: how many frames, how often to loop, and each
// frame's picture and time.

#include <cstdint>
#include <optional>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvAnimationImage {
    ORV_DECLARE_PROTOCOL(OrvAnimationImage)
  public:
    virtual ~OrvAnimationImage() = default;

    virtual uint64_t frameCount() const = 0;
    // 0: forever.
    virtual uint64_t loopCount() const = 0;
    virtual gfx::ImagePtr imageFrameAtIndex(uint64_t index) = 0;
    // Seconds.
    virtual double durationAtIndex(uint64_t index) const = 0;
    // The part of the frame's picture to show; none when the whole picture is the frame.
    virtual std::optional<gfx::Rect> contentsRectAtIndex(uint64_t index) const {
        return std::nullopt;
    }
};
