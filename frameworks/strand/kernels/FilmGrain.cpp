#include "frameworks/strand/kernels/FilmGrain.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace orv::strand {

namespace {

// The noise's largest swing at amount 1, in 8-bit levels (midtones; about a third of it at
// black and white).
constexpr float kSwing = 28;
// The noise is made once, a tile of kTile × kTile values, and laid over the picture shifted by
// a different amount for every band of kTile rows, so that it shows no pattern.
constexpr int kTile = 256;

// Noise in [−1, 1] from a place, roughly bell-shaped (the mean of two uniform values).
float noiseAt(uint32_t x, uint32_t y) {
    uint32_t h = x * 0x9E3779B1u ^ (y * 0x85EBCA77u + 0x165667B1u);
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    h *= 0x297A2D39u;
    h ^= h >> 15;
    return static_cast<float>((h & 0xFFFF) + (h >> 16)) / 65535 - 1;
}

const std::vector<int8_t>& noiseTile() {
    static const std::vector<int8_t> tile = [] {
        std::vector<int8_t> values(kTile * kTile);
        for (int y = 0; y < kTile; ++y) {
            for (int x = 0; x < kTile; ++x) {
                values[y * kTile + x] = static_cast<int8_t>(std::lround(noiseAt(x, y) * 127));
            }
        }
        return values;
    }();
    return tile;
}

}  // namespace

void FilmGrain::noiseRow(int y, int width, int8_t* noise) {
    const int8_t* tileRow = noiseTile().data() + (y % kTile) * kTile;
    const auto shift = static_cast<int>((static_cast<uint32_t>(y / kTile) * 0x9E3779B1u) >> 24);
    for (int x = 0, from = shift; x < width; x += kTile - from, from = 0) {
        std::memcpy(noise + x, tileRow + from, std::min(kTile - from, width - x));
    }
}

int FilmGrain::strength(float amount) {
    if (std::isnan(amount)) return 0;
    return static_cast<int>(std::lround(std::clamp(amount, 0.0f, 1.0f) * kSwing * 256 / 127));
}

}  // namespace orv::strand
