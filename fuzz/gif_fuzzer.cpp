// The GIF image source: each input whole, then fed as growing prefixes (the input's own last
// bytes pick the prefix lengths), with frames asked for in order, backwards and again.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "fuzz/FuzzSetup.h"
#include "platform/codec/ImageSource.h"

namespace {

using orv::codec::ImageSource;
using Bytes = std::vector<uint8_t>;

// Canvases larger than this are still scanned, but not composed: a few of those per input
// would make every run slow without reaching new code.
constexpr long kMaxComposedPixels = 1 << 18;
constexpr size_t kMaxFramesAsked = 64;

struct Random {
    uint64_t state;
    uint32_t next() {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return uint32_t(state >> 11);
    }
};

bool composable(const ImageSource& source) {
    const auto frame = source.copyPropertiesAtIndex(0);
    return frame && frame->pixelWidth * frame->pixelHeight <= kMaxComposedPixels;
}

void askFrames(ImageSource& source, Random& random) {
    source.copyProperties();
    const size_t count = source.count();
    if (count == 0 || !composable(source)) return;
    const size_t asked = std::min(count, kMaxFramesAsked);
    for (size_t i = 0; i < asked; ++i) {
        source.copyPropertiesAtIndex(i);
        source.createImageAtIndex(i, random.next() % 4 == 0);
    }
    source.createImageAtIndex(random.next() % asked, false);
    source.createImageAtIndex(count, false);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return orv::fuzz::quietLogs();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    uint64_t seed = 0x9E3779B97F4A7C15ull;
    for (size_t i = size > 8 ? size - 8 : 0; i < size; ++i) seed = seed * 131 + data[i];
    Random random{seed | 1};

    auto whole = std::make_shared<const Bytes>(data, data + size);
    if (auto source = ImageSource::createWithData(whole)) askFrames(*source, random);

    auto source = ImageSource::createIncremental();
    size_t have = 0;
    while (have < size) {
        have = std::min(size, have + 1 + random.next() % (size / 4 + 1));
        source->updateData(std::make_shared<const Bytes>(data, data + have), have == size);
        askFrames(*source, random);
    }
    return 0;
}
