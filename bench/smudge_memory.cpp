// Memory of a long brush session on a 12-megapixel photo: the photo is decoded at full size, the
// canvas view takes it (its canvas is the photo at the screen's size), fifty strokes with a
// stamp, a mosaic and an eraser brush are saved in the history, the history is walked back and
// forth, and the full-size result is made. Strokes come at the pace of a quick hand, since the
// history is written to disk in the background while the user paints. History entries live on disk
// once written, so the peak should stay under three full-size bitmaps (width × height × 4) above
// the start, however long the history.
//
//     orv_bench_smudge_memory [photo.jpg]

#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>

#include "bench/ResidentMemory.h"
#include "frameworks/core/OrvBrushLocalPackage.h"
#include "frameworks/core/OrvImageExtension.h"
#include "orvviews/views/OrvSmudgeImageViewWrap.h"
#include "platform/rt/Bundle.h"
#include "platform/rt/Memory.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Screen.h"

namespace {

constexpr int kStrokes = 50;
constexpr int kMovesPerStroke = 20;
// A quick hand: a stroke and the lift of the finger take at least this long.
constexpr auto kStrokePace = std::chrono::milliseconds(300);

double mib(long kib) {
    return kib / 1024.0;
}

void stroke(OrvSmudgeImageViewWrap& wrap, int index) {
    auto processor = wrap.getSmudgeProcessor();
    processor->touchesBegan();
    const gfx::Size size = wrap.smudgeImageView()->frame().size;
    if (processor->originIVSize() == gfx::Size{}) processor->setOriginIVSize(size);
    gfx::Point last{size.width * 0.1, size.height * (0.1 + 0.8 * (index % 10) / 10.0)};
    for (int i = 1; i <= kMovesPerStroke; ++i) {
        const gfx::Point next{size.width * (0.1 + 0.8 * i / kMovesPerStroke),
                              last.y + 10 * std::sin(i * 0.7 + index)};
        wrap.smudgeImageView()->setImage(processor->drawAtCurrentPoint(next, last));
        last = next;
    }
    processor->saveCurrentAsHistory();
}

}  // namespace

int main(int argc, char** argv) {
    orv::rt::Memory::returnLargeAllocationsAtOnce(4 << 20);
    orv::rt::RunLoop::main();
    ui::Screen::main().setBounds({0, 0, 390, 844});
    ui::Screen::main().setScale(3);
    const std::string path =
        argc > 1 ? argv[1] : orv::rt::Bundle::main().resourcePath() + "/photos/dragonfly.jpg";
    const long startKiB = orv::bench::residentKiB();
    long peakKiB = 0;
    double fullMiB = 0;
    {
        orv::bench::ResidentSampler sampler;
        auto photo = imageWithContentsOfFile(path);
        if (!photo || !photo->bitmap()) {
            std::fprintf(stderr, "cannot read %s\n", path.c_str());
            return 1;
        }
        fullMiB = photo->bitmap()->byteCount() / 1048576.0;
        std::printf("photo %dx%d (%.1f MiB a full bitmap)\n", photo->bitmap()->width(),
                    photo->bitmap()->height(), fullMiB);
        auto wrap = ui::makeView<OrvSmudgeImageViewWrap>({0, 56, 390, 700});
        wrap->setMaxUndoCount(kStrokes);
        wrap->setImage(photo);
        const long openPeakKiB = sampler.peakKiB();
        std::printf("peak while the photo was read and installed: %.1f MiB (%.2f full bitmaps)\n",
                    mib(openPeakKiB - startKiB), mib(openPeakKiB - startKiB) / fullMiB);
        const char* brushes[] = {"round_soft", "mosaic", orvEraserBrushCode};
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < kStrokes; ++i) {
            wrap->setBrush(
                OrvBrushLocalPackage::package()->brushWithCode(std::string(brushes[i % 3])));
            const auto next = std::chrono::steady_clock::now() + kStrokePace;
            stroke(*wrap, i);
            std::this_thread::sleep_until(next);
        }
        const double paintSeconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        // Let the queue write the history, then walk it back and forth.
        std::this_thread::sleep_for(std::chrono::seconds(3));
        const long afterStrokesKiB = orv::bench::residentKiB();
        for (int i = 0; i < 10; ++i) wrap->undo();
        for (int i = 0; i < 10; ++i) wrap->redo();
        const long paintingPeakKiB = sampler.peakKiB();
        auto result = wrap->getCanvasImage(photo);
        std::printf("canvas %dx%d, %d strokes in %.2f s\n",
                    wrap->getSmudgeImage()->bitmap()->width(),
                    wrap->getSmudgeImage()->bitmap()->height(), kStrokes, paintSeconds);
        std::printf("resident after the strokes, above the start: %.1f MiB (%.2f full bitmaps)\n",
                    mib(afterStrokesKiB - startKiB), mib(afterStrokesKiB - startKiB) / fullMiB);
        std::printf("peak while painting and walking the history: %.1f MiB (%.2f full bitmaps)\n",
                    mib(paintingPeakKiB - startKiB), mib(paintingPeakKiB - startKiB) / fullMiB);
        wrap->destroy();
        peakKiB = sampler.peakKiB();
    }
    std::printf("peak above the start, result included: %.1f MiB (%.2f full bitmaps)\n",
                mib(peakKiB - startKiB), mib(peakKiB - startKiB) / fullMiB);
    return 0;
}
