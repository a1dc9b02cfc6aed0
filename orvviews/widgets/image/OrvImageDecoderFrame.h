#pragma once
// A frame as a decoder reports it: with what composition needs to know to show it.

#include <cstdint>
#include <memory>

#include "orvviews/widgets/image/OrvImageFrame.h"

class OrvImageDecoderFrame : public OrvImageFrame {
    ORV_DECLARE_CLASS(OrvImageDecoderFrame)
  public:
    std::shared_ptr<OrvImageFrame> copy() const override;

    bool hasAlpha() const { return hasAlpha_; }
    void setHasAlpha(bool v) { hasAlpha_ = v; }
    // The frame covers the whole canvas.
    bool isFullSize() const { return isFullSize_; }
    void setIsFullSize(bool v) { isFullSize_ = v; }
    // The frame from which composition must start to show this one.
    uint64_t blendFromIndex() const { return blendFromIndex_; }
    void setBlendFromIndex(uint64_t v) { blendFromIndex_ = v; }

  protected:
    void copyFieldsTo(OrvImageFrame& frame) const override;

  private:
    bool hasAlpha_ = false;
    bool isFullSize_ = false;
    uint64_t blendFromIndex_ = 0;
};
