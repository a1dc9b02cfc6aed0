#include "orvviews/widgets/image/OrvGifDecoder.h"

#include <limits>
#include <mutex>

#include "frameworks/core/OrvTSLog.h"
#include "orvviews/widgets/image/OrvImage.h"
#include "orvviews/widgets/image/OrvKitImageCoder.h"
#include "platform/codec/ImageType.h"
#include "platform/gfx/BitmapContext.h"

ORV_DEFINE_CLASS(OrvGifDecoder, OrvImageDecoder)

namespace {

constexpr uint64_t kGifType = static_cast<uint64_t>(codec::ImageType::GIF);
// The magic bytes are all read from this many; the type is settled only past it.
constexpr size_t kTypeHeaderLength = 16;

size_t sizeOf(const OrvImageDecoder::Data& data) {
    return data ? data->size() : 0;
}

}  // namespace

std::shared_ptr<OrvGifDecoder> OrvGifDecoder::decodeData(const Data& data, double scale) {
    if (!data) return nullptr;
    auto decoder = rt::makeWith<OrvGifDecoder>([&](OrvGifDecoder& d) { d.initWithScale(scale); });
    decoder->updateData(data, true);
    return decoder->frameCount() != 0 ? decoder : nullptr;
}

void OrvGifDecoder::initWithScale(double scale) {
    init();
    scale_ = scale > 0 ? scale : 1.0;
}

std::vector<uint64_t> OrvGifDecoder::supportedTypes() const {
    return {kGifType};
}

bool OrvGifDecoder::updateData(const Data& data, bool stopAppend) {
    std::lock_guard guard(lock);
    return doUpdateData(data, stopAppend);
}

bool OrvGifDecoder::doUpdateData(const Data& data, bool stopAppend) {
    if (dataCompleted_) return false;
    if (sizeOf(data) < sizeOf(data_)) return false;
    dataCompleted_ = stopAppend;
    data_ = data;

    const uint64_t type = detectImageType(data_);
    if (!validImageType(type)) {
        OrvTSLog::error("image type %d is not supported by GIFImage", static_cast<int>(type));
        return false;
    }
    if (sourceTypeDetected) {
        if (type != type_) return false;
        updateSource();
        return true;
    }
    // Wait for more than the header before settling the type and making a source.
    if (sizeOf(data_) > kTypeHeaderLength) {
        type_ = type;
        sourceTypeDetected = true;
        updateSource();
    }
    return true;
}

uint64_t OrvGifDecoder::detectImageType(const Data& data) const {
    if (sizeOf(data) < kTypeHeaderLength) return 0;
    return getImageType(data->data());
}

void OrvGifDecoder::updateSource() {
    resetData();
    parseData();
}

void OrvGifDecoder::resetData() {
    width_ = height_ = 0;
    orientation_ = 0;
    loopCount_ = frameCount_ = 0;
    {
        std::lock_guard guard(framesLock);
        frames.reset();
    }
    if (source) {
        source->updateData(data_, dataCompleted_);
    } else if (dataCompleted_) {
        source = codec::ImageSource::createWithData(data_);
    } else if ((source = codec::ImageSource::createIncremental())) {
        source->updateData(data_, false);
    }
}

