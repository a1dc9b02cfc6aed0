#include "platform/codec/ImageSource.h"

#include <algorithm>
#include <map>

#include "platform/codec/DecodeLimits.h"
#include "platform/codec/GifCanvas.h"
#include "platform/codec/GifScanner.h"
#include "platform/codec/ImageType.h"

namespace orv::codec {

namespace {

// Viewers treat shorter delays as a mistake and play them at a tenth of a second.
constexpr double kShortestDelay = 0.011;
constexpr double kShortDelayReplacement = 0.1;

}  // namespace

struct ImageSource::Impl {
    Data data;
    bool final = false;
    GifScanner scanner;
    std::unique_ptr<GifCanvas> canvas;
    std::map<size_t, gfx::BitmapPtr> cache;

    void update(Data newData, bool isFinal);
    size_t count() const;
    // The canvas: the logical screen, grown to the first frame's extent when that does not
    // fit, as browsers do. None until the first frame is known, or when it is too large.
    std::optional<std::pair<int, int>> canvasSize() const;
    void feedCanvas() const;
    const uint8_t* bytes() const { return data ? data->data() : nullptr; }
    size_t size() const { return data ? data->size() : 0; }
};

void ImageSource::Impl::update(Data newData, bool isFinal) {
    if (final) return;
    const size_t newSize = newData ? newData->size() : 0;
    if (newSize < size()) {
        // Not the same file grown: start again.
        scanner = GifScanner();
        canvas.reset();
        cache.clear();
    }
    data = std::move(newData);
    final = isFinal;
    scanner.scan(bytes(), size());
    if (canvas) feedCanvas();
}

void ImageSource::Impl::feedCanvas() const {
    canvas->setData(bytes(), size(), final ? scanner.openImageBlock() : std::nullopt);
}

size_t ImageSource::Impl::count() const {
    if (!canvasSize()) return 0;
    const auto& frames = scanner.frames();
    // Until the last buffer, a frame counts once all of its data is in.
    return frames.back().complete || final ? frames.size() : frames.size() - 1;
}

std::optional<std::pair<int, int>> ImageSource::Impl::canvasSize() const {
    if (!scanner.hasScreen() || scanner.frames().empty()) return std::nullopt;
    const GifFrameInfo& first = scanner.frames().front();
    const int width = std::max(scanner.screenWidth(), first.left + first.width);
    const int height = std::max(scanner.screenHeight(), first.top + first.height);
    if (!acceptablePictureSize(width, height)) return std::nullopt;
    return std::make_pair(width, height);
}

ImageSource::ImageSource(Key) : impl_(std::make_unique<Impl>()) {}

ImageSource::~ImageSource() = default;

std::unique_ptr<ImageSource> ImageSource::createWithData(Data data) {
    if (!data || imageTypeOf(data->data(), data->size()) != ImageType::GIF) return nullptr;
    auto source = createIncremental();
    source->updateData(std::move(data), true);
    return source;
}

std::unique_ptr<ImageSource> ImageSource::createIncremental() {
    return std::make_unique<ImageSource>(Key());
}

void ImageSource::updateData(Data data, bool final) {
    impl_->update(std::move(data), final);
}

size_t ImageSource::count() const {
    return impl_->count();
}

std::optional<ImageSourceProperties> ImageSource::copyProperties() const {
    if (!impl_->scanner.hasScreen()) return std::nullopt;
    return ImageSourceProperties{impl_->scanner.loopCount()};
}

std::optional<ImageFrameProperties> ImageSource::copyPropertiesAtIndex(size_t index) const {
    if (index >= count()) return std::nullopt;
    const auto [width, height] = *impl_->canvasSize();
    const double delay = impl_->scanner.frames()[index].delayCentiseconds / 100.0;
    ImageFrameProperties properties;
    properties.pixelWidth = width;
    properties.pixelHeight = height;
    properties.unclampedDelayTime = delay;
    properties.delayTime = delay < kShortestDelay ? kShortDelayReplacement : delay;
    return properties;
}

gfx::BitmapPtr ImageSource::createImageAtIndex(size_t index, bool shouldCache) {
    if (index >= count()) return nullptr;
    if (const auto cached = impl_->cache.find(index); cached != impl_->cache.end()) {
        return cached->second;
    }
    if (!impl_->canvas) {
        const auto [width, height] = *impl_->canvasSize();
        impl_->canvas = std::make_unique<GifCanvas>(width, height);
        impl_->feedCanvas();
    }
    const auto& frames = impl_->scanner.frames();
    // A frame cut short shows the rows that arrived; one with none shows nothing.
    if (!impl_->canvas->compose(frames, index) && !frames[index].complete) return nullptr;
    gfx::BitmapPtr image = impl_->canvas->snapshot();
    if (shouldCache) impl_->cache.emplace(index, image);
    return image;
}

}  // namespace orv::codec
