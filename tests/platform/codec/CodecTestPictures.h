#pragma once
// Pictures and comparisons shared by the codec tests.

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/gfx/Bitmap.h"
#include "platform/rt/Log.h"

namespace orv::codec::test {

// Smooth ramps in red and green and a constant blue: easy on a lossy codec, and every pixel
// differs from its neighbours so a shifted or mirrored decode shows. With `translucent`, alpha
// falls along the rows and the colours are premultiplied.
inline gfx::BitmapPtr gradient(int width, int height, bool translucent = false) {
    auto b = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t* p = b->mutableRow(y);
        for (int x = 0; x < width; ++x, p += 4) {
            const int a = translucent ? 255 - 200 * y / std::max(1, height - 1) : 255;
            const int rgb[] = {255 * x / std::max(1, width - 1), 255 * y / std::max(1, height - 1),
                               96};
            for (int c = 0; c < 3; ++c) p[c] = uint8_t((rgb[c] * a + 127) / 255);
            p[3] = uint8_t(a);
        }
    }
    return b;
}

// The largest difference of any byte of two bitmaps of the same size and format; 256 when
// they cannot be compared.
inline int maxDifference(const gfx::Bitmap& a, const gfx::Bitmap& b) {
    if (a.width() != b.width() || a.height() != b.height() || a.format() != b.format()) return 256;
    int worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int i = 0; i < 4 * a.width(); ++i)
            worst = std::max(worst, std::abs(a.row(y)[i] - b.row(y)[i]));
    }
    return worst;
}

// Keeps the log lines written while it lives.
class LogCapture {
  public:
    LogCapture()
        : previous_(rt::Log::setSink(
              [this](rt::Log::Level, const std::string& line) { lines_ += line + "\n"; })) {}
    ~LogCapture() { rt::Log::setSink(previous_); }
    const std::string& text() const { return lines_; }

  private:
    std::string lines_;
    rt::Log::Sink previous_;
};

}  // namespace orv::codec::test