void OrvGifDecoder::parseData() {
    if (!source) return;
    uint64_t count = source->count();
    frameCount_ = count;
    if (count == 0) return;
    if (dataCompleted_) {
        if (auto properties = source->copyProperties(); properties && properties->loopCount)
            loopCount_ = static_cast<uint64_t>(*properties->loopCount);
    } else {
        // Until the last byte, only the first frame shows.
        frameCount_ = count = 1;
    }

    double total = 0;
    auto list = std::make_shared<FrameList>();
    for (uint64_t i = 0; i < count; ++i) {
        auto frame = rt::make<OrvImageDecoderFrame>();
        frame->setIndex(i);
        frame->setBlendFromIndex(i);
        frame->setHasAlpha(true);
        frame->setIsFullSize(true);
        if (auto p = source->copyPropertiesAtIndex(i)) {
            frame->setWidth(static_cast<uint64_t>(p->pixelWidth));
            frame->setHeight(static_cast<uint64_t>(p->pixelHeight));
            if (type_ == kGifType) {
                // The delay as stored: a minimum frame time is the player's business.
                if (auto delay = p->unclampedDelayTime ? p->unclampedDelayTime : p->delayTime)
                    frame->setDuration(*delay);
            }
            if (i == 0 && width_ + height_ == 0) {
                width_ = frame->width();
                height_ = frame->height();
                if (p->orientation) {
                    orientation_ = static_cast<int64_t>(
                        OrvImage::UIImageOrientationFromEXIFValue(*p->orientation));
                }
            }
        }
        total += frame->duration();
        list->push_back(std::move(frame));
    }
    duration_ = total;

    std::lock_guard guard(framesLock);
    frames = std::move(list);
}

std::shared_ptr<OrvImageDecoderFrame> OrvGifDecoder::frameAtIndex(uint64_t index,
                                                                  bool shouldDecodeData) {
    std::lock_guard guard(lock);
    return _frameAtIndex(index, shouldDecodeData);
}

std::shared_ptr<OrvImageDecoderFrame> OrvGifDecoder::_frameAtIndex(uint64_t index,
                                                                   bool shouldDecodeData) {
    // Every writer of `frames` holds `lock`, which we hold too.
    if (!frames || index >= frames->size()) return nullptr;
    auto frame = std::static_pointer_cast<OrvImageDecoderFrame>((*frames)[index]->copy());

    bool decoded = false;
    auto bitmap = _newUnblendedImageAtIndex(index, shouldDecodeData, decoded);
    if (!bitmap) return nullptr;
    if (shouldDecodeData && !decoded) {
        if (auto copy = orvelCGImageCreateDecodedCopy(bitmap, true)) {
            bitmap = std::move(copy);
            decoded = true;
        }
    }
    auto image = gfx::Image::withBitmap(std::move(bitmap), scale_,
                                        static_cast<gfx::ImageOrientation>(orientation_));
    setOrvel_isDecodedForDisplay(*image, decoded);
    frame->setImage(std::move(image));
    return frame;
}

gfx::BitmapPtr OrvGifDecoder::_newUnblendedImageAtIndex(uint64_t index, bool extendToCanvas,
                                                        bool& decoded) {
    if (!dataCompleted_ && index != 0) return nullptr;
    if (!frames || index >= frames->size() || !source) return nullptr;

    auto image = source->createImageAtIndex(index, true);
    if (!image || !extendToCanvas) return image;

    const bool canvasSized =
        uint64_t(image->width()) == width_ && uint64_t(image->height()) == height_;
    auto extended = canvasSized ? orvelCGImageCreateDecodedCopy(image, true)
                                : extendedToCanvas(*image, width_, height_);
    if (!extended) return image;  // undecoded, but still a picture
    decoded = true;
    return extended;
}

gfx::BitmapPtr OrvGifDecoder::extendedToCanvas(const gfx::Bitmap& image, uint64_t width,
                                               uint64_t height) {
    constexpr uint64_t kLargest = std::numeric_limits<int>::max();
    if (width > kLargest || height > kLargest) return nullptr;
    gfx::BitmapContext context(static_cast<int>(width), static_cast<int>(height),
                               gfx::PixelFormat::BGRA8888Premultiplied);
    if (!context.data()) return nullptr;
    // y runs up here: the frame's top edge meets the canvas's top edge.
    const double w = image.width(), h = image.height();
    context.drawImage({0, double(height) - h, w, h}, image);
    return context.makeImage();
}

double OrvGifDecoder::frameDurationAtIndex(uint64_t index) {
    std::lock_guard guard(framesLock);
    return frames && index < frames->size() ? (*frames)[index]->duration() : 0;
}
