#include "orvviews/widgets/image/OrvGifImage.h"

#include <mutex>

#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/widgets/image/OrvKitImageCoder.h"
#include "platform/rt/Bundle.h"
#include "platform/ui/Screen.h"

ORV_DEFINE_CLASS(OrvGifImage, OrvImage, OrvAnimationImage)

namespace {

// The file's bytes; null when it cannot be read or is empty.
OrvImage::Data readFile(const std::string& path) {
    auto bytes = OrvTSFileManager::readDataAtPath(path);
    if (!bytes || bytes->empty()) return nullptr;
    return std::make_shared<const std::vector<uint8_t>>(std::move(*bytes));
}

// The first existing resource among the scale variants of `base`, and the scale it is for.
std::optional<std::pair<std::string, double>> findResource(const std::string& base,
                                                           const std::string& extension) {
    static const std::vector<std::string> kExtensions = {"", "png", "jpeg", "jpg", "gif", "webp"};
    const std::vector<std::string> candidates =
        extension.empty() ? kExtensions : std::vector<std::string>{extension};
    for (double scale : OrvImage::getBundlePreferredScales()) {
        const auto name = OrvImage::getResFilename(base, scale);
        for (const auto& type : candidates) {
            if (auto path = rt::Bundle::main().pathForResource(*name, type))
                return std::make_pair(*path, scale);
        }
    }
    return std::nullopt;
}

template <class Init>
std::shared_ptr<OrvGifImage> madeWith(Init&& initializer) {
    bool ok = false;
    auto image = rt::makeWith<OrvGifImage>([&](OrvGifImage& i) { ok = initializer(i); });
    return ok ? image : nullptr;
}

}  // namespace

std::shared_ptr<OrvImage> OrvGifImage::imageNamed(const std::string& name, const rt::Class* cls) {
    if (name.empty() || name.back() == '/') return nullptr;
    const auto found = findResource(stringByDeletingPathExtension(name), pathExtension(name));
    if (!found) return nullptr;
    auto data = readFile(found->first);
    if (!data) return nullptr;
    auto image = rt::cast<OrvImage>(cls->instantiate());
    return image && image->initWithData(data, found->second) ? image : nullptr;
}

std::shared_ptr<OrvGifImage> OrvGifImage::imageWithContentsOfFile(const std::string& path) {
    return madeWith([&](OrvGifImage& i) { return i.initWithContentsOfFile(path); });
}

std::shared_ptr<OrvGifImage> OrvGifImage::imageWithData(const Data& data) {
    return madeWith([&](OrvGifImage& i) { return i.initWithData(data); });
}

bool OrvGifImage::initWithContentsOfFile(const std::string& path) {
    return initWithData(readFile(path), getScaleFromFilename(path));
}

bool OrvGifImage::initWithData(const Data& data) {
    return initWithData(data, 1.0);
}

bool OrvGifImage::initWithData(const Data& data, double scale) {
    if (!data || data->empty()) return false;
    if (scale <= 0) scale = ui::Screen::main().scale();

    // A decoder not kept (one frame) goes when this returns.
    auto gifDecoder = OrvGifDecoder::decodeData(data, scale);
    auto frame = gifDecoder ? gifDecoder->frameAtIndex(0, true) : nullptr;
    auto image = frame ? frame->image() : nullptr;
    if (!image || !image->bitmap()) return false;

    initWithBitmap(image->bitmap(), gifDecoder->scale(), image->orientation());
    if (gifDecoder->frameCount() > 1) {
        decoder = std::move(gifDecoder);
        bytesPerFrame_ = bitmap_->rowBytes() * static_cast<uint64_t>(bitmap_->height());
    }
    setOrvel_isDecodedForDisplay(*this, true);
    return true;
}

uint64_t OrvGifImage::frameCount() const {
    return decoder ? decoder->frameCount() : 0;
}

uint64_t OrvGifImage::loopCount() const {
    return decoder ? decoder->loopCount() : 0;
}

double OrvGifImage::duration() const {
    return decoder ? decoder->duration() : 0;
}

gfx::ImagePtr OrvGifImage::imageFrameAtIndex(uint64_t index) {
    if (index >= frameCount()) return nullptr;
    {
        std::lock_guard guard(preloadedLock);
        // A filled slot list answers for itself, null slots included.
        if (index < preloadedFrames.size()) return preloadedFrames[index];
    }
    auto frame = decoder->frameAtIndex(index, true);
    return frame ? frame->image() : nullptr;
}

double OrvGifImage::durationAtIndex(uint64_t index) const {
    if (!decoder) return 0;
    const double d = decoder->frameDurationAtIndex(index);
    return d < static_cast<double>(0.011f) ? static_cast<double>(0.1f) : d;
}
