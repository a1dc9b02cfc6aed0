#include "platform/rt/Log.h"

#include <gtest/gtest.h>

#include "tests/platform/rt/RtTestHelpers.h"

namespace orv::rt {
namespace {

TEST(LogTest, CaptureSeesFormattedLinesAtOrAboveTheMinimumLevel) {
    const Log::Level saved = Log::minimumLevel();
    Log::setMinimumLevel(Log::Level::Info);
    {
        test::LogCapture capture;
        Log::debugf("hidden %d", 1);
        Log::infof("size {%d, %d} of %s", 3, 4, "image");
        Log::warnf("%.2f%%", 12.5);
        Log::write(Log::Level::Error, "plain");
        EXPECT_EQ(capture.lines(), (std::vector<std::string>{"info: size {3, 4} of image",
                                                             "warn: 12.50%", "error: plain"}));
        const std::string longText(5000, 'x');
        Log::infof("%s!", longText.c_str());
        EXPECT_EQ(capture.lines().back(), "info: " + longText + "!");
    }
    Log::setMinimumLevel(saved);
}

TEST(LogTest, SetSinkReturnsThePreviousSinkSoCapturesNest) {
    test::LogCapture outer;
    {
        test::LogCapture inner;
        Log::write(Log::Level::Warn, "to inner");
        EXPECT_EQ(inner.lines(), std::vector<std::string>{"warn: to inner"});
    }
    Log::write(Log::Level::Warn, "to outer");
    EXPECT_EQ(outer.lines(), std::vector<std::string>{"warn: to outer"});
}

}  // namespace
}  // namespace orv::rt
