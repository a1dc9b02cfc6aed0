#include "platform/gfx/Font.h"

namespace orv::gfx {

namespace {
// Chinese and Latin from one family; fontconfig falls back along the list for anything else.
constexpr const char* kSystemFamily = "Noto Sans CJK SC, DejaVu Sans, sans-serif";
constexpr double kSubheadlineSize = 15;
}  // namespace

Font Font::systemFont(double size) {
    return {kSystemFamily, size, false};
}
Font Font::boldSystemFont(double size) {
    return {kSystemFamily, size, true};
}
Font Font::preferredSubheadline() {
    return systemFont(kSubheadlineSize);
}

}  // namespace orv::gfx
