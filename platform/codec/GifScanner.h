#pragma once
// Walks the blocks of a GIF as its bytes arrive: the screen, the loop count and, for each
// frame, where its image descriptor lies and how it is to be drawn. Pixel data is skipped, not
// decoded. The walk resumes where it stopped (at a block or a sub-block), so feeding a file a
// little at a time costs no more than reading it once.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace orv::codec {

// What is known of a frame before its pixels are decoded (small: a file may hold millions).
struct GifFrameInfo {
    size_t descriptorOffset = 0;  // the image separator (0x2C)
    uint16_t left = 0, top = 0, width = 0, height = 0;
    int16_t transparentIndex = -1;  // none when negative
    uint16_t delayCentiseconds = 0;
    uint8_t disposal = 0;  // 0 and 1 keep, 2 clears to transparent, 3 restores what was before
    bool interlaced = false;
    bool complete = false;  // its data ends with the terminating empty sub-block
};

class GifScanner {
  public:
    // Reads on from where the previous call stopped. `data` must start with the bytes seen so
    // far; a shorter buffer starts the walk again.
    void scan(const uint8_t* data, size_t size);

    bool hasScreen() const { return hasScreen_; }
    int screenWidth() const { return screenWidth_; }
    int screenHeight() const { return screenHeight_; }
    std::optional<long> loopCount() const { return loopCount_; }
    // Frames whose descriptor, colour table and code size have arrived, complete or not (only
    // the last may be incomplete).
    const std::vector<GifFrameInfo>& frames() const { return frames_; }
    // Where the sub-block the walk waits for begins, when it waits inside a frame's data: on
    // the last buffer, that frame was cut short there.
    std::optional<size_t> openImageBlock() const {
        return state_ == State::ImageData ? std::optional(pos_) : std::nullopt;
    }

  private:
    enum class State { Header, Blocks, ExtensionData, ImageData, Done };

    bool step(const uint8_t* data, size_t size);
    bool readHeader(const uint8_t* data, size_t size);
    bool readBlock(const uint8_t* data, size_t size);
    bool readExtensionStart(const uint8_t* data, size_t size);
    bool readImageStart(const uint8_t* data, size_t size);
    bool readSubBlock(const uint8_t* data, size_t size);
    void readExtensionBlock(const uint8_t* block, size_t length);

    State state_ = State::Header;
    size_t pos_ = 0;
    bool hasScreen_ = false;
    int screenWidth_ = 0, screenHeight_ = 0;
    std::optional<long> loopCount_;
    std::vector<GifFrameInfo> frames_;

    // The graphic control extension waiting for the next frame.
    GifFrameInfo pending_;
    // The extension being read: its label, how many of its sub-blocks went by, and whether it
    // is the one that holds the loop count.
    uint8_t extensionLabel_ = 0;
    int extensionBlockIndex_ = 0;
    bool loopExtension_ = false;
};

}  // namespace orv::codec
