#include "platform/gfx/TextLayout.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <climits>
#include <mutex>
#include <vector>

#include "platform/gfx/Canvas.h"
#include "platform/gfx/CanvasImpl.h"

namespace orv::gfx {

namespace {

// Pango's font maps and contexts are not thread-safe; every use of them goes through this lock.
std::mutex& pangoMutex() {
    static std::mutex m;
    return m;
}

// One context for every layout, measured in points: 72 dpi makes 1 point one user unit, and
// unhinted metrics with fractional positions make sizes independent of the device scale.
PangoContext* sharedContext() {
    static PangoContext* context = [] {
        PangoFontMap* fontMap = pango_cairo_font_map_new();
        PangoContext* c = pango_font_map_create_context(fontMap);
        g_object_unref(fontMap);  // the context keeps it
        pango_cairo_context_set_resolution(c, 72);
        cairo_font_options_t* options = cairo_font_options_create();
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        pango_cairo_context_set_font_options(c, options);
        cairo_font_options_destroy(options);
        pango_context_set_round_glyph_positions(c, FALSE);
        return c;
    }();
    return context;
}

PangoFontDescription* describe(const Font& font) {
    PangoFontDescription* d = pango_font_description_new();
    pango_font_description_set_family(
        d, font.family.empty() ? Font::systemFont(0).family.c_str() : font.family.c_str());
    pango_font_description_set_absolute_size(d, std::max(0.0, font.pointSize) * PANGO_SCALE);
    pango_font_description_set_weight(d, font.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    return d;
}

PangoEllipsizeMode ellipsizeMode(LineBreakMode mode) {
    switch (mode) {
        case LineBreakMode::TruncateHead:
            return PANGO_ELLIPSIZE_START;
        case LineBreakMode::TruncateTail:
            return PANGO_ELLIPSIZE_END;
        case LineBreakMode::TruncateMiddle:
            return PANGO_ELLIPSIZE_MIDDLE;
        default:
            return PANGO_ELLIPSIZE_NONE;
    }
}

double points(int pangoUnits) {
    return pango_units_to_double(pangoUnits);
}

}  // namespace

struct TextLayout::Impl {
    struct Line {
        PangoLayoutLine* line;
        double originOffset;  // from the line's left logical edge to its drawing origin
        double width;
        double baseline;  // from the top of the layout
    };

    Impl(std::string text, TextStyle style, Size maxSize);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    void configure();
    void collectLines();
    double alignedX(const Rect& rect, double lineWidth) const;

