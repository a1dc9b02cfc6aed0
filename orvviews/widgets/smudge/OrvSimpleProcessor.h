#pragma once
// The pixel canvas behind the brush tools. It holds the working picture (the canvas), a
// brush-sized scratch bitmap, an untouched copy of the source pixels, the brush, and the undo and
// redo histories, and turns each pair of touch points into a row of stamps. It draws nothing
// itself: subclasses do the stamping in drawAtPoint().
//
// Every bitmap is R, G, B, A bytes with premultiplied alpha, tight rows, row 0 at the top. The
// contexts over them are y up, as bitmap contexts are; touch points come in y down.
//
// All of it runs on the main thread, but for the background pass that writes history entries to
// disk (each entry guards itself, and the pass walks a copy of the list).

#include <cstdint>
#include <memory>
#include <vector>

#include "frameworks/core/OrvBrush.h"
#include "frameworks/core/OrvKit.h"
#include "orvviews/widgets/smudge/OrvSmudgeLog.h"
#include "platform/gfx/BitmapContext.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvSimpleProcessor : public rt::Object {
    ORV_DECLARE_CLASS(OrvSimpleProcessor)
  public:
    using History = std::vector<std::shared_ptr<OrvSmudgeLog>>;

    // Installs a picture (already at the size it is shown): a fresh canvas with the picture
    // drawn in and a second, independent copy of its pixels to read colours from. The
    // histories and the scratch bitmap stay as they are.
    virtual void setImage(const gfx::ImagePtr& image);
    // The brush, and a scratch bitmap of its picture's pixel size. Set the brush before its
    // size: only setBrushSize() computes the scale.
    virtual void setCurrentBrush(const std::shared_ptr<OrvBrush>& brush);
    // The stamp width as a fraction of the screen's width in pixels.
    virtual void setBrushSize(double size);

    uint64_t maxUndoCount() const { return maxUndoCount_; }
    void setMaxUndoCount(uint64_t count) { maxUndoCount_ = count; }
    // The on-screen size of the picture in points, which maps touches to canvas pixels. Zero
    // until the view fills it in; while it is zero touches map one point to one pixel.
    gfx::Size originIVSize() const { return originIVSize_; }
    void setOriginIVSize(gfx::Size size) { originIVSize_ = size; }

    // A stroke starts: the next segment has no predecessor to bend towards.
    void touchesBegan();
    // Stamps the segment from `from` to `current` (view points) and returns the canvas. Stamps
    // lie about 0.8 of the brush's width apart, at least one a segment, none at `from` itself;
    // the path bends so that it leaves `from` in the direction of the previous segment.
    gfx::ImagePtr drawAtCurrentPoint(gfx::Point current, gfx::Point from);
    // One stamp at a canvas pixel (y down), turned by `orientation` (radians, measured from the
    // y axis), at `scale` times the brush picture's size and `alpha` times its opacity.
    virtual void drawAtPoint(gfx::Point point, float orientation, float scale, float alpha) {}
    // The largest distance between two stamps of a brush this wide.
    virtual double getMaxTemplateDistance(double templateSize);

    // The end of a stroke: the canvas becomes the newest undo entry, the redo entries are
    // destroyed, and a background pass writes the entries to disk.
    void saveCurrentAsHistory();
    // Steps the history and returns the canvas, or null when there is nothing to step to.
    gfx::ImagePtr getUndoData();
    gfx::ImagePtr getRedoData();
    size_t getUndoCount() const { return undoHistory_ ? undoHistory_->size() : 0; }
    size_t getRedoCount() const { return redoHistory_ ? redoHistory_->size() : 0; }

    // The canvas now, as an image of scale 1 that later drawing leaves alone.
    gfx::ImagePtr getSmudgeImage();
    // The canvas with every pixel that still equals the installed picture made transparent:
    // what strokes changed, to lay over a larger copy of the picture.
    gfx::ImagePtr getChangedImage() const;
    // The canvas, or the installed picture when `preview` is false.
    virtual gfx::ImagePtr getPreviewImage(bool preview);

    // The image's pixels in the canvas format, drawn into a new buffer the caller owns.
    static std::vector<uint8_t> getRGBADataFromImage(const gfx::ImagePtr& image);
    // A context of the image's pixel size, with the image drawn in when asked.
    static std::unique_ptr<gfx::BitmapContext> createBitmapContextWithSizeOfImage(
        const gfx::ImagePtr& image, bool drawImage);
    // A transparent context that owns its zero-filled buffer.
    static std::unique_ptr<gfx::BitmapContext> createBitmapContextWithWidth(int width, int height);

    void clearSmudgeContext();
    // The canvas cleared, then the image drawn over all of it.
    void updateSmudgeContextWithImage(const gfx::ImagePtr& image);

    // Frees the bitmaps and destroys both histories with their files. Once only; nothing may
    // draw afterwards.
    virtual void destroy();
    // Destroys both histories with their files.
    void destroyHistory();
    static void destroySnapArray(History* history);
    // Keeps the undo list within maxUndoCount() and destroys the redo list.
    void organizeHistory();
    // Writes, on the high-priority global queue, every undo entry still only in memory.
    void runCacheJob();

    int imageWidth() const { return imageWidth_; }
    int imageHeight() const { return imageHeight_; }
    const std::shared_ptr<OrvBrush>& currentBrush() const { return currentBrush_; }
    double brushSize() const { return brushSize_; }
    double brushScale() const { return brushScale_; }

  protected:
    // The brush picture's size in points (its pixel size for the scale-1 pictures of brushes).
    gfx::Size brushImageSize() const;
    // The byte offset of a canvas point in originalData, or -1 outside the canvas's bytes. The
    // test is on the offset, as a row-major walk would see it: a point just past the right edge
    // passes when the next row exists.
    long long byteOffsetOfPoint(gfx::Point point) const;

    std::unique_ptr<gfx::BitmapContext> smudgeContext;
    std::unique_ptr<gfx::BitmapContext> brushContext;
    gfx::ImagePtr originalImage;
    int32_t imageDataSize = 0;
    std::vector<uint8_t> originalData;
    gfx::ImagePtr brushImage;

  private:
    int imageWidth_ = 0;
    int imageHeight_ = 0;
    std::shared_ptr<OrvBrush> currentBrush_;
    double brushSize_ = 0;
    double brushScale_ = 0;
    std::unique_ptr<History> undoHistory_;
    std::unique_ptr<History> redoHistory_;
    gfx::Point prevPrevTouchPoint_;
    bool prevPrevTouchPointExists_ = false;
    uint64_t maxUndoCount_ = 0;
    gfx::Size originIVSize_;
};
