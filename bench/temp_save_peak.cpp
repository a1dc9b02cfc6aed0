// Memory of the temporary save of a 12-megapixel result: how much the process holds before,
// at the peak and after the saving road wrote the JPEG, and how much it held while the file was
// being written. The road drops the full-size bitmap before the write, so the write itself
// should only carry the JPEG bytes.
//
//     orv_bench_temp_save [width height]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "bench/ResidentMemory.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/widgets/OrvResultViewController.h"
#include "platform/rt/RunLoop.h"

namespace {

// Records the resident size when the pipeline hands the result on, which happens right after
// the write.
class MeasuringController : public OrvResultViewController {
  public:
    long atDelivery = 0;
    void backUIThreadNotifyProcessingWithResult(const ResultPtr& result) override {
        atDelivery = orv::bench::residentKiB();
        OrvResultViewController::backUIThreadNotifyProcessingWithResult(result);
    }
};

gfx::ImagePtr photoLikeImage(int width, int height) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t* row = bitmap->mutableRow(y);
        for (int x = 0; x < width; ++x) {
            row[4 * x] = static_cast<uint8_t>((x * 7 + y * 3) & 0xff);
            row[4 * x + 1] = static_cast<uint8_t>((x ^ y) & 0xff);
            row[4 * x + 2] = static_cast<uint8_t>((y * 5) & 0xff);
            row[4 * x + 3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

}  // namespace

int main(int argc, char** argv) {
    const int width = argc > 2 ? std::atoi(argv[1]) : 4000;
    const int height = argc > 2 ? std::atoi(argv[2]) : 3000;
    orv::rt::RunLoop::main();  // this thread is the main thread
    auto controller = orv::rt::make<MeasuringController>();
    controller->setSaveToTemp(true);

    const long before = orv::bench::residentKiB();
    auto result = OrvResult::result();
    result->setImage(photoLikeImage(width, height));
    const long withImage = orv::bench::residentKiB();
    long peak = 0;
    {
        orv::bench::ResidentSampler sampler;
        std::thread([&] { controller->asyncProcessingIfNeedSave(result); }).join();
        peak = sampler.peakKiB();
    }
    const long after = orv::bench::residentKiB();
    const auto bytes = OrvTSFileManager::readDataAtPath(result->imagePath().value_or(""));
    std::printf("temporary save of %dx%d (bitmap %.1f MiB, JPEG %.1f MiB)\n", width, height,
                width * 4.0 * height / (1 << 20), bytes ? bytes->size() / double(1 << 20) : 0.0);
    std::printf("  resident before the image   %7.1f MiB\n", before / 1024.0);
    std::printf("  resident with the image     %7.1f MiB\n", withImage / 1024.0);
    std::printf("  peak while saving           %7.1f MiB\n", peak / 1024.0);
    std::printf("  resident right after write  %7.1f MiB\n", controller->atDelivery / 1024.0);
    std::printf("  resident after the save     %7.1f MiB\n", after / 1024.0);
    OrvTSFileManager::deletePath(result->imagePath());
    return result->image() == nullptr ? 0 : 1;
}
