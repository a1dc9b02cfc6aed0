#pragma once
// A picture whose content is the first frame of a GIF and which gives a player every frame
// and its time through OrvAnimationImage. Only the first frame is kept decoded (as the picture
// itself); the others are decoded when asked, from the decoder kept with the encoded data.
// A GIF of one frame is a still picture: no decoder is kept and it reports no frames.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "orvviews/widgets/image/OrvAnimationImage.h"
#include "orvviews/widgets/image/OrvGifDecoder.h"
#include "orvviews/widgets/image/OrvImage.h"
#include "platform/rt/SpinLock.h"

class OrvGifImage : public OrvImage, public OrvAnimationImage {
    ORV_DECLARE_CLASS(OrvGifImage)
  public:
    // The resource file of this name at the first of the preferred scales it exists at, made
    // an instance of `cls` (this class or a subclass). An extensionless name is tried bare,
    // then as .png, .jpeg, .jpg, .gif and .webp.
    static std::shared_ptr<OrvImage> imageNamed(const std::string& name,
                                                const rt::Class* cls = staticClass());
    static std::shared_ptr<OrvGifImage> imageWithContentsOfFile(const std::string& path);
    static std::shared_ptr<OrvGifImage> imageWithData(const Data& data);

    // The scale of a "@2x"-style file name.
    bool initWithContentsOfFile(const std::string& path) override;
    bool initWithData(const Data& data) override;
    // A scale of 0 or less is the main screen's.
    bool initWithData(const Data& data, double scale) override;

    uint64_t frameCount() const override;
    uint64_t loopCount() const override;
    // Decoded anew at each call; null past the end.
    gfx::ImagePtr imageFrameAtIndex(uint64_t index) override;
    // Delays too short to show (under 0.011 s) play as 0.1 s, as viewers do.
    double durationAtIndex(uint64_t index) const override;

    // The decoder's sum of the stored delays (the 0.1 s floor not applied).
    double duration() const;
    uint64_t currentFrameIndex() const { return currentFrameIndex_; }
    // Bytes of one decoded frame, for budgeting a frame cache.
    uint64_t bytesPerFrame() const { return bytesPerFrame_; }

  private:
    std::shared_ptr<OrvGifDecoder> decoder;
    // Room for a frame cache: nothing fills these yet.
    bool preloadAllFrame = false;
    // One slot per frame once filled: a picture, or null for a frame that has none. Empty
    // means no cache, and every frame comes from the decoder.
    std::vector<gfx::ImagePtr> preloadedFrames;
    rt::SpinLock preloadedLock;
    uint64_t bytesPerFrame_ = 0;
    uint64_t currentFrameIndex_ = 0;
};
