#include "platform/gfx/AttributedString.h"

#include <gtest/gtest.h>

namespace orv::gfx {
namespace {

TextAttributes colored(const Color& color) {
    TextAttributes a;
    a.foregroundColor = color;
    return a;
}

// The runs as (start, length) pairs.
std::vector<std::pair<size_t, size_t>> spans(const AttributedString& s) {
    std::vector<std::pair<size_t, size_t>> out;
    for (const auto& run : s.runs()) out.emplace_back(run.start, run.length);
    return out;
}
using Spans = std::vector<std::pair<size_t, size_t>>;

TEST(AttributedStringTest, SettingAttributesSplitsAndJoinsRuns) {
    EXPECT_TRUE(AttributedString("").runs().empty());
    AttributedString s("abcdef", colored(Color::black()));
    s.setAttributes(2, 2, colored(Color::red()));
    ASSERT_EQ(spans(s), (Spans{{0, 2}, {2, 2}, {4, 2}}));
    EXPECT_EQ(s.runs()[1].attributes, colored(Color::red()));
    EXPECT_EQ(s.runs()[2].attributes, colored(Color::black()));
    // Equal neighbours become one run again.
    s.setAttributes(2, 2, colored(Color::black()));
    EXPECT_EQ(spans(s), (Spans{{0, 6}}));
    // At the ends, past the end (clamped) and wholly outside.
    s.setAttributes(0, 1, colored(Color::red()));
    s.setAttributes(5, 100, colored(Color::red()));
    s.setAttributes(10, 1, colored(Color::whiteColor()));
    EXPECT_EQ(spans(s), (Spans{{0, 1}, {1, 4}, {5, 1}}));
    EXPECT_EQ(s.paragraphStyle(), ParagraphStyle{});

    // Ranges widen to whole UTF-8 characters (中 takes bytes 1 to 3).
    AttributedString chinese("a中b");
    chinese.setAttributes(2, 1, colored(Color::red()));
    EXPECT_EQ(spans(chinese), (Spans{{0, 1}, {1, 3}, {4, 1}}));
}

}  // namespace
}  // namespace orv::gfx
