#include "frameworks/core/OrvImageExtension.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "frameworks/core/OrvTSFileManager.h"
#include "platform/codec/JpegSegments.h"
#include "platform/codec/PngCodec.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/ui/Screen.h"
#include "tests/platform/codec/CodecTestPictures.h"
#include "tests/support/ExifTestPhotos.h"
#include "tests/support/TestEnvironment.h"

namespace {

using gfx::ImageOrientation;

// Stored as    A B C D     each pixel's red byte is its letter, opaque.
//              E F G H
gfx::ImagePtr letters(ImageOrientation tag = ImageOrientation::Up, double scale = 1) {
    auto bitmap = std::make_shared<gfx::Bitmap>(4, 2);
    for (int i = 0; i < 8; ++i) {
        bitmap->mutableData()[4 * i] = static_cast<uint8_t>('A' + i);
        bitmap->mutableData()[4 * i + 3] = 255;
    }
    return gfx::Image::withBitmap(bitmap, scale, tag);
}

gfx::ImagePtr blank(int width, int height, ImageOrientation tag = ImageOrientation::Up) {
    return gfx::Image::withBitmap(std::make_shared<gfx::Bitmap>(width, height), 2, tag);
}

// The stored picture row by row, rows separated by '/'.
std::string spell(const gfx::ImagePtr& image) {
    std::string s;
    const gfx::Bitmap& b = *image->bitmap();
    for (int y = 0; y < b.height(); ++y) {
        if (y) s += '/';
        for (int x = 0; x < b.width(); ++x) s += static_cast<char>(b.pixel(x, y)[0]);
    }
    return s;
}

std::pair<int, int> pixelSize(const gfx::ImagePtr& image) {
    return {image->bitmap()->width(), image->bitmap()->height()};
}

TEST(OrvImageExtensionTest, TagsAndCropsWorkOnTheUprightPicture) {
    const auto tagged =
        orvChangeOrientation(letters(ImageOrientation::Left, 2), ImageOrientation::Right);
    EXPECT_EQ(tagged->orientation(), ImageOrientation::Right);
    EXPECT_EQ(spell(tagged), "ABCD/EFGH");  // the tag is replaced, the pixels stay
    const auto up = orvImageRotatedToUp(tagged);
    EXPECT_EQ(spell(up), "EA/FB/GC/HD");  // turned clockwise
    EXPECT_EQ(up->orientation(), ImageOrientation::Up);
    EXPECT_EQ(orvImageRotatedToUp(up), up);

    const auto half = orvImageCorpWithPrecentRect(tagged, gfx::Rect(0.5, 0.25, 0.5, 0.5));
    EXPECT_EQ(spell(half), "B/C");
    EXPECT_EQ(half->orientation(), ImageOrientation::Up);
    EXPECT_EQ(half->scale(), 2);
    // A rectangle past the edge keeps the nearest pixels rather than nothing.
    EXPECT_EQ(spell(orvImageCorpWithPrecentRect(tagged, gfx::Rect(1, 0, 0.5, 1))), "A/B/C/D");

    EXPECT_EQ(spell(orvImageCorpWithRatio(tagged, 1)), "FB/GC");  // centred square of 2 × 4
    EXPECT_EQ(spell(orvImageCorpWithRatio(tagged, 2)), "FB");
    EXPECT_EQ(spell(orvImageCorpWithRatio(letters(), 1)), "BC/FG");
}

// A crop of a tagged picture is the same part of what the user sees however it is worked out:
// here against turning the whole picture first.
TEST(OrvImageExtensionTest, CropsOfTaggedPicturesMatchCroppingTheUprightPicture) {
    auto stored = std::make_shared<gfx::Bitmap>(7, 5);
    for (size_t i = 0; i < 35; ++i) {
        stored->mutableData()[4 * i] = uint8_t(7 * i);
        stored->mutableData()[4 * i + 3] = 255;
    }
    const gfx::Rect rects[] = {
        {0.2, 0.1, 0.5, 0.6}, {0, 0, 1, 1}, {0.6, 0.6, 0.4, 0.4}, {0.0, 0.5, 0.3, 0.5}};
    for (int o = 0; o < 8; ++o) {
        auto image = gfx::Image::withBitmap(stored, 1, gfx::ImageOrientation(o));
        auto upright = orvImageRotatedToUp(image);
        for (const gfx::Rect& rect : rects) {
            auto expected = orvImageCorpWithPrecentRect(upright, rect);
            auto actual = orvImageCorpWithPrecentRect(image, rect);
            ASSERT_EQ(actual->bitmap()->width(), expected->bitmap()->width()) << o;
            ASSERT_EQ(actual->bitmap()->height(), expected->bitmap()->height()) << o;
            EXPECT_EQ(0, std::memcmp(actual->bitmap()->data(), expected->bitmap()->data(),
                                     expected->bitmap()->byteCount()))
                << "orientation " << o << " rect " << rect.origin.x << "," << rect.origin.y;
            EXPECT_EQ(actual->orientation(), gfx::ImageOrientation::Up);
        }
    }
}

// Whatever the tag a picture has, turning and mirroring must show the upright picture turned or
// mirrored as the user asked, without touching the pixels.
TEST(OrvImageExtensionTest, TurnsAndMirrorsActOnWhatTheUserSees) {
    auto stored = std::make_shared<gfx::Bitmap>(3, 2);
    for (size_t i = 0; i < 6; ++i) stored->mutableData()[4 * i] = uint8_t(10 * (i + 1));
    const auto same = [](const gfx::BitmapPtr& a, const gfx::BitmapPtr& b) {
        return a->width() == b->width() && a->height() == b->height() &&
               std::memcmp(a->data(), b->data(), a->byteCount()) == 0;
    };
    using Op = gfx::ImagePtr (*)(const gfx::ImagePtr&);
    const std::pair<Op, gfx::ImageOrientation> changes[] = {
        {orvChangeTurnLeft, gfx::ImageOrientation::Left},
        {orvChangeTurnRight, gfx::ImageOrientation::Right},
        {orvChangeMirrorHorizontal, gfx::ImageOrientation::UpMirrored},
        {orvChangeMirrorVertical, gfx::ImageOrientation::DownMirrored},
    };
    for (int o = 0; o < 8; ++o) {
        auto image = gfx::Image::withBitmap(stored, 1, gfx::ImageOrientation(o));
        const auto seen = orvImageRotatedToUp(image)->bitmap();
        for (const auto& [change, asSeen] : changes) {
            auto result = change(image);
            EXPECT_EQ(result->bitmap(), stored);
            EXPECT_TRUE(same(orvImageRotatedToUp(result)->bitmap(),
                             gfx::BitmapOps::oriented(*seen, asSeen)))
                << "from " << o << " to " << int(result->orientation());
        }
        auto turned = image;
        for (int i = 0; i < 4; ++i) turned = orvChangeTurnLeft(turned);
        EXPECT_EQ(turned->orientation(), image->orientation());
    }
    EXPECT_EQ(orvChangeTurnLeft(nullptr), nullptr);
}

TEST(OrvImageExtensionTest, LimitAndResizeOnlyReduce) {
    const auto photo = blank(400, 300, ImageOrientation::Right);  // 300 × 400 upright
    const auto limited = orvImageLimit(photo, 200);
    EXPECT_EQ(pixelSize(limited), std::make_pair(200, 150));
    EXPECT_EQ(limited->orientation(), ImageOrientation::Right);
    EXPECT_EQ(limited->scale(), 2);
    EXPECT_EQ(orvImageLimit(photo, 400), photo);

    // The box is in upright pixels: 300 × 400 inside 150 × 100 is 75 × 100 upright.
    EXPECT_EQ(pixelSize(orvImageResize(photo, {150, 100}, true)), std::make_pair(100, 75));
    EXPECT_EQ(pixelSize(orvImageResize(photo, {150, 100}, false)), std::make_pair(200, 150));
    EXPECT_EQ(orvImageResize(photo, {1000, 1000}, true), photo);

    const auto square = orvImageResize(photo, {100, 100}, true, 1);
    EXPECT_EQ(pixelSize(square), std::make_pair(100, 100));
    EXPECT_EQ(square->orientation(), ImageOrientation::Up);

    const auto placeholder = gfx::Image::empty();
    EXPECT_EQ(orvImageResize(placeholder, {100, 100}, true, 1), placeholder);
    EXPECT_EQ(orvImageLimit(placeholder, 10), placeholder);
    EXPECT_EQ(orvImageCorpWithRatio(placeholder, 1), placeholder);
    EXPECT_TRUE(orvJpegDataWithCompress(placeholder, 0.8).empty());
}

TEST(OrvImageExtensionTest, ScaledCopiesAndScreenLimit) {
    const auto scaled = orvScaleImage(blank(40, 30, ImageOrientation::Left), {61, 9});
    EXPECT_EQ(pixelSize(scaled), std::make_pair(61, 9));
    EXPECT_EQ(scaled->orientation(), ImageOrientation::Up);
    EXPECT_EQ(scaled->scale(), 1);

    ui::Screen::resetMain();
    ui::Screen::main().setBounds({0, 0, 50, 100});
    ui::Screen::main().setScale(3);
    EXPECT_EQ(orvFullScreenPixelLimit(), 300);
    const auto reduced = orvFullScreenImageKeepOrientation(blank(600, 200, ImageOrientation::Down));
    EXPECT_EQ(pixelSize(reduced), std::make_pair(300, 100));
    EXPECT_EQ(reduced->orientation(), ImageOrientation::Down);
    const std::string path = orv::test::TestEnvironment::tempDir() + "/wide.png";
    ASSERT_TRUE(codec::PngCodec::writeFile(*blank(900, 30)->bitmap(), path));
    EXPECT_EQ(pixelSize(orvFullScreenImageWithContentsOfFile(path)), std::make_pair(300, 10));
    ui::Screen::resetMain();
}

TEST(OrvImageExtensionTest, FileNamesGiveTheScale) {
    const std::string dir = orv::test::TestEnvironment::tempDir();
    for (const auto& [name, scale] : {std::pair{"icon@2x.png", 2.0},
                                      {"icon@x.png", 1.0},
                                      {"icon@1.5x.png", 1.5},
                                      {"icon.png", 1.0}}) {
        const std::string path = dir + "/" + name;
        ASSERT_TRUE(codec::PngCodec::writeFile(*letters()->bitmap(), path));
        const auto image = imageWithContentsOfFile(path);
        ASSERT_NE(image, nullptr) << name;
        EXPECT_EQ(image->scale(), scale) << name;
    }
    EXPECT_EQ(imageWithContentsOfFile(dir + "/missing.png"), nullptr);
}

TEST(OrvImageExtensionTest, JpegCarriesTheTagAsExifOrientation) {
    const auto tagged = blank(64, 32, ImageOrientation::Right);
    const auto back = imageWithData(orvJpegDataWithCompress(tagged, 0.9));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->orientation(), ImageOrientation::Right);
    EXPECT_EQ(pixelSize(back), std::make_pair(64, 32));

