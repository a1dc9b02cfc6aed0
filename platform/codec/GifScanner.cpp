#include "platform/codec/GifScanner.h"

#include <cstring>

#include "platform/codec/ImageType.h"

namespace orv::codec {

namespace {

constexpr uint8_t kExtensionIntroducer = 0x21;
constexpr uint8_t kImageSeparator = 0x2C;
constexpr uint8_t kGraphicControlLabel = 0xF9;
constexpr uint8_t kApplicationLabel = 0xFF;
constexpr size_t kScreenDescriptorEnd = 13;
constexpr size_t kImageDescriptorSize = 10;  // the separator included

int le16(const uint8_t* p) {
    return p[0] | p[1] << 8;
}

// Bytes of the colour table a packed field announces, 0 when it has none.
size_t colorTableBytes(uint8_t packed) {
    return packed & 0x80 ? size_t{3} << ((packed & 7) + 1) : 0;
}

}  // namespace

void GifScanner::scan(const uint8_t* data, size_t size) {
    if (size < pos_) *this = GifScanner();
    while (state_ != State::Done && step(data, size)) {
    }
}

bool GifScanner::step(const uint8_t* data, size_t size) {
    switch (state_) {
        case State::Header:
            return readHeader(data, size);
        case State::Blocks:
            return readBlock(data, size);
        case State::ExtensionData:
        case State::ImageData:
            return readSubBlock(data, size);
        case State::Done:
            break;
    }
    return false;
}

bool GifScanner::readHeader(const uint8_t* data, size_t size) {
    if (size < kScreenDescriptorEnd) return false;
    if (imageTypeOf(data, size) != ImageType::GIF) {
        state_ = State::Done;
        return false;
    }
    const size_t end = kScreenDescriptorEnd + colorTableBytes(data[10]);
    if (size < end) return false;
    hasScreen_ = true;
    screenWidth_ = le16(data + 6);
    screenHeight_ = le16(data + 8);
    pos_ = end;
    state_ = State::Blocks;
    return true;
}

bool GifScanner::readBlock(const uint8_t* data, size_t size) {
    if (pos_ >= size) return false;
    switch (data[pos_]) {
        case kExtensionIntroducer:
            return readExtensionStart(data, size);
        case kImageSeparator:
            return readImageStart(data, size);
        default:
            // The trailer, or bytes no decoder could make sense of: nothing after counts.
            state_ = State::Done;
            return false;
    }
}

bool GifScanner::readExtensionStart(const uint8_t* data, size_t size) {
    if (size - pos_ < 2) return false;
    extensionLabel_ = data[pos_ + 1];
    extensionBlockIndex_ = 0;
    loopExtension_ = false;
    pos_ += 2;
    state_ = State::ExtensionData;
    return true;
}

bool GifScanner::readImageStart(const uint8_t* data, size_t size) {
    // The descriptor, its colour table and the code size byte: then the frame is known.
    if (size - pos_ < kImageDescriptorSize) return false;
    const uint8_t* d = data + pos_ + 1;
    const size_t end = pos_ + kImageDescriptorSize + colorTableBytes(d[8]) + 1;
    if (size < end) return false;
    GifFrameInfo frame = pending_;
    frame.descriptorOffset = pos_;
    frame.left = uint16_t(le16(d));
    frame.top = uint16_t(le16(d + 2));
    frame.width = uint16_t(le16(d + 4));
    frame.height = uint16_t(le16(d + 6));
    frame.interlaced = d[8] & 0x40;
    frames_.push_back(frame);
    pending_ = GifFrameInfo();
    pos_ = end;
    state_ = State::ImageData;
    return true;
}

bool GifScanner::readSubBlock(const uint8_t* data, size_t size) {
    if (pos_ >= size) return false;
    const size_t length = data[pos_];
    if (length == 0) {
        if (state_ == State::ImageData) {
            frames_.back().complete = true;
        }
        pos_ += 1;
        state_ = State::Blocks;
        return true;
    }
    if (size - pos_ < 1 + length) return false;
    if (state_ == State::ExtensionData) {
        readExtensionBlock(data + pos_ + 1, length);
    }
    pos_ += 1 + length;
    return true;
}

void GifScanner::readExtensionBlock(const uint8_t* block, size_t length) {
    const int index = extensionBlockIndex_++;
    if (extensionLabel_ == kGraphicControlLabel && index == 0 && length >= 4) {
        const uint8_t disposal = (block[0] >> 2) & 7;
        pending_.disposal = disposal <= 3 ? disposal : 0;  // undefined methods keep the frame
        pending_.delayCentiseconds = uint16_t(le16(block + 1));
        pending_.transparentIndex = int16_t(block[0] & 1 ? block[3] : -1);
    } else if (extensionLabel_ == kApplicationLabel && index == 0) {
        loopExtension_ = length == 11 && (std::memcmp(block, "NETSCAPE2.0", 11) == 0 ||
                                          std::memcmp(block, "ANIMEXTS1.0", 11) == 0);
    } else if (loopExtension_ && index == 1 && length >= 3 && block[0] == 1 && !loopCount_) {
        loopCount_ = le16(block + 1);
    }
}

}  // namespace orv::codec
