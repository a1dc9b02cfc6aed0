#include "platform/codec/GifCanvas.h"

#include <gif_lib.h>

#include <algorithm>
#include <cstring>

namespace orv::codec {

namespace {

// Row `r` of an interlaced frame in file order is this row of the picture: every 8th from 0,
// every 8th from 4, every 4th from 2, then every 2nd from 1.
int interlacedRow(int r, int height) {
    static constexpr int kStart[] = {0, 4, 2, 1};
    static constexpr int kStep[] = {8, 8, 4, 2};
    for (int pass = 0; pass < 4; ++pass) {
        const int rows =
            height > kStart[pass] ? (height - kStart[pass] + kStep[pass] - 1) / kStep[pass] : 0;
        if (r < rows) return kStart[pass] + r * kStep[pass];
        r -= rows;
    }
    return height;  // past the frame: never painted
}

uint32_t rgba(uint8_t r, uint8_t g, uint8_t b) {
    const uint8_t bytes[4] = {r, g, b, 255};
    uint32_t value;
    std::memcpy(&value, bytes, 4);
    return value;
}

}  // namespace

void GifCanvas::GifCloser::operator()(GifFileType* gif) const {
    int error = 0;
    DGifCloseFile(gif, &error);
}

GifCanvas::GifCanvas(int width, int height)
    : width_(width), height_(height), pixels_(size_t(width) * height * 4) {}

GifCanvas::~GifCanvas() = default;

void GifCanvas::setData(const uint8_t* data, size_t size, std::optional<size_t> cutBlock) {
    reader_.data = data;
    reader_.size = size;
    reader_.cutBlock = cutBlock;
    reader_.pos = std::min(reader_.pos, size);
}

int GifCanvas::read(GifFileType* gif, uint8_t* out, int length) {
    Reader& r = *static_cast<Reader*>(gif->UserData);
    const size_t n = std::min(size_t(std::max(length, 0)), r.end() - std::min(r.pos, r.end()));
    if (n == 0) return 0;
    std::memcpy(out, r.data + r.pos, std::min(n, r.size - r.pos));
    if (r.cutBlock && *r.cutBlock < r.size && *r.cutBlock - r.pos < n) {
        out[*r.cutBlock - r.pos] = uint8_t(r.size - *r.cutBlock - 1);
    }
    if (r.pos + n > r.size) out[r.size - r.pos] = 0;  // the terminator that never came
    r.pos += n;
    return int(n);
}

bool GifCanvas::compose(const std::vector<GifFrameInfo>& frames, size_t index) {
    if (composed_ == index) return composedDecoded_;
    updateBlankStarts(frames);
    // Back to the nearest frame drawn on an empty canvas, or to the one after the frame the
    // canvas holds now, whichever comes first.
    const size_t after = composed_ && *composed_ < index ? *composed_ + 1 : 0;
    size_t next = index;
    while (next > after && !startsBlank_[next]) --next;
    if (startsBlank_[next]) {
        std::fill(pixels_.begin(), pixels_.end(), 0);
    } else {
        dispose(frames[*composed_]);
    }
    for (;; ++next) {
        composed_ = next;
        composedDecoded_ = draw(frames[next]);
        if (next == index) return composedDecoded_;
        dispose(frames[next]);
    }
}

void GifCanvas::updateBlankStarts(const std::vector<GifFrameInfo>& frames) {
    // A frame starts on an empty canvas when the one before cleared all of it, or restored
    // what lay under it and itself started on an empty canvas.
    for (size_t k = startsBlank_.size(); k < frames.size(); ++k) {
        bool blank = k == 0;
        if (!blank) {
            const GifFrameInfo& before = frames[k - 1];
            const Rect r = clipped(before);
            const bool clearsAll =
                before.disposal == 2 && r.x0 == 0 && r.y0 == 0 && r.x1 == width_ && r.y1 == height_;
            blank = clearsAll || (before.disposal == 3 && startsBlank_[k - 1]);
        }
        startsBlank_.push_back(blank);
    }
}

GifCanvas::Rect GifCanvas::clipped(const GifFrameInfo& frame) const {
    return Rect{std::min<int>(frame.left, width_), std::min<int>(frame.top, height_),
                std::min(frame.left + frame.width, width_),
                std::min(frame.top + frame.height, height_)};
}

bool GifCanvas::draw(const GifFrameInfo& frame) {
    const Rect clip = clipped(frame);
    if (frame.disposal == 3) copyRect(clip, true);
    // A frame that lies wholly outside the canvas has nothing to show, so it is not decoded.
    if (clip.empty()) return true;
    return decodeRows(frame, clip);
}

bool GifCanvas::decodeRows(const GifFrameInfo& frame, const Rect& clip) {
    if (!gif_) {
        reader_.pos = 0;
        int error = 0;
        gif_.reset(DGifOpen(&reader_, &GifCanvas::read, &error));
        if (!gif_) return false;
    }
    reader_.pos = frame.descriptorOffset + 1;
    const int rows = DGifGetImageDesc(gif_.get()) == GIF_OK ? paintRows(frame, clip) : 0;
    // giflib keeps every descriptor it reads, even of a frame it then refuses: a file of a
    // million frames must not grow it.
    GifFreeSavedImages(gif_.get());
    gif_->ImageCount = 0;
    return rows > 0;
}

int GifCanvas::paintRows(const GifFrameInfo& frame, const Rect& clip) {
    loadColorTable(frame.transparentIndex);
    line_.resize(size_t(frame.width));
    int rows = 0;
    for (; rows < frame.height; ++rows) {
        const int y = frame.top + (frame.interlaced ? interlacedRow(rows, frame.height) : rows);
        // Rows in file order past the bottom of the canvas are never seen.
        if (!frame.interlaced && y >= clip.y1) break;
        if (DGifGetLine(gif_.get(), line_.data(), frame.width) != GIF_OK) break;
        if (y < clip.y1) paintRow(line_.data(), frame, clip, y);
    }
    return rows;
}

void GifCanvas::loadColorTable(int transparentIndex) {
    const ColorMapObject* map = gif_->Image.ColorMap ? gif_->Image.ColorMap : gif_->SColorMap;
    const int count = map ? std::min(map->ColorCount, 256) : 0;
    for (int i = 0; i < 256; ++i) {
        if (i < count) {
            const GifColorType& c = map->Colors[i];
            colors_[i] = rgba(c.Red, c.Green, c.Blue);
        } else {
            // No table at all reads as grey levels; indices past a short table as black.
            colors_[i] = map ? rgba(0, 0, 0) : rgba(uint8_t(i), uint8_t(i), uint8_t(i));
        }
        opaque_[i] = i != transparentIndex;
    }
}

void GifCanvas::paintRow(const uint8_t* indices, const GifFrameInfo& frame, const Rect& clip,
                         int y) {
    uint8_t* out = at(clip.x0, y);
    const uint8_t* in = indices + (clip.x0 - frame.left);
    for (int x = clip.x0; x < clip.x1; ++x, ++in, out += 4) {
        if (opaque_[*in]) std::memcpy(out, &colors_[*in], 4);
    }
}

void GifCanvas::dispose(const GifFrameInfo& frame) {
    if (frame.disposal == 2) {
        clear(clipped(frame));
    } else if (frame.disposal == 3) {
        copyRect(clipped(frame), false);
    }
}

void GifCanvas::clear(const Rect& rect) {
    if (rect.empty()) return;
    for (int y = rect.y0; y < rect.y1; ++y) {
        std::memset(at(rect.x0, y), 0, size_t(rect.x1 - rect.x0) * 4);
    }
}

void GifCanvas::copyRect(const Rect& rect, bool toBackup) {
    if (rect.empty()) return;
    const size_t rowBytes = size_t(rect.x1 - rect.x0) * 4;
    if (toBackup) backup_.resize(rowBytes * size_t(rect.y1 - rect.y0));
    for (int y = rect.y0; y < rect.y1; ++y) {
        uint8_t* saved = backup_.data() + rowBytes * size_t(y - rect.y0);
        if (toBackup) {
            std::memcpy(saved, at(rect.x0, y), rowBytes);
        } else {
            std::memcpy(at(rect.x0, y), saved, rowBytes);
        }
    }
}

gfx::BitmapPtr GifCanvas::snapshot() const {
    return std::make_shared<gfx::Bitmap>(width_, height_, gfx::PixelFormat::RGBA8888Premultiplied,
                                         size_t(width_) * 4, pixels_);
}

}  // namespace orv::codec
