// A command-line front to the GIF decoding, so that the comparison times whole processes:
//
//   orv_gif_cli make-gif OUT.gif [FRAMES]   an animated 640 × 480 GIF (default 200 frames): a
//                                           bundled photo panned under a moving window, full
//                                           frames and small updates mixed, as in real files
//   orv_gif_cli compose IN.gif              every frame composed on the canvas (ours)
//   orv_gif_cli slurp IN.gif                giflib's DGifSlurp: every frame's indices, uncomposed
//
// Both decoders print frames, megapixels per second of canvas output and their peak memory.
#include <gif_lib.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "platform/codec/ImageReader.h"
#include "platform/codec/ImageSource.h"
#include "platform/gfx/BitmapOps.h"

namespace {

using namespace orv;
using Clock = std::chrono::steady_clock;

constexpr int kWidth = 640, kHeight = 480;

std::shared_ptr<const std::vector<uint8_t>> readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return nullptr;
    return std::make_shared<const std::vector<uint8_t>>(std::istreambuf_iterator<char>(in),
                                                        std::istreambuf_iterator<char>());
}

long peakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void report(const char* what, size_t frames, double seconds) {
    const double megapixels = double(frames) * kWidth * kHeight / 1e6;
    std::printf("%s: %zu frames in %.1f ms, %.1f MP/s, peak %.1f MB\n", what, frames,
                seconds * 1000, megapixels / seconds, peakKilobytes() / 1024.0);
}

// The colour of a pixel in the 6 × 6 × 6 cube palette.
GifByteType cubeIndex(const uint8_t* rgba) {
    auto level = [](uint8_t v) { return (v * 5 + 127) / 255; };
    return static_cast<GifByteType>(36 * level(rgba[0]) + 6 * level(rgba[1]) + level(rgba[2]));
}

int writeFrame(GifFileType* gif, const gfx::Bitmap& photo, int left, int top, int width, int height,
               int panX, int panY) {
    const GifByteType control[4] = {0x04, 4, 0, 0};  // keep, 40 ms
    if (EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, control) == GIF_ERROR ||
        EGifPutImageDesc(gif, left, top, width, height, false, nullptr) == GIF_ERROR) {
        return GIF_ERROR;
    }
    std::vector<GifByteType> line(width);
    for (int y = 0; y < height; ++y) {
        const int sy = std::min(photo.height() - 1, top + y + panY);
        for (int x = 0; x < width; ++x) {
            line[x] = cubeIndex(photo.pixel(std::min(photo.width() - 1, left + x + panX), sy));
        }
        if (EGifPutLine(gif, line.data(), width) == GIF_ERROR) return GIF_ERROR;
    }
    return GIF_OK;
}

int makeGif(const std::string& out, int frames) {
    auto source =
        codec::ImageReader::readFile(std::string(ORV_SOURCE_RESOURCES) + "/photos/astronaut.png");
    if (!source) return 1;
    auto photo = gfx::BitmapOps::resized(*source->bitmap, kWidth + 200, kHeight + 120);
    int error = 0;
    GifFileType* gif = EGifOpenFileName(out.c_str(), false, &error);
    if (!gif) return 1;
    ColorMapObject* palette = GifMakeMapObject(256, nullptr);
    for (int i = 0; i < 216; ++i) {
        palette->Colors[i] = {GifByteType(i / 36 * 51), GifByteType(i / 6 % 6 * 51),
                              GifByteType(i % 6 * 51)};
    }
    EGifSetGifVersion(gif, true);
    int status = EGifPutScreenDesc(gif, kWidth, kHeight, 8, 0, palette);
    const GifByteType loop[3] = {1, 0, 0};
    status |= EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE) |
              EGifPutExtensionBlock(gif, 11, "NETSCAPE2.0") | EGifPutExtensionBlock(gif, 3, loop) |
              EGifPutExtensionTrailer(gif);
    for (int i = 0; i < frames && status == GIF_OK; ++i) {
        // Every tenth frame whole, the others a moving quarter of the canvas.
        const bool whole = i % 10 == 0;
        const int w = whole ? kWidth : kWidth / 2, h = whole ? kHeight : kHeight / 2;
        const int left = whole ? 0 : (i * 13) % (kWidth - w),
                  top = whole ? 0 : (i * 7) % (kHeight - h);
        status = writeFrame(gif, *photo, left, top, w, h, i % 200, (i / 2) % 120);
    }
    GifFreeMapObject(palette);
    return EGifCloseFile(gif, &error) == GIF_OK && status == GIF_OK ? 0 : 1;
}

int compose(const std::string& in) {
    auto data = readFile(in);
    if (!data) return 1;
    const auto start = Clock::now();
    auto source = codec::ImageSource::createWithData(data);
    if (!source) return 1;
    size_t frames = 0;
    for (size_t i = 0; i < source->count(); ++i)
        frames += source->createImageAtIndex(i, false) != nullptr;
    report("composed", frames, std::chrono::duration<double>(Clock::now() - start).count());
    return 0;
}

int slurp(const std::string& in) {
    const auto start = Clock::now();
    int error = 0;
    GifFileType* gif = DGifOpenFileName(in.c_str(), &error);
    if (!gif || DGifSlurp(gif) == GIF_ERROR) return 1;
    const size_t frames = static_cast<size_t>(gif->ImageCount);
    DGifCloseFile(gif, &error);
    report("DGifSlurp", frames, std::chrono::duration<double>(Clock::now() - start).count());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string mode = argc > 2 ? argv[1] : "";
    if (mode == "make-gif") return makeGif(argv[2], argc > 3 ? std::atoi(argv[3]) : 200);
    if (mode == "compose") return compose(argv[2]);
    if (mode == "slurp") return slurp(argv[2]);
    std::fprintf(stderr,
                 "usage: orv_gif_cli make-gif OUT.gif [FRAMES] | compose IN.gif | slurp IN.gif\n");
    return 2;
}
