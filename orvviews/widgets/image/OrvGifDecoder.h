#pragma once
// GIF data, received whole or as a growing buffer, turned into a table of frames (size and
// duration each) and, on request, into frame images. The platform's image source does the
// reading and composes every frame on the canvas, so each frame of the table stands alone.
//
// Partial data shows frame 0 only; all frames appear with the last byte. Thread-safe: `lock`
// serialises updates and decoding, while `framesLock` guards only the swap and the reading of
// the table, so that a player asks durations without waiting for a decode. Always take `lock`
// before `framesLock`.

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "orvviews/widgets/image/OrvImageDecoder.h"
#include "orvviews/widgets/image/OrvImageDecoderFrame.h"
#include "platform/gfx/Bitmap.h"
#include "platform/rt/SpinLock.h"

class OrvGifDecoder : public OrvImageDecoder {
    ORV_DECLARE_CLASS(OrvGifDecoder)
  public:
    using FrameList = std::vector<std::shared_ptr<OrvImageDecoderFrame>>;

    // A decoder over the complete data; null without data or when no frame could be read.
    static std::shared_ptr<OrvGifDecoder> decodeData(const Data& data, double scale);
    // Scales of 0 or less are 1.
    void initWithScale(double scale);

    std::vector<uint64_t> supportedTypes() const override;

    // `data` is the whole buffer so far, not an increment; `stopAppend` when no more will
    // come. False for a shrinking buffer, data after the last, or data that is no GIF.
    bool updateData(const Data& data, bool stopAppend);
    // A copy of the frame with its image; with shouldDecodeData the image fills the canvas
    // and is decoded for display. Null past the frames known.
    std::shared_ptr<OrvImageDecoderFrame> frameAtIndex(uint64_t index, bool shouldDecodeData);
    // Seconds as stored in the file; 0 past the end (and while the table is rebuilt).
    double frameDurationAtIndex(uint64_t index);

    uint64_t frameCount() const { return frameCount_; }
    uint64_t loopCount() const { return loopCount_; }
    double duration() const { return duration_; }

    // A frame smaller than the canvas, placed at the canvas's top left in a canvas-sized
    // B, G, R, A bitmap (decoded for display); null when no such bitmap can be made.
    static gfx::BitmapPtr extendedToCanvas(const gfx::Bitmap& image, uint64_t width,
                                           uint64_t height);

  private:
    // All of these run with `lock` held.
    bool doUpdateData(const Data& data, bool stopAppend);
    uint64_t detectImageType(const Data& data) const;
    void updateSource();
    void parseData();
    void resetData();
    std::shared_ptr<OrvImageDecoderFrame> _frameAtIndex(uint64_t index, bool shouldDecodeData);
    gfx::BitmapPtr _newUnblendedImageAtIndex(uint64_t index, bool extendToCanvas, bool& decoded);

    rt::RecursiveMutex lock;
    bool sourceTypeDetected = false;
    std::unique_ptr<codec::ImageSource> source;
    rt::SpinLock framesLock;
    std::shared_ptr<const FrameList> frames;
    // Read without `lock` by players, so atomic.
    std::atomic<uint64_t> frameCount_{0};
    std::atomic<uint64_t> loopCount_{0};
    std::atomic<double> duration_{0};
};
