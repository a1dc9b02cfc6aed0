// The sticker composition as one process, so that the peer comparison times ours as it times
// the peers' tools: start-up and file input/output count for both.
//
//   orv_compose_cli make-inputs DIR                 writes the inputs (bench/ComposeScene.h) into
//                                                   DIR; prints the photo's path, then each file
//   orv_compose_cli compose PHOTO.jpg DIR OUT.jpg   decode, the ten stickers, the water mark,
//                                                   JPEG at 0.92, write; prints each stage's time
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>

#include "bench/BenchPhoto.h"
#include "bench/ComposeScene.h"
#include "frameworks/core/OrvImageExtension.h"
#include "orvviews/widgets/OrvResultViewController.h"
#include "platform/codec/ImageReader.h"

namespace {

using namespace orv;
using Clock = std::chrono::steady_clock;

constexpr double kQuality = 0.92;

int usage() {
    std::fprintf(stderr,
                 "usage: orv_compose_cli make-inputs DIR | compose PHOTO.jpg DIR OUT.jpg\n");
    return 2;
}

// Prints the time since the previous stage (or the start) under the stage's name.
class StageClock {
  public:
    void lap(const char* stage) {
        const Clock::time_point now = Clock::now();
        std::printf("%-12s %8.1f ms\n", stage, ms(now - last_));
        last_ = now;
    }
    void total() const { std::printf("%-12s %8.1f ms\n", "total", ms(Clock::now() - start_)); }

  private:
    static double ms(Clock::duration d) {
        return std::chrono::duration<double, std::milli>(d).count();
    }
    Clock::time_point start_ = Clock::now(), last_ = start_;
};

int makeInputs(const std::string& dir) {
    const std::string photo = bench::BenchPhoto::jpegPath();
    const std::vector<std::string> files = bench::ComposeScene::writeInputs(dir);
    if (photo.empty() || files.empty()) {
        std::fprintf(stderr, "cannot write the inputs into %s\n", dir.c_str());
        return 1;
    }
    std::printf("%s\n", photo.c_str());
    for (const std::string& file : files) std::printf("%s\n", file.c_str());
    return 0;
}

bool writeFile(const std::vector<uint8_t>& bytes, const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    return !bytes.empty() && static_cast<bool>(out);
}

int compose(const std::string& photoPath, const std::string& dir, const std::string& outPath) {
    StageClock clock;
    const auto scene = bench::ComposeScene::read(dir);
    if (!scene) {
        std::fprintf(stderr, "no inputs in %s (run make-inputs)\n", dir.c_str());
        return 1;
    }
    clock.lap("inputs");
    auto decoded = codec::ImageReader::readFile(photoPath);
    if (!decoded) return 1;
    gfx::ImagePtr image = gfx::Image::withBitmap(decoded->bitmap, 1, decoded->orientation);
    const codec::ImageMetadata metadata = std::move(decoded->metadata);
    decoded.reset();  // the image is the pixels' only holder from here on
    clock.lap("decode");
    image = OrvStickerFactory::megerStickers(scene->stickerResults(image->size()), image);
    clock.lap("stickers");
    auto controller = rt::make<OrvResultViewController>();
    controller->setWaterMarkOption(bench::ComposeScene::waterMarkOption(scene->markPicture()));
    image = controller->addWaterMarkToImage(image);
    clock.lap("water mark");
    const std::vector<uint8_t> jpeg = orvJpegDataWithCompress(image, kQuality, metadata);
    image.reset();
    clock.lap("encode");
    if (!writeFile(jpeg, outPath)) return 1;
    clock.lap("write");
    clock.total();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return usage();
    const std::string mode = argv[1];
    if (mode == "make-inputs" && argc == 3) return makeInputs(argv[2]);
    if (mode == "compose" && argc == 5) return compose(argv[2], argv[3], argv[4]);
    return usage();
}
