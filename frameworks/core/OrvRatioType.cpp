#include "frameworks/core/OrvRatioType.h"

#include <algorithm>
#include <cmath>

#include "frameworks/core/OrvKit.h"
#include "platform/ui/Screen.h"

namespace {

struct RatioEntry {
    long type;
    float width;
    float height;
};

constexpr RatioEntry kRatios[] = {
    {OrvRatioType::kFull, 0, 0}, {OrvRatioType::k1x1, 1, 1},   {OrvRatioType::k2x3, 2, 3},
    {OrvRatioType::k3x4, 3, 4},  {OrvRatioType::k9x16, 9, 16}, {OrvRatioType::k3x2, 3, 2},
    {OrvRatioType::k4x3, 4, 3},  {OrvRatioType::k16x9, 16, 9},
};

bool isRatioType(long type) {
    return std::any_of(std::begin(kRatios), std::end(kRatios),
                       [type](const RatioEntry& entry) { return entry.type == type; });
}

}  // namespace

std::vector<long> OrvRatioType::ratioTypes(long mask) {
    std::vector<long> types;
    for (const RatioEntry& entry : kRatios) {
        if (mask & entry.type) types.push_back(entry.type);
    }
    return types;
}

std::vector<long> OrvRatioType::validRatioTypes(const std::vector<long>& types) {
    std::vector<long> valid;
    for (long type : types) {
        if (isRatioType(type) && std::find(valid.begin(), valid.end(), type) == valid.end())
            valid.push_back(type);
    }
    return valid;
}

float OrvRatioType::ratio(long type) {
    for (const RatioEntry& entry : kRatios) {
        if (entry.type == type) return entry.height > 0 ? entry.width / entry.height : 0;
    }
    return 0;
}

float OrvRatioType::firstRatio(long mask) {
    const std::vector<long> types = ratioTypes(mask);
    return types.empty() ? 0 : ratio(types.front());
}

std::vector<long> OrvRatioType::orvOrvKitRatioDefaultTypes() {
    return ratioTypes(kDefaultMask);
}

long OrvRatioType::radioType(float value) {
    if (!(value > 0)) return kFull;
    long nearest = kFull;
    float best = INFINITY;
    for (const RatioEntry& entry : kRatios) {
        if (entry.type == kFull) continue;
        const float distance = std::fabs(std::log(value / ratio(entry.type)));
        if (distance < best) {
            best = distance;
            nearest = entry.type;
        }
    }
    return nearest;
}

double OrvRatioType::minScreenRatio() {
    const gfx::Size size = ui::Screen::main().bounds().size;
    const double longSide = std::max(size.width, size.height);
    return longSide > 0 ? std::min(size.width, size.height) / longSide : 0;
}

long OrvRatioType::nextRatioType(long mask, long currentType) {
    const std::vector<long> types = ratioTypes(mask);
    if (types.empty()) return 0;
    auto current = std::find(types.begin(), types.end(), currentType);
    if (current == types.end() || ++current == types.end()) return types.front();
    return *current;
}