    std::string text;
    TextStyle style;
    Size maxSize;
    PangoLayout* layout = nullptr;
    bool singleUnwrappedLine = false;
    std::vector<Line> lines;  // the visible ones
    Size size;
};

TextLayout::Impl::Impl(std::string t, TextStyle s, Size m)
    : text(std::move(t)), style(std::move(s)), maxSize(m) {
    std::lock_guard lock(pangoMutex());
    layout = pango_layout_new(sharedContext());
    configure();
    collectLines();
}

TextLayout::Impl::~Impl() {
    std::lock_guard lock(pangoMutex());
    for (Line& l : lines) pango_layout_line_unref(l.line);
    g_object_unref(layout);
}

void TextLayout::Impl::configure() {
    PangoFontDescription* font = describe(style.font);
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    pango_layout_set_spacing(layout, pango_units_from_double(std::max(0.0, style.lineSpacing)));
    pango_layout_set_justify(layout, style.alignment == TextAlignment::Justified);

    // A single clipped line does not wrap; it runs on and is cut at the box.
    singleUnwrappedLine = style.numberOfLines == 1 && style.lineBreak == LineBreakMode::Clip;
    if (maxSize.width > 0 && !singleUnwrappedLine) {
        pango_layout_set_width(layout, pango_units_from_double(maxSize.width));
        pango_layout_set_wrap(layout, style.lineBreak == LineBreakMode::CharWrap
                                          ? PANGO_WRAP_CHAR
                                          : PANGO_WRAP_WORD_CHAR);
    }
    const PangoEllipsizeMode ellipsize = ellipsizeMode(style.lineBreak);
    pango_layout_set_ellipsize(layout, ellipsize);
    if (ellipsize == PANGO_ELLIPSIZE_NONE) return;
    // Negative heights count lines; positive ones are a height the text must fit.
    if (style.numberOfLines > 0)
        pango_layout_set_height(layout, -style.numberOfLines);
    else if (maxSize.height > 0)
        pango_layout_set_height(layout, pango_units_from_double(maxSize.height));
    else
        pango_layout_set_height(layout, INT_MAX);
}

void TextLayout::Impl::collectLines() {
    if (text.empty()) return;
    const size_t maxLines =
        style.numberOfLines > 0 ? static_cast<size_t>(style.numberOfLines) : SIZE_MAX;
    PangoLayoutIter* it = pango_layout_get_iter(layout);
    double bottom = 0, width = 0;
    do {
        PangoRectangle lineRect;
        pango_layout_iter_get_line_extents(it, nullptr, &lineRect);
        const double lineBottom = points(lineRect.y + lineRect.height);
        // Lines past the box's height are dropped, though the first always shows.
        if (lines.size() >= maxLines ||
            (maxSize.height > 0 && !lines.empty() && lineBottom > maxSize.height + 0.01)) {
            break;
        }
        PangoLayoutLine* line = pango_layout_iter_get_line_readonly(it);
        PangoRectangle logical;
        pango_layout_line_get_extents(line, nullptr, &logical);
        lines.push_back({pango_layout_line_ref(line), -points(logical.x), points(logical.width),
                         points(pango_layout_iter_get_baseline(it))});
        width = std::max(width, points(logical.width));
        bottom = lineBottom;
    } while (pango_layout_iter_next_line(it));
    pango_layout_iter_free(it);
    if (singleUnwrappedLine && maxSize.width > 0) width = std::min(width, maxSize.width);
    size = {width, bottom};
}

double TextLayout::Impl::alignedX(const Rect& rect, double lineWidth) const {
    switch (style.alignment) {
        case TextAlignment::Center:
            return rect.origin.x + (rect.size.width - lineWidth) / 2;
        case TextAlignment::Right:
            return rect.origin.x + rect.size.width - lineWidth;
        default:
            return rect.origin.x;
    }
}

TextLayout::TextLayout(std::string text, TextStyle style, Size maxSize)
    : impl_(std::make_unique<Impl>(std::move(text), std::move(style), maxSize)) {}

TextLayout::~TextLayout() = default;
TextLayout::TextLayout(TextLayout&&) noexcept = default;
TextLayout& TextLayout::operator=(TextLayout&&) noexcept = default;

Size TextLayout::size() const {
    return impl_->size;
}
int TextLayout::lineCount() const {
    return static_cast<int>(impl_->lines.size());
}

int TextLayout::unknownGlyphCount() const {
    std::lock_guard lock(pangoMutex());
    return pango_layout_get_unknown_glyphs_count(impl_->layout);
}

void TextLayout::draw(Canvas& canvas, const Rect& rect) const {
    if (impl_->lines.empty()) return;
    std::lock_guard lock(pangoMutex());
    cairo_t* cr = canvas.impl().cr;
    cairo_save(cr);
    if (impl_->singleUnwrappedLine) {
        cairo_rectangle(cr, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
        cairo_clip(cr);
    }
    canvas.impl().setSourceColor(impl_->style.color);
    for (const Impl::Line& line : impl_->lines) {
        const double width =
            impl_->singleUnwrappedLine ? std::min(line.width, rect.size.width) : line.width;
        cairo_move_to(cr, impl_->alignedX(rect, width) + line.originOffset,
                      rect.origin.y + line.baseline);
        pango_cairo_show_layout_line(cr, line.line);
    }
    cairo_new_path(cr);
    cairo_restore(cr);
}

}  // namespace orv::gfx
