#include "orvviews/widgets/image/OrvImageDecoderFrame.h"

ORV_DEFINE_CLASS(OrvImageDecoderFrame, OrvImageFrame)

std::shared_ptr<OrvImageFrame> OrvImageDecoderFrame::copy() const {
    auto frame = rt::make<OrvImageDecoderFrame>();
    copyFieldsTo(*frame);
    return frame;
}

void OrvImageDecoderFrame::copyFieldsTo(OrvImageFrame& frame) const {
    OrvImageFrame::copyFieldsTo(frame);
    auto& decoderFrame = static_cast<OrvImageDecoderFrame&>(frame);
    decoderFrame.hasAlpha_ = hasAlpha_;
    decoderFrame.isFullSize_ = isFullSize_;
    decoderFrame.blendFromIndex_ = blendFromIndex_;
}
