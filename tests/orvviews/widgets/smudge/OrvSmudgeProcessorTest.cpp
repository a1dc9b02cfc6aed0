#include "orvviews/widgets/smudge/OrvSmudgeProcessor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>
#include <vector>

#include "frameworks/core/OrvTSFileManager.h"
#include "platform/ui/Screen.h"

namespace {

namespace fs = std::filesystem;

// Every pixel its own colour: red follows x, green follows y, blue is a checker of 10s.
gfx::ImagePtr makeSource(int width, int height) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t* p = bitmap->mutableRow(y) + 4 * x;
            p[0] = uint8_t(x * 255 / std::max(1, width - 1));
            p[1] = uint8_t(y * 255 / std::max(1, height - 1));
            p[2] = ((x / 10 + y / 10) % 2) ? 200 : 40;
            p[3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

// A hard square brush, fully opaque.
std::shared_ptr<OrvBrush> makeBrush(long type, int side = 20) {
    auto brush = OrvBrush::brushWithType(type);
    auto bitmap = std::make_shared<gfx::Bitmap>(side, side);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) bitmap->mutableRow(y)[4 * x + 3] = 255;
    for (int i = 0; i < side * side; ++i) {
        uint8_t* p = bitmap->mutableData() + 4 * i;
        p[0] = p[1] = p[2] = 255;
    }
    brush->setImage(gfx::Image::withBitmap(bitmap));
    return brush;
}

const uint8_t* pixelOf(const gfx::ImagePtr& image, int x, int y) {
    return image->bitmap()->pixel(x, y);
}

bool samePixels(const gfx::ImagePtr& a, const gfx::ImagePtr& b) {
    return a && b && a->bitmap()->byteCount() == b->bitmap()->byteCount() &&
           std::equal(a->bitmap()->data(), a->bitmap()->data() + a->bitmap()->byteCount(),
                      b->bitmap()->data());
}

// Records the stamps instead of drawing them.
class RecordingProcessor : public OrvSimpleProcessor {
    ORV_DECLARE_CLASS(RecordingProcessor)
  public:
    struct Stamp {
        gfx::Point point;
        float angle, scale, alpha;
    };
    std::vector<Stamp> stamps;
    void drawAtPoint(gfx::Point p, float angle, float scale, float alpha) override {
        stamps.push_back({p, angle, scale, alpha});
    }
};
ORV_DEFINE_CLASS(RecordingProcessor, OrvSimpleProcessor)

class OrvSmudgeProcessorTest : public ::testing::Test {
  protected:
    // Each test writes its history files into a folder of its own.
    void SetUp() override {
        ui::Screen::resetMain();  // 375 points at scale 2: 750 pixels wide
        const char* previous = std::getenv("ORV_TEMP_DIR");
        previousTemp_ = previous ? previous : "";
        tempDir_ = previousTemp_ + "/smudge-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name();
        setenv("ORV_TEMP_DIR", tempDir_.c_str(), 1);
    }
    void TearDown() override {
        setenv("ORV_TEMP_DIR", previousTemp_.c_str(), 1);
        fs::remove_all(tempDir_);
    }
    std::vector<std::string> cacheFiles() const {
        std::vector<std::string> files;
        std::error_code ec;
        for (const auto& entry : fs::directory_iterator(tempDir_, ec))
            if (entry.path().filename().string().rfind("smudgeCache_", 0) == 0)
                files.push_back(entry.path().string());
        return files;
    }
    // The background pass writes the files; waits until there are `count` of them.
    std::vector<std::string> waitForCacheFiles(size_t count) const {
        for (int i = 0; i < 500 && cacheFiles().size() < count; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return cacheFiles();
    }
    std::string previousTemp_, tempDir_;
    // A canvas shown at its own size in points, so that touches are pixels.
    template <class P>
    std::shared_ptr<P> makeProcessor(int width, int height, std::shared_ptr<OrvBrush> brush,
                                     double size) {
        auto processor = rt::make<P>();
        processor->setImage(makeSource(width, height));
        processor->setCurrentBrush(brush);
        processor->setBrushSize(size);
        processor->setOriginIVSize({double(width), double(height)});
        return processor;
    }
    // One stroke through the points, saved as history.
    static void stroke(OrvSimpleProcessor& processor, const std::vector<gfx::Point>& points) {
        processor.touchesBegan();
        for (size_t i = 1; i < points.size(); ++i)
            processor.drawAtCurrentPoint(points[i], points[i - 1]);
        processor.saveCurrentAsHistory();
    }
};

TEST_F(OrvSmudgeProcessorTest, SegmentsBecomeEvenlySpacedStampsThatBendIntoTheNextSegment) {
    // A 20 px brush at 0.2 of the screen: stamps 0.8 × 4 = 3.2 points apart.
    auto processor = makeProcessor<RecordingProcessor>(200, 100, makeBrush(OrvBrush::kStamp), 0.2);
    EXPECT_DOUBLE_EQ(processor->brushScale(), 750 * 0.2 / 20);
    processor->touchesBegan();
    processor->drawAtCurrentPoint({20, 10}, {10, 10});
    // 10 / 3.2 + 1 = 4.125: four stamps, none at the start, the last on the end point.
    ASSERT_EQ(processor->stamps.size(), 4u);
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(processor->stamps[i].point.x, 10 + 2.5 * (i + 1), 1e-4);
        EXPECT_NEAR(processor->stamps[i].point.y, 10, 1e-4);
        EXPECT_NEAR(processor->stamps[i].angle, M_PI / 2, 1e-6);  // moving right, from the y axis
        EXPECT_NEAR(processor->stamps[i].alpha, 1 - 0.5 / (1 + 10 / 4.0), 1e-6);
    }
    // The next segment turns down; it leaves (20, 10) still heading right.
    processor->stamps.clear();
    processor->drawAtCurrentPoint({20, 20}, {20, 10});
    ASSERT_EQ(processor->stamps.size(), 4u);
    EXPECT_GT(processor->stamps[0].point.x, 20.5);
    EXPECT_NEAR(processor->stamps[3].point.x, 20, 1e-4);
    EXPECT_NEAR(processor->stamps[3].point.y, 20, 1e-4);
    // A segment of no length: one stamp on the point, upright, at half alpha.
    processor->stamps.clear();
    processor->touchesBegan();
    processor->drawAtCurrentPoint({50, 50}, {50, 50});
    ASSERT_EQ(processor->stamps.size(), 1u);
    EXPECT_EQ(processor->stamps[0].angle, 0);
    EXPECT_FLOAT_EQ(processor->stamps[0].alpha, 0.5f);
}

TEST_F(OrvSmudgeProcessorTest, TouchesMapToCanvasPixelsAndEraserAndMosaicRunAtHalfScale) {
    auto processor = makeProcessor<RecordingProcessor>(200, 100, makeBrush(OrvBrush::kEraser), 0.2);
    processor->setOriginIVSize({100, 50});  // shown at half size
    processor->touchesBegan();
    processor->drawAtCurrentPoint({40, 30}, {40, 30});
    ASSERT_EQ(processor->stamps.size(), 1u);
    EXPECT_DOUBLE_EQ(processor->stamps[0].point.x, 80);
    EXPECT_DOUBLE_EQ(processor->stamps[0].point.y, 60);
    EXPECT_FLOAT_EQ(processor->stamps[0].scale, float(processor->brushScale() / 2));
}

TEST_F(OrvSmudgeProcessorTest, DegenerateBrushesAndStrokesStayBounded) {
    // A size of 0 still marks the segment once; a huge one stamps once; a tiny one is capped.
    for (double size : {0.0, 10000.0, 1e-9}) {
        auto processor =
            makeProcessor<RecordingProcessor>(200, 100, makeBrush(OrvBrush::kStamp), size);
        processor->touchesBegan();
        processor->drawAtCurrentPoint({150, 90}, {0, 0});
        EXPECT_GE(processor->stamps.size(), 1u) << size;
        EXPECT_LE(processor->stamps.size(), 4096u) << size;
        for (const auto& s : processor->stamps) EXPECT_TRUE(std::isfinite(s.alpha)) << size;
    }
    // Ten thousand moves in one stroke, back and forth over a small canvas: one history entry.
    auto busy = makeProcessor<OrvSmudgeProcessor>(64, 64, makeBrush(OrvBrush::kStamp, 64), 0.05);
    busy->setMaxUndoCount(3);
    busy->touchesBegan();
    gfx::Point last{0, 0};
    for (int i = 1; i <= 10000; ++i) {
        const gfx::Point next{double(i % 120 < 60 ? i % 60 : 60 - i % 60),
                              30 + 20 * std::sin(i * 0.01)};
        busy->drawAtCurrentPoint(next, last);
        last = next;
    }
    busy->saveCurrentAsHistory();
    EXPECT_EQ(busy->getUndoCount(), 1u);
    busy->destroy();
    // The brush size before any brush is only recorded.
    auto processor = rt::make<OrvSimpleProcessor>();
    processor->setBrushSize(0.3);
    EXPECT_EQ(processor->brushScale(), 0);
}

TEST_F(OrvSmudgeProcessorTest, StampPaintsTheSourceColourUnderItsCentre) {
    auto brush = makeBrush(OrvBrush::kStamp);
    brush->setRotateType(OrvBrush::kRotateNone);
    // Scale 1: the 20 px square lands as a 20 px square.
    auto processor = makeProcessor<OrvSmudgeProcessor>(200, 100, brush, 20.0 / 750);
    processor->stampAt({100, 50}, 0, 1, 1);
    auto canvas = processor->getSmudgeImage();
    auto source = makeSource(200, 100);
    const uint8_t* centre = pixelOf(source, 100, 50);
    for (auto [x, y] : {std::pair{91, 41}, {108, 58}, {100, 50}}) {
        const uint8_t* p = pixelOf(canvas, x, y);
        EXPECT_EQ(p[0], centre[0]) << x << "," << y;
        EXPECT_EQ(p[1], centre[1]);
        EXPECT_EQ(p[2], centre[2]);
    }
    // Outside the square the picture is untouched.
    EXPECT_EQ(0, std::memcmp(pixelOf(canvas, 80, 50), pixelOf(source, 80, 50), 4));
    // Half alpha over an opaque picture blends half way.
    processor->stampAt({30, 30}, 0, 1, 0.5);
    const uint8_t* mixed = pixelOf(processor->getSmudgeImage(), 25, 25);
    const uint8_t* below = pixelOf(source, 25, 25);
    const uint8_t* colour = pixelOf(source, 30, 30);
    EXPECT_NEAR(mixed[1], (below[1] + colour[1]) / 2.0, 1.5);
}

TEST_F(OrvSmudgeProcessorTest, EraserCutsTheBrushOutOfTheCanvas) {
    auto processor =
        makeProcessor<OrvSmudgeProcessor>(200, 100, makeBrush(OrvBrush::kEraser), 20.0 / 750);
    processor->eraseAt({50, 50}, 1);
    auto canvas = processor->getSmudgeImage();
    EXPECT_EQ(pixelOf(canvas, 50, 50)[3], 0);
    EXPECT_EQ(pixelOf(canvas, 41, 41)[3], 0);
    EXPECT_EQ(pixelOf(canvas, 38, 50)[3], 255);
    // Erasing twice changes nothing more.
    processor->eraseAt({50, 50}, 1);
    EXPECT_TRUE(samePixels(canvas, processor->getSmudgeImage()));
}

TEST_F(OrvSmudgeProcessorTest, MosaicShowsHardBlocksOnOneGridWhateverTheBrushSize) {
    for (double scale : {1.0, 2.5}) {
        auto processor =
            makeProcessor<OrvSmudgeProcessor>(300, 300, makeBrush(OrvBrush::kMosaic, 40), 0.1);
        ASSERT_EQ(processor->mosaicImage()->width(), 10);
        processor->mosaicAt({150, 150}, scale);
        processor->mosaicAt({165, 150}, scale);
        auto canvas = processor->getSmudgeImage();
        // Inside one 30 px block every pixel is the same; the next block differs.
        const uint8_t* a = pixelOf(canvas, 151, 151);
        for (auto [x, y] : {std::pair{152, 168}, {170, 155}, {178, 165}}) {
            EXPECT_EQ(0, std::memcmp(a, pixelOf(canvas, x, y), 4)) << scale << " " << x << "," << y;
        }
        EXPECT_NE(0, std::memcmp(a, pixelOf(canvas, 151, 140), 4)) << scale;
    }
    // A picture smaller than a block gives an empty mosaic, and strokes still run.
    auto tiny = makeProcessor<OrvSmudgeProcessor>(20, 20, makeBrush(OrvBrush::kMosaic), 0.1);
    tiny->touchesBegan();
    EXPECT_TRUE(tiny->drawAtCurrentPoint({15, 15}, {2, 2}));
}

TEST_F(OrvSmudgeProcessorTest, PointsOutsideTheCanvasBytesAreDropped) {
    auto processor =
        makeProcessor<OrvSmudgeProcessor>(200, 100, makeBrush(OrvBrush::kEraser), 20.0 / 750);
    auto before = processor->getSmudgeImage();
    processor->eraseAt({100, -5}, 1);
    processor->eraseAt({200, 99}, 1);  // one past the last byte
    processor->eraseAt({1e12, 1e12}, 1);
    EXPECT_TRUE(samePixels(before, processor->getSmudgeImage()));
    processor->eraseAt({199, 99}, 1);  // the last pixel
    EXPECT_EQ(pixelOf(processor->getSmudgeImage(), 199, 99)[3], 0);
    // A stroke far outside the picture, with scatter and random sizes, leaves it alone too.
    auto brush = makeBrush(OrvBrush::kStamp);
    brush->setPositionType(OrvBrush::kPositionRandom);
    brush->setSizeType(OrvBrush::kSizeRandom);
    brush->setRotateType(OrvBrush::kRotateRandom);
    processor->setCurrentBrush(brush);
    processor->setBrushSize(0.05);
    auto kept = processor->getSmudgeImage();
    processor->touchesBegan();
    processor->drawAtCurrentPoint({-5000, -900}, {-9000, -100});
    EXPECT_TRUE(samePixels(kept, processor->getSmudgeImage()));
}

TEST_F(OrvSmudgeProcessorTest, HistoryMovesToDiskAndComesBackIdentical) {
    auto processor = makeProcessor<OrvSmudgeProcessor>(120, 80, makeBrush(OrvBrush::kEraser), 0.05);
    processor->setMaxUndoCount(10);
    auto original = processor->getSmudgeImage();
    stroke(*processor, {{10, 10}, {60, 40}});
    auto first = processor->getSmudgeImage();
    stroke(*processor, {{100, 70}, {70, 20}});
    auto second = processor->getSmudgeImage();
    const auto files = waitForCacheFiles(2);
    ASSERT_EQ(files.size(), 2u);

    // Undo reads the files back (the erased pixels are transparent, so straight-alpha PNG has
    // to round-trip the premultiplied bytes exactly).
    EXPECT_TRUE(samePixels(processor->getUndoData(), first));
    EXPECT_TRUE(samePixels(processor->getUndoData(), original));
    EXPECT_EQ(processor->getUndoData(), nullptr);
    EXPECT_TRUE(samePixels(processor->getRedoData(), first));
    EXPECT_TRUE(samePixels(processor->getRedoData(), second));
    EXPECT_EQ(processor->getRedoData(), nullptr);

    // Undo, then a new stroke: the redo entry and its file are gone.
    processor->getUndoData();
    ASSERT_EQ(processor->getRedoCount(), 1u);
    stroke(*processor, {{20, 60}, {30, 65}});
    EXPECT_EQ(processor->getRedoCount(), 0u);
    EXPECT_FALSE(fs::exists(files[0]) && fs::exists(files[1]));
    // Destroying takes every remaining file, also one a pass is about to write.
    processor->destroy();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_TRUE(cacheFiles().empty());
}

TEST_F(OrvSmudgeProcessorTest, UndoLimitDropsTheOldestAndUndoEndsOnTheSource) {
    // Never told a limit: nothing is ever undoable, and a stroke still wipes redo.
    auto unlimited = makeProcessor<OrvSmudgeProcessor>(60, 40, makeBrush(OrvBrush::kEraser), 0.05);
    stroke(*unlimited, {{10, 10}, {30, 30}});
    EXPECT_EQ(unlimited->getUndoCount(), 0u);
    EXPECT_EQ(unlimited->getUndoData(), nullptr);

    auto processor = makeProcessor<OrvSmudgeProcessor>(60, 40, makeBrush(OrvBrush::kEraser), 0.05);
    processor->setMaxUndoCount(2);
    auto source = processor->getSmudgeImage();
    stroke(*processor, {{5, 5}, {10, 10}});
    stroke(*processor, {{20, 20}, {25, 25}});
    auto second = processor->getSmudgeImage();
    stroke(*processor, {{40, 30}, {50, 35}});
    ASSERT_EQ(processor->getUndoCount(), 2u);
    EXPECT_TRUE(samePixels(processor->getUndoData(), second));
    EXPECT_TRUE(samePixels(processor->getUndoData(), source));  // the first stroke is gone
    // A touch that never moves still saves a state, equal to the one before.
    processor->touchesBegan();
    processor->saveCurrentAsHistory();
    EXPECT_EQ(processor->getUndoCount(), 1u);
    EXPECT_EQ(processor->getRedoCount(), 0u);
    processor->destroy();
}

TEST_F(OrvSmudgeProcessorTest, UnwritableHistoryFolderKeepsEntriesInMemory) {
    setenv("ORV_TEMP_DIR", "/dev/null/nowhere", 1);
    auto processor = makeProcessor<OrvSmudgeProcessor>(60, 40, makeBrush(OrvBrush::kEraser), 0.05);
    processor->setMaxUndoCount(5);
    stroke(*processor, {{5, 5}, {30, 20}});
    auto first = processor->getSmudgeImage();
    stroke(*processor, {{40, 5}, {50, 30}});
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(samePixels(processor->getUndoData(), first));
    EXPECT_TRUE(processor->getRedoData());
    processor->destroy();
}

TEST_F(OrvSmudgeProcessorTest, UndoWhileTheHistoryIsBeingWrittenSeesAWholePicture) {
    // Large enough that the PNG writes take a while; undo and redo race them.
    auto processor =
        makeProcessor<OrvSmudgeProcessor>(900, 700, makeBrush(OrvBrush::kEraser, 40), 0.2);
    processor->setMaxUndoCount(50);
    std::vector<gfx::ImagePtr> states{processor->getSmudgeImage()};
    for (int i = 0; i < 6; ++i) {
        stroke(*processor, {{100.0 * i, 50}, {100.0 * i + 80, 600}});
        states.push_back(processor->getSmudgeImage());
    }
    for (int i = 5; i >= 0; --i) EXPECT_TRUE(samePixels(processor->getUndoData(), states[i]));
    for (int i = 1; i <= 6; ++i) EXPECT_TRUE(samePixels(processor->getRedoData(), states[i]));
    processor->destroy();
}

}  // namespace
