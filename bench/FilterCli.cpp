// A command-line front to two filters, so that the peer comparison times a whole process for us
// as it does for the peers' tools (binary PPM in and out for everyone).
//
//   orv_filter_cli gaussblur SIGMA IN.ppm OUT.ppm
//   orv_filter_cli sharpen IN.ppm OUT.ppm        the sharpen tool's default (0.5)
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/BenchPhoto.h"
#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/UnsharpMask.h"

int main(int argc, char** argv) {
    using namespace orv;
    const std::string mode = argc > 1 ? argv[1] : "";
    const int first = mode == "gaussblur" ? 3 : 2;
    if ((mode != "gaussblur" && mode != "sharpen") || argc < first + 2) {
        std::fprintf(stderr,
                     "usage: orv_filter_cli gaussblur SIGMA IN.ppm OUT.ppm | "
                     "sharpen IN.ppm OUT.ppm\n");
        return 2;
    }
    const auto input = bench::BenchPhoto::readPpm(argv[first]);
    if (!input) {
        std::fprintf(stderr, "not a binary 8-bit PPM: %s\n", argv[first]);
        return 1;
    }
    const gfx::BitmapPtr output = mode == "gaussblur"
                                      ? strand::GaussianBlur::apply(*input, std::atof(argv[2]))
                                      : strand::UnsharpMask::apply(*input, {.sharpness = 0.5f});
    return bench::BenchPhoto::writePpm(*output, argv[first + 1]) ? 0 : 1;
}
