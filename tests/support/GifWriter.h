#pragma once
// Writes small GIFs with giflib's encoder, for the tests and the fuzzer's seeds. The global
// table holds red, green, blue and white; a frame may bring its own of black, yellow, cyan
// and magenta.

#include <gif_lib.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace orv::test {

class GifWriter {
  public:
    using Bytes = std::vector<uint8_t>;
    using Indices = std::vector<uint8_t>;

    struct Frame {
        int left = 0, top = 0, width = 0, height = 0;
        int disposal = DISPOSAL_UNSPECIFIED;
        int transparent = NO_TRANSPARENT_COLOR;
        int delay = 0;  // hundredths of a second
        bool interlaced = false;
        bool localTable = false;
    };

    GifWriter(int width, int height, bool globalTable = true) {
        int error = 0;
        gif_ = EGifOpen(&bytes_, append, &error);
        EGifSetGifVersion(gif_, true);
        EGifPutScreenDesc(gif_, width, height, 2, 0, globalTable ? global_ : nullptr);
    }
    ~GifWriter() {
        if (gif_) finish();
        GifFreeMapObject(global_);
        GifFreeMapObject(local_);
    }
    GifWriter(const GifWriter&) = delete;
    GifWriter& operator=(const GifWriter&) = delete;

    GifWriter& loop(int count) {
        const GifByteType block[3] = {1, GifByteType(count & 0xFF), GifByteType(count >> 8)};
        EGifPutExtensionLeader(gif_, APPLICATION_EXT_FUNC_CODE);
        EGifPutExtensionBlock(gif_, 11, "NETSCAPE2.0");
        EGifPutExtensionBlock(gif_, 3, block);
        EGifPutExtensionTrailer(gif_);
        return *this;
    }

    // `indices` row by row from the top; an interlaced frame is written in pass order.
    GifWriter& frame(const Frame& f, const Indices& indices) {
        GraphicsControlBlock control{f.disposal, false, f.delay, f.transparent};
        GifByteType extension[4];
        EGifGCBToExtension(&control, extension);
        EGifPutExtension(gif_, GRAPHICS_EXT_FUNC_CODE, 4, extension);
        if (!f.localTable && gif_->Image.ColorMap) {
            // giflib's encoder drops the table of the frame before without freeing it.
            GifFreeMapObject(gif_->Image.ColorMap);
            gif_->Image.ColorMap = nullptr;
        }
        EGifPutImageDesc(gif_, f.left, f.top, f.width, f.height, f.interlaced,
                         f.localTable ? local_ : nullptr);
        for (int y : rowOrder(f)) {
            EGifPutLine(gif_, const_cast<GifPixelType*>(&indices[size_t(y) * f.width]), f.width);
        }
        return *this;
    }
    GifWriter& frame(const Frame& f, uint8_t index) {
        return frame(f, Indices(size_t(f.width) * f.height, index));
    }

    // The file, trailer included.
    Bytes finish() {
        int error = 0;
        EGifCloseFile(gif_, &error);
        gif_ = nullptr;
        return bytes_;
    }

  private:
    static int append(GifFileType* gif, const GifByteType* data, int n) {
        auto* bytes = static_cast<Bytes*>(gif->UserData);
        bytes->insert(bytes->end(), data, data + n);
        return n;
    }
    static std::vector<int> rowOrder(const Frame& f) {
        std::vector<int> rows;
        const auto passes = f.interlaced
                                ? std::vector<std::pair<int, int>>{{0, 8}, {4, 8}, {2, 4}, {1, 2}}
                                : std::vector<std::pair<int, int>>{{0, 1}};
        for (auto [start, step] : passes) {
            for (int y = start; y < f.height; y += step) rows.push_back(y);
        }
        return rows;
    }

    Bytes bytes_;
    GifFileType* gif_ = nullptr;
    const GifColorType globalColors_[4] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
    const GifColorType localColors_[4] = {{0, 0, 0}, {255, 255, 0}, {0, 255, 255}, {255, 0, 255}};
    ColorMapObject* global_ = GifMakeMapObject(4, globalColors_);
    ColorMapObject* local_ = GifMakeMapObject(4, localColors_);
};

}  // namespace orv::test
