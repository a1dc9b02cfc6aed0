#pragma once
// The immutable pixel store. The default format is 8 bits a component, bytes R, G, B, A in
// memory, alpha premultiplied, rows tight, row 0 on top. The format is a tag, because decoded
// copies for display also come in B, G, R, A and B, G, R, X.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orv::gfx {

enum class PixelFormat {
    RGBA8888Premultiplied,  // bytes R, G, B, A
    BGRA8888Premultiplied,  // bytes B, G, R, A
    BGRX8888,               // bytes B, G, R, unused (opaque)
};

int bytesPerPixel(PixelFormat format);  // 4 for every format we have

class Bitmap {
  public:
    // A zero-filled (transparent) bitmap; rowBytes 0 means tight rows.
    Bitmap(int width, int height, PixelFormat format = PixelFormat::RGBA8888Premultiplied,
           size_t rowBytes = 0);
    // Takes the pixels as they are; `pixels` must hold rowBytes * height bytes.
    Bitmap(int width, int height, PixelFormat format, size_t rowBytes, std::vector<uint8_t> pixels);

    int width() const { return width_; }
    int height() const { return height_; }
    size_t rowBytes() const { return rowBytes_; }
    PixelFormat format() const { return format_; }
    const uint8_t* data() const { return pixels_.data(); }
    const uint8_t* row(int y) const { return pixels_.data() + rowBytes_ * static_cast<size_t>(y); }
    const uint8_t* pixel(int x, int y) const { return row(y) + 4 * static_cast<size_t>(x); }
    size_t byteCount() const { return pixels_.size(); }

    // Writable access for the code that fills a new bitmap before sharing it.
    uint8_t* mutableData() { return pixels_.data(); }
    uint8_t* mutableRow(int y) { return pixels_.data() + rowBytes_ * static_cast<size_t>(y); }

    // The same picture in another format (straight copy when it already is in that format).
    std::shared_ptr<Bitmap> converted(PixelFormat format) const;

  private:
    int width_;
    int height_;
    PixelFormat format_;
    size_t rowBytes_;
    std::vector<uint8_t> pixels_;
};

using BitmapPtr = std::shared_ptr<const Bitmap>;

}  // namespace orv::gfx