    // A plain upright picture gets no EXIF block of its own invention.
    const auto bytes = orvJpegDataWithCompress(blank(8, 8), 2);
    EXPECT_TRUE(codec::ImageMetadata::fromJpeg(bytes.data(), bytes.size()).exif().empty());
}

class OrvImageExtensionExifTest : public ::testing::TestWithParam<int> {};

TEST_P(OrvImageExtensionExifTest, ACameraPhotoTurnsUprightAndKeepsItsExifWhenWrittenAgain) {
    using namespace orv::test;
    const int exif = GetParam();
    const std::string path = TestEnvironment::tempDir() + "/camera" + std::to_string(exif) + ".jpg";
    ASSERT_FALSE(writeCameraJpeg(exif, path).empty());
    const codec::ImageMetadata source = orvMetadataWithContentsOfFile(path);
    EXPECT_EQ(source.exifOrientation(), exif);
    EXPECT_EQ(cameraTags(source), (CameraTags{"2021:06:15 10:30:00", "OrvCam", "OrvCam X1",
                                              "48, 51, 29.88N", " 2, 17, 40.20E"}));
    EXPECT_TRUE(hasThumbnail(source));

    const auto upright = orvImageRotatedToUp(imageWithContentsOfFile(path));
    ASSERT_TRUE(upright && upright->bitmap());
    EXPECT_TRUE(showsQuadrantsUpright(*upright->bitmap()));

    const auto bytes =
        orvJpegDataWithCompress(upright, 0.95, orvMetadataMatchingImage(upright, source));
    const auto written = codec::ImageMetadata::fromJpeg(bytes.data(), bytes.size());
    EXPECT_EQ(written.exifOrientation(), 1);
    EXPECT_EQ(cameraTags(written), cameraTags(source));
    EXPECT_FALSE(hasThumbnail(written));
    const auto again = imageWithData(bytes);
    ASSERT_TRUE(again && again->bitmap());
    EXPECT_EQ(again->orientation(), ImageOrientation::Up);
    EXPECT_LE(codec::test::maxDifference(*again->bitmap(), *upright->bitmap()), 12);
}

