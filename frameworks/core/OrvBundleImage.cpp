#include "frameworks/core/OrvBundleImage.h"

#include <cmath>
#include <vector>

#include "frameworks/core/OrvTSLog.h"
#include "platform/codec/PngCodec.h"
#include "platform/rt/Bundle.h"
#include "platform/ui/Screen.h"

namespace {

std::vector<int> preferredScales() {
    const int screen = static_cast<int>(std::lround(orv::ui::Screen::main().scale()));
    std::vector<int> scales{screen};
    for (int s : {3, 2, 1}) {
        if (s != screen) scales.push_back(s);
    }
    return scales;
}

}  // namespace

orv::gfx::ImagePtr imageORVBundleNamed(const std::string& name) {
    return imageORVResourceNamed("style", name);
}

orv::gfx::ImagePtr imageORVResourceNamed(const std::string& directory, const std::string& name) {
    const orv::rt::Bundle& bundle = orv::rt::Bundle::main();
    for (int scale : preferredScales()) {
        const std::string file = scale == 1 ? name : name + "@" + std::to_string(scale) + "x";
        const auto path = bundle.pathForResource(file, "png", directory);
        if (!path) continue;
        if (auto bitmap = orv::codec::PngCodec::readFile(*path)) {
            return orv::gfx::Image::withBitmap(bitmap, scale);
        }
        OrvTSLog::warn("image %s could not be read", path->c_str());
    }
    return nullptr;
}
