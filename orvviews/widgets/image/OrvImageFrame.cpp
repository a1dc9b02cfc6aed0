#include "orvviews/widgets/image/OrvImageFrame.h"

ORV_DEFINE_CLASS(OrvImageFrame, rt::Object)

std::shared_ptr<OrvImageFrame> OrvImageFrame::frameWithImage(gfx::ImagePtr image) {
    auto frame = rt::make<OrvImageFrame>();
    frame->image_ = std::move(image);
    return frame;
}

std::shared_ptr<OrvImageFrame> OrvImageFrame::copy() const {
    auto frame = rt::make<OrvImageFrame>();
    copyFieldsTo(*frame);
    return frame;
}

void OrvImageFrame::copyFieldsTo(OrvImageFrame& frame) const {
    frame.index_ = index_;
    frame.width_ = width_;
    frame.height_ = height_;
    frame.offsetX_ = offsetX_;
    frame.offsetY_ = offsetY_;
    frame.duration_ = duration_;
    frame.dispose_ = dispose_;
    frame.blend_ = blend_;
    frame.image_ = image_;
}
