#include "platform/codec/ImageType.h"

#include <gtest/gtest.h>

#include <string>

namespace orv::codec {
namespace {

ImageType typeOf(const std::string& bytes) {
    return imageTypeOf(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

TEST(ImageTypeTest, MagicBytesInRuleOrder) {
    using std::string_literals::operator""s;
    const struct {
        std::string bytes;
        ImageType type;
    } cases[] = {
        {"GIF89a"s, ImageType::GIF},
        {"GIF8"s, ImageType::GIF},
        {"RIFF\x10\0\0\0WEBPVP8 "s, ImageType::WebP},
        {"RIFF\x10\0\0\0WAVEfmt "s, ImageType::Unknown},  // RIFF, not WebP: later rules decide
        {"RIFF\0\0\0\0AVI "s, ImageType::Unknown},
        {"\x89PNG\r\n\x1a\n"s, ImageType::PNG},
        {"\x89PNG\r\n\x1a"s, ImageType::Unknown},  // signature cut short
        {"BM\x36\0"s, ImageType::BMP},
        {"BA"s, ImageType::BMP},
        {"IC"s, ImageType::BMP},
        {"CI"s, ImageType::BMP},
        {"PI"s, ImageType::BMP},
        {"CP"s, ImageType::BMP},
        {"\xFF\x4F\xFF\x51"s, ImageType::JPEG2000},
        {"\xFF\xD8\xFF\xE0"s, ImageType::JPEG},
        {"\xFF\xD8\xFF"s, ImageType::JPEG},
        {"\xFF\xD8"s, ImageType::Unknown},
        {"\0\0\0\x0CjP  \r\n\x87\n"s, ImageType::JPEG2000},
        {"BMjP  \r"s, ImageType::BMP},  // the earlier rule wins
        {""s, ImageType::Unknown},
        {"\0"s, ImageType::Unknown},
        {"hello, world"s, ImageType::Unknown},
    };
    for (const auto& c : cases) EXPECT_EQ(typeOf(c.bytes), c.type) << c.bytes;
    EXPECT_EQ(imageTypeOf(nullptr, 100), ImageType::Unknown);
    EXPECT_STREQ(imageTypeName(ImageType::WebP), "webp");
    EXPECT_STREQ(imageTypeName(static_cast<ImageType>(99)), "unknown");
}

}  // namespace
}  // namespace orv::codec
