#pragma once
// An animated picture's source (GIF, on giflib): made over complete data, or fed again and
// again with the whole buffer so far and a flag that says whether it is the last. It tells the
// frames known so far, the file's loop count, each frame's size and delay, and gives each frame
// composed on the canvas as a viewer shows it (colour tables, transparency, interlacing, frames
// smaller than or overlapping the canvas, every disposal method done).
//
// Composing frame i continues from the last frame composed when it can, so playing in order
// never replays the animation from the start. Frames made with `shouldCache` are kept; no
// others are. Malformed data gives what can be decoded: never a crash, a hang, or an
// allocation past the decode limits.
//
// Not thread-safe: its owner serialises the calls (the GIF decoder holds its lock).

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/gfx/Bitmap.h"

namespace orv::codec {

// The container's properties (kCGImagePropertyGIFLoopCount).
struct ImageSourceProperties {
    std::optional<long> loopCount;  // as stored in the file (0: forever); none without the block
};

// One frame's properties.
struct ImageFrameProperties {
    long pixelWidth = 0;  // the canvas the composed frame fills
    long pixelHeight = 0;
    std::optional<long> orientation;  // EXIF value, when the file says
    std::optional<double> delayTime;  // seconds, clamped as viewers do (≥ 0.1 when < 0.011)
    std::optional<double> unclampedDelayTime;  // seconds, as stored
};

class ImageSource {
  public:
    using Data = std::shared_ptr<const std::vector<uint8_t>>;

    // A source over complete data; null when it is no GIF.
    static std::unique_ptr<ImageSource> createWithData(Data data);
    // A source that waits for data.
    static std::unique_ptr<ImageSource> createIncremental();
    ~ImageSource();
    ImageSource(const ImageSource&) = delete;
    ImageSource& operator=(const ImageSource&) = delete;

    // The whole buffer so far; `final` when no more will come. Frames are known as soon as
    // their data is complete; until the final buffer only what lies before the end counts.
    void updateData(Data data, bool final);

    size_t count() const;
    std::optional<ImageSourceProperties> copyProperties() const;
    std::optional<ImageFrameProperties> copyPropertiesAtIndex(size_t index) const;
    // Frame `index` composed on the canvas, R, G, B, A premultiplied; null past the frames
    // known, or when not even part of it can be decoded (a frame cut short shows what arrived).
    gfx::BitmapPtr createImageAtIndex(size_t index, bool shouldCache);

    // Only the factories above can make the key, so only they construct a source.
    class Key {
        friend class ImageSource;
        Key() = default;
    };
    explicit ImageSource(Key);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace orv::codec
