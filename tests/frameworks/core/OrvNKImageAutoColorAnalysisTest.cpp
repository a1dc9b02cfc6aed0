#include "frameworks/core/OrvNKImageAutoColorAnalysis.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "platform/rt/RunLoop.h"
#include "tests/support/ExifTestPhotos.h"
#include "tests/support/TestEnvironment.h"

namespace {

using Analysis = OrvNKImageAutoColorAnalysis;
using orv::rt::RunLoop;

constexpr long kPending = 99;

// Each channel spans 40 to 200: red across, green down, blue along the diagonal; or, in a grey
// picture, all three alike.
gfx::ImagePtr dullPicture(bool grey = false) {
    auto bitmap = std::make_shared<gfx::Bitmap>(96, 64);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 96; ++x) {
            uint8_t* p = bitmap->mutableRow(y) + 4 * x;
            p[0] = static_cast<uint8_t>(40 + 160 * x / 95);
            p[1] = grey ? p[0] : static_cast<uint8_t>(40 + 160 * y / 63);
            p[2] = grey ? p[0] : static_cast<uint8_t>(40 + 160 * (x + y) / 158);
            p[3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

std::string path(const std::string& name) {
    return orv::test::TestEnvironment::tempDir() + "/auto-" + name;
}

std::string dullJpeg(bool grey = false) {
    const auto bytes = orvJpegDataWithCompress(dullPicture(grey), 1);
    EXPECT_TRUE(OrvTSFileManager::writeDataAtomically(bytes, path("dull.jpg")));
    return path("dull.jpg");
}

class OrvNKImageAutoColorAnalysisTest : public ::testing::Test {
  protected:
    void startAnalysis(const gfx::ImagePtr& thumb, long* status) {
        *status = kPending;
        analysis->analysisWithThumb(thumb, "in.jpg", "out.jpg", [=, this](auto args, long s) {
            EXPECT_TRUE(RunLoop::isMainThread());
            *status = s;
            received = std::move(args);
        });
    }
    void startCopy(const std::string& input, const std::string& output, bool* done) {
        analysis->copyAnalysisWithInput(input, output, [=, this](std::optional<std::string> p) {
            copied = std::move(p);
            *done = true;
        });
    }
    long analyse(const gfx::ImagePtr& thumb) {
        long status;
        startAnalysis(thumb, &status);
        EXPECT_TRUE(RunLoop::main().runUntil([&] { return status != kPending; }));
        return status;
    }
    std::optional<std::string> copy(const std::string& input, const std::string& output) {
        bool done = false;
        startCopy(input, output, &done);
        EXPECT_TRUE(RunLoop::main().runUntil([&] { return done; }));
        return copied;
    }

    std::shared_ptr<Analysis> analysis = rt::make<Analysis>();
    Analysis::Arguments received;
    std::optional<std::string> copied;
};

TEST_F(OrvNKImageAutoColorAnalysisTest, ADullPictureIsStretchedToTheFullRangeAndGreyStaysGrey) {
    for (bool grey : {false, true}) {
        SCOPED_TRACE(grey ? "grey" : "colour");
        ASSERT_EQ(analyse(orvImageLimit(dullPicture(grey), 48)), Analysis::kStatusSuccess);
        EXPECT_EQ(analysis->arguments(), received);
        EXPECT_NEAR(received->minR(), 40, 4);
        EXPECT_NEAR(received->maxR(), 200, 4);
        ASSERT_EQ(copy(dullJpeg(grey), path("out.jpg")), path("out.jpg"));
        const auto out = imageWithContentsOfFile(path("out.jpg"));
        ASSERT_TRUE(out && out->bitmap());
        int low[3] = {255, 255, 255}, high[3] = {}, cast = 0;
        for (int y = 0; y < out->bitmap()->height(); ++y) {
            for (int x = 0; x < out->bitmap()->width(); ++x) {
                const uint8_t* p = out->bitmap()->pixel(x, y);
                for (int c = 0; c < 3; ++c) low[c] = std::min<int>(low[c], p[c]);
                for (int c = 0; c < 3; ++c) high[c] = std::max<int>(high[c], p[c]);
                cast = std::max({cast, std::abs(p[0] - p[1]), std::abs(p[1] - p[2])});
            }
        }
        for (int c = 0; c < 3; ++c) EXPECT_TRUE(low[c] <= 8 && high[c] >= 247) << c;
        EXPECT_LE(cast, grey ? 3 : 255);
    }
}

TEST_F(OrvNKImageAutoColorAnalysisTest, StatusesAndResetsDropStaleRuns) {
    EXPECT_EQ(analyse(nullptr), Analysis::kStatusNoPicture);
    EXPECT_EQ(analyse(gfx::Image::withBitmap(std::make_shared<gfx::Bitmap>(4, 4))),
              Analysis::kStatusNoPicture);  // transparent all over
    EXPECT_FALSE(received);
    EXPECT_EQ(copy(dullJpeg(), path("none.jpg")), std::nullopt);  // no levels yet
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(path("none.jpg")));

    long first, second;
    startAnalysis(dullPicture(), &first);
    startAnalysis(dullPicture(), &second);
    ASSERT_TRUE(RunLoop::main().runUntil([&] { return first != kPending && second != kPending; }));
    EXPECT_EQ(first, Analysis::kStatusCancelled) << "the newer analysis wins";
    EXPECT_EQ(second, Analysis::kStatusSuccess);
    EXPECT_EQ(analysis->input(), "in.jpg");

    long status;
    bool copyDone = false;
    startAnalysis(dullPicture(), &status);
    startCopy(dullJpeg(), path("stale.jpg"), &copyDone);
    analysis->reset();
    ASSERT_TRUE(RunLoop::main().runUntil([&] { return status != kPending && copyDone; }));
    EXPECT_EQ(status, Analysis::kStatusCancelled);
    EXPECT_FALSE(received);
    EXPECT_EQ(copied, std::nullopt);
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(path("stale.jpg")));
    EXPECT_FALSE(analysis->arguments());
    EXPECT_EQ(analysis->input(), "");
    EXPECT_EQ(copy(dullJpeg(), path("after-reset.jpg")), std::nullopt);
}

TEST_F(OrvNKImageAutoColorAnalysisTest, FailedCopiesWriteNothing) {
    ASSERT_EQ(analyse(dullPicture()), Analysis::kStatusSuccess);
    EXPECT_EQ(copy(path("missing.jpg"), path("from-missing.jpg")), std::nullopt);
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(path("from-missing.jpg")));
    // The output's folder is a plain file: not even root can write there.
    const std::string unwritable = dullJpeg() + "/out.jpg";
    EXPECT_EQ(copy(dullJpeg(), unwritable), std::nullopt);
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(unwritable));
}

TEST_F(OrvNKImageAutoColorAnalysisTest, TheCopyIsUprightAndKeepsTheCameraExif) {
    using namespace orv::test;
    const std::string input = writeCameraJpeg(6, path("camera.jpg"));
    ASSERT_EQ(analyse(imageWithContentsOfFile(input)), Analysis::kStatusSuccess);
    ASSERT_EQ(copy(input, path("camera-out.jpg")), path("camera-out.jpg"));
    const auto metadata = orvMetadataWithContentsOfFile(path("camera-out.jpg"));
    EXPECT_EQ(metadata.exifOrientation(), 1);
    EXPECT_EQ(cameraTags(metadata), cameraTags(cameraMetadata(6)));
    EXPECT_FALSE(hasThumbnail(metadata));
    const auto image = imageWithContentsOfFile(path("camera-out.jpg"));
    ASSERT_TRUE(image && image->bitmap());
    EXPECT_TRUE(showsQuadrantsUpright(*image->bitmap()));
}

}  // namespace
