#pragma once
// What the image tests share on top of the GIF writer: its colour indices and the bytes in the
// shared form the decoders take.

#include <cstdint>
#include <memory>
#include <vector>

#include "tests/support/GifWriter.h"

namespace orvtest {

using Frame = orv::test::GifWriter::Frame;
using orv::test::GifWriter;

// The writer's global table.
enum GifColor : uint8_t { kRed = 0, kGreen = 1, kBlue = 2, kWhite = 3 };

// `length` cuts the bytes short.
inline std::shared_ptr<const std::vector<uint8_t>> shared(const std::vector<uint8_t>& bytes,
                                                          size_t length = SIZE_MAX) {
    const size_t n = length < bytes.size() ? length : bytes.size();
    return std::make_shared<const std::vector<uint8_t>>(bytes.begin(), bytes.begin() + n);
}

}  // namespace orvtest
