#pragma once
// One frame of an animation: where it lies on the canvas, how long it shows, how it is
// disposed of and blended, and its pixels.

#include <cstdint>
#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvImageFrame : public rt::Object {
    ORV_DECLARE_CLASS(OrvImageFrame)
  public:
    // A frame with this image and every other field zero.
    static std::shared_ptr<OrvImageFrame> frameWithImage(gfx::ImagePtr image);
    // A frame of the same class with the same fields. Images are immutable, so the copy
    // shares it.
    virtual std::shared_ptr<OrvImageFrame> copy() const;

    uint64_t index() const { return index_; }
    void setIndex(uint64_t v) { index_ = v; }
    uint64_t width() const { return width_; }
    void setWidth(uint64_t v) { width_ = v; }
    uint64_t height() const { return height_; }
    void setHeight(uint64_t v) { height_ = v; }
    uint64_t offsetX() const { return offsetX_; }
    void setOffsetX(uint64_t v) { offsetX_ = v; }
    uint64_t offsetY() const { return offsetY_; }
    void setOffsetY(uint64_t v) { offsetY_ = v; }
    double duration() const { return duration_; }
    void setDuration(double v) { duration_ = v; }
    uint64_t dispose() const { return dispose_; }
    void setDispose(uint64_t v) { dispose_ = v; }
    uint64_t blend() const { return blend_; }
    void setBlend(uint64_t v) { blend_ = v; }
    const gfx::ImagePtr& image() const { return image_; }
    void setImage(gfx::ImagePtr v) { image_ = std::move(v); }

  protected:
    // Copies this class's fields into `frame`; subclasses add theirs.
    virtual void copyFieldsTo(OrvImageFrame& frame) const;

  private:
    uint64_t index_ = 0;
    uint64_t width_ = 0;
    uint64_t height_ = 0;
    uint64_t offsetX_ = 0;
    uint64_t offsetY_ = 0;
    double duration_ = 0;
    uint64_t dispose_ = 0;
    uint64_t blend_ = 0;
    gfx::ImagePtr image_;
};
