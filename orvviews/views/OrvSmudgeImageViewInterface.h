#pragma once
// What a brush tool may ask of its canvas view, whichever view offers it.

#include <cstdint>
#include <memory>

#include "frameworks/core/OrvBrush.h"
#include "frameworks/core/OrvKit.h"
#include "orvviews/views/OrvSmudgeImageViewDelegate.h"
#include "platform/gfx/Image.h"

class OrvSmudgeImageViewInterface {
    ORV_DECLARE_PROTOCOL(OrvSmudgeImageViewInterface)
  public:
    // Preset brush sizes, as fractions of the screen's width: 0.1, 0.15 and 0.2.
    static constexpr long kBrushSizeSmall = 1;
    static constexpr long kBrushSizeMedium = 2;
    static constexpr long kBrushSizeLarge = 3;

    virtual ~OrvSmudgeImageViewInterface() = default;

    // The picture at full size; any thread (the view's own work goes to the main thread, and the
    // caller waits for it, so the main thread must not be waiting for the caller).
    virtual void setImage(const gfx::ImagePtr& image) = 0;
    // Null is ignored. A new brush goes back to the preset size.
    virtual void setBrush(const std::shared_ptr<OrvBrush>& brush) = 0;
    virtual void setBrushSize(long sizeCode) = 0;
    // A free size as a fraction of the screen's width; set it after the brush.
    virtual void setBrushCustomSize(double size) = 0;
    virtual void setMaxUndoCount(uint64_t count) = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;
    // True shows the picture as it was, false the painted canvas again.
    virtual void showOriginal(bool original) = 0;
    virtual void needUpdateLayout() = 0;
    // The painted canvas stretched over `image` (the picture at full size).
    virtual gfx::ImagePtr getCanvasImage(const gfx::ImagePtr& image) = 0;
    virtual gfx::ImagePtr getSmudgeImage() = 0;
    virtual gfx::ImagePtr getOriginalImage() = 0;
    virtual void destroy() = 0;
    // Destroys the history and lets the picture go; the canvas stays.
    virtual void destroyHistory() = 0;
    virtual std::weak_ptr<OrvSmudgeImageViewDelegate> delegate() const = 0;
    virtual void setDelegate(std::weak_ptr<OrvSmudgeImageViewDelegate> delegate) = 0;
};
