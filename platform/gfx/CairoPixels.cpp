#include "platform/gfx/CairoPixels.h"

#include <bit>
#include <cstdint>
#include <list>
#include <mutex>
#include <unordered_map>

namespace orv::gfx::cairo_pixels {

static_assert(std::endian::native == std::endian::little,
              "cairo's ARGB32 words are taken as bytes B, G, R, A");

namespace {

// Large enough for a screenful of photos and icons; a single bigger picture is converted each
// time instead of pushing everything else out.
constexpr size_t kBudgetBytes = 128u << 20;

class ConversionCache {
  public:
    BitmapPtr lookup(const BitmapPtr& source) {
        std::lock_guard lock(mutex_);
        auto it = entries_.find(source.get());
        if (it == entries_.end()) return nullptr;
        // The address may belong to a new bitmap after the old one died.
        if (it->second->source.lock() != source) {
            erase(it);
            return nullptr;
        }
        order_.splice(order_.begin(), order_, it->second);
        return it->second->converted;
    }

    void insert(const BitmapPtr& source, BitmapPtr converted) {
        const size_t bytes = converted->byteCount();
        if (bytes > kBudgetBytes / 2) return;
        std::lock_guard lock(mutex_);
        if (auto it = entries_.find(source.get()); it != entries_.end()) erase(it);
        dropExpired();
        order_.push_front(Entry{source, std::move(converted), source.get()});
        entries_[source.get()] = order_.begin();
        used_ += bytes;
        while (used_ > kBudgetBytes && !order_.empty()) erase(entries_.find(order_.back().key));
    }

    void clear() {
        std::lock_guard lock(mutex_);
        entries_.clear();
        order_.clear();
        used_ = 0;
    }

  private:
    struct Entry {
        std::weak_ptr<const Bitmap> source;
        BitmapPtr converted;
        const Bitmap* key;
    };
    using Order = std::list<Entry>;

    void erase(std::unordered_map<const Bitmap*, Order::iterator>::iterator it) {
        used_ -= it->second->converted->byteCount();
        order_.erase(it->second);
        entries_.erase(it);
    }

    // Conversions of bitmaps nobody holds any more only take room.
    void dropExpired() {
        for (auto it = order_.begin(); it != order_.end();) {
            auto next = std::next(it);
            if (it->source.expired()) erase(entries_.find(it->key));
            it = next;
        }
    }

    std::mutex mutex_;
    Order order_;  // most recently used first
    std::unordered_map<const Bitmap*, Order::iterator> entries_;
    size_t used_ = 0;
};

ConversionCache& cache() {
    static ConversionCache instance;
    return instance;
}

}  // namespace

BitmapPtr readyForCairo(const BitmapPtr& bitmap) {
    if (!bitmap || bitmap->format() != PixelFormat::RGBA8888Premultiplied) return bitmap;
    if (BitmapPtr hit = cache().lookup(bitmap)) return hit;
    BitmapPtr converted = bitmap->converted(PixelFormat::BGRA8888Premultiplied);
    cache().insert(bitmap, converted);
    return converted;
}

cairo_surface_t* wrap(const Bitmap& pixels) {
    const cairo_format_t format =
        pixels.format() == PixelFormat::BGRX8888 ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32;
    // Cairo only reads a source surface, so handing it the immutable bytes is safe.
    return cairo_image_surface_create_for_data(const_cast<uint8_t*>(pixels.data()), format,
                                               pixels.width(), pixels.height(),
                                               static_cast<int>(pixels.rowBytes()));
}

void purgeCache() {
    cache().clear();
}

}  // namespace orv::gfx::cairo_pixels
