#pragma once
// The canvas a GIF's frames are drawn on in turn, as a viewer shows them: each frame decoded
// by giflib straight from the file's bytes, painted through its colour table and
// transparency, and disposed of before the next one (kept, cleared, or restored from a backup
// of its rectangle).
//
// The canvas after the last composed frame is kept, so asking for the next frame draws only
// that one. Going back starts again from the nearest frame that needs nothing of the frames
// before it. Memory is the canvas, a backup of at most its size and one row of the frame.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/codec/GifScanner.h"
#include "platform/gfx/Bitmap.h"

struct GifFileType;

namespace orv::codec {

class GifCanvas {
  public:
    GifCanvas(int width, int height);
    ~GifCanvas();
    GifCanvas(const GifCanvas&) = delete;
    GifCanvas& operator=(const GifCanvas&) = delete;

    // The whole file so far. Must be called again whenever the buffer is replaced. With
    // `cutBlock`, the data ends inside the sub-block that starts there, and is read as if that
    // sub-block were as long as what is left and the frame's data ended after it, so that
    // giflib decodes the rows that did arrive.
    void setData(const uint8_t* data, size_t size, std::optional<size_t> cutBlock = std::nullopt);

    // Brings the canvas to frame `index` of `frames`. False when not one row of that frame
    // could be decoded (the canvas then shows what lay under it).
    bool compose(const std::vector<GifFrameInfo>& frames, size_t index);

    gfx::BitmapPtr snapshot() const;

  private:
    struct Rect {
        int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
        bool empty() const { return x0 >= x1 || y0 >= y1; }
    };
    struct Reader {
        const uint8_t* data = nullptr;
        size_t size = 0;
        size_t pos = 0;
        std::optional<size_t> cutBlock;
        size_t end() const { return cutBlock ? size + 1 : size; }
    };
    struct GifCloser {
        void operator()(GifFileType* gif) const;
    };

    static int read(GifFileType* gif, uint8_t* out, int length);
    void updateBlankStarts(const std::vector<GifFrameInfo>& frames);
    bool draw(const GifFrameInfo& frame);
    bool decodeRows(const GifFrameInfo& frame, const Rect& clip);
    int paintRows(const GifFrameInfo& frame, const Rect& clip);  // the rows decoded
    void paintRow(const uint8_t* indices, const GifFrameInfo& frame, const Rect& clip, int y);
    void loadColorTable(int transparentIndex);
    void dispose(const GifFrameInfo& frame);
    Rect clipped(const GifFrameInfo& frame) const;
    void clear(const Rect& rect);
    void copyRect(const Rect& rect, bool toBackup);
    uint8_t* at(int x, int y) { return pixels_.data() + (size_t(y) * width_ + x) * 4; }

    int width_, height_;
    std::vector<uint8_t> pixels_;
    std::vector<uint8_t> backup_;  // the rectangle a restore-to-previous frame drew over
    std::optional<size_t> composed_;
    bool composedDecoded_ = false;
    // For each frame, whether it is drawn on an empty canvas whatever came before.
    std::vector<bool> startsBlank_;

    Reader reader_;
    std::unique_ptr<GifFileType, GifCloser> gif_;
    std::vector<uint8_t> line_;
    uint32_t colors_[256] = {};
    bool opaque_[256] = {};
};

}  // namespace orv::codec