INSTANTIATE_TEST_SUITE_P(EightOrientations, OrvImageExtensionExifTest, ::testing::Range(1, 9));

TEST(OrvImageExtensionTest, MetadataIsReadFromTheHeadOfAJpegOnly) {
    const std::string dir = orv::test::TestEnvironment::tempDir();
    // A profile larger than a first read of the head, spread over several segments.
    codec::ImageMetadata profiled = orv::test::cameraMetadata(6);
    std::vector<uint8_t> icc(200000);
    for (size_t i = 0; i < icc.size(); ++i) icc[i] = static_cast<uint8_t>(i * 7);
    profiled.setIccProfile(icc);
    auto jpeg = codec::JpegCodec::encode(*codec::test::gradient(32, 32), 0.9, &profiled);
    const size_t scan = codec::JpegSegments::walk(jpeg.data(), jpeg.size());
    ASSERT_GT(scan, icc.size());
    const auto write = [&](const std::string& name, size_t size) {
        const std::vector<uint8_t> prefix(jpeg.begin(), jpeg.begin() + static_cast<long>(size));
        EXPECT_TRUE(OrvTSFileManager::writeDataAtomically(prefix, dir + "/" + name));
        return dir + "/" + name;
    };
    const auto whole = orvMetadataWithContentsOfFile(write("profiled.jpg", jpeg.size()));
    EXPECT_EQ(whole.iccProfile(), icc);
    EXPECT_EQ(whole.exif(), profiled.exif());
    // Picture data cut short does not matter; a head cut short does.
    EXPECT_EQ(orvMetadataWithContentsOfFile(write("cut-scan.jpg", scan + 20)).exif(),
              profiled.exif());
    EXPECT_TRUE(orvMetadataWithContentsOfFile(write("cut-head.jpg", scan - 1000)).empty());

    const std::string png = dir + "/plain.png";
    ASSERT_TRUE(codec::PngCodec::writeFile(*letters()->bitmap(), png));
    EXPECT_TRUE(orvMetadataWithContentsOfFile(png).empty());
    EXPECT_TRUE(orvMetadataWithContentsOfFile(dir + "/missing.jpg").empty());
}

}  // namespace
