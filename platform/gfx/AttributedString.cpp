#include "platform/gfx/AttributedString.h"

#include <algorithm>

namespace orv::gfx {

namespace {

bool isContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

AttributedString::AttributedString(std::string text, TextAttributes attributes)
    : text_(std::move(text)) {
    if (!text_.empty()) runs_.push_back({0, text_.size(), std::move(attributes)});
}

void AttributedString::setAttributes(size_t start, size_t length,
                                     const TextAttributes& attributes) {
    start = std::min(start, text_.size());
    size_t end = start + std::min(length, text_.size() - start);
    while (start > 0 && isContinuationByte(text_[start])) --start;
    while (end < text_.size() && isContinuationByte(text_[end])) ++end;
    if (start == end) return;

    std::vector<Run> runs;
    auto append = [&runs](size_t from, size_t to, const TextAttributes& a) {
        if (from >= to) return;
        // Neighbours with the same attributes are one run, as the platform reports them.
        if (!runs.empty() && runs.back().attributes == a) {
            runs.back().length += to - from;
        } else {
            runs.push_back({from, to - from, a});
        }
    };
    bool inserted = false;
    for (const Run& run : runs_) {
        const size_t runEnd = run.start + run.length;
        append(run.start, std::min(runEnd, start), run.attributes);
        if (!inserted && runEnd >= start) {
            append(start, end, attributes);
            inserted = true;
        }
        append(std::max(run.start, end), runEnd, run.attributes);
    }
    runs_ = std::move(runs);
}

ParagraphStyle AttributedString::paragraphStyle() const {
    if (runs_.empty()) return {};
    return runs_.front().attributes.paragraphStyle.value_or(ParagraphStyle{});
}

}  // namespace orv::gfx
