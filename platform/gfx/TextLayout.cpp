#include "platform/gfx/TextLayout.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <mutex>
#include <string_view>
#include <vector>

#include "platform/gfx/AttributedString.h"
#include "platform/gfx/BitmapContext.h"
#include "platform/gfx/Canvas.h"
#include "platform/gfx/CanvasImpl.h"

namespace orv::gfx {

namespace {

// The platform's font when a run names none.
constexpr double kDefaultPointSize = 12;

// Directional formatting characters, UTF-8.
constexpr std::string_view kLeftToRightOverride = "\xE2\x80\xAD";
constexpr std::string_view kRightToLeftOverride = "\xE2\x80\xAE";
constexpr std::string_view kPopDirectionalFormatting = "\xE2\x80\xAC";
constexpr std::string_view kLeftToRightMark = "\xE2\x80\x8E";
constexpr std::string_view kRightToLeftMark = "\xE2\x80\x8F";

// Pango's font maps and contexts are not thread-safe; every use of them goes through this lock.
std::mutex& pangoMutex() {
    static std::mutex m;
    return m;
}

// Contexts measure in points: 72 dpi makes 1 point one user unit, and unhinted metrics with
// fractional positions make sizes independent of the device scale. All share one font map,
// and so its caches.
PangoContext* makeContext(PangoDirection direction) {
    static PangoFontMap* fontMap = pango_cairo_font_map_new();
    PangoContext* c = pango_font_map_create_context(fontMap);
    pango_cairo_context_set_resolution(c, 72);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(c, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(c, FALSE);
    pango_context_set_base_dir(c, direction);
    return c;
}

// A context per base direction, never changed after creation: changing a shared context
// would lay out again every layout made from it.
PangoContext* contextFor(WritingDirection direction) {
    static PangoContext* leftToRight = makeContext(PANGO_DIRECTION_LTR);
    static PangoContext* rightToLeft = makeContext(PANGO_DIRECTION_RTL);
    return direction == WritingDirection::RightToLeft ? rightToLeft : leftToRight;
}

Font fontOf(const TextAttributes& a) {
    return a.font.value_or(Font::systemFont(kDefaultPointSize));
}

double strokeLineWidth(const TextAttributes& a) {
    return std::fabs(a.strokeWidth) / 100 * fontOf(a).pointSize;
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

// Marks which run of the attributed string a Pango item comes from. Its values differ between
// runs, so Pango never puts two runs in one item, and the ellipsis inherits it.
struct RunAttribute {
    PangoAttribute attribute;
    size_t index;
};

PangoAttribute* newRunAttribute(size_t index);

const PangoAttrClass& runAttributeClass() {
    static const PangoAttrClass klass = {
        pango_attr_type_register("orv-run"),
        [](const PangoAttribute* a) {
            return newRunAttribute(reinterpret_cast<const RunAttribute*>(a)->index);
        },
        [](PangoAttribute* a) { g_free(a); },
        [](const PangoAttribute* a, const PangoAttribute* b) -> gboolean {
            return reinterpret_cast<const RunAttribute*>(a)->index ==
                   reinterpret_cast<const RunAttribute*>(b)->index;
        }};
    return klass;
}

PangoAttribute* newRunAttribute(size_t index) {
    RunAttribute* a = g_new0(RunAttribute, 1);
    pango_attribute_init(&a->attribute, &runAttributeClass());
    a->index = index;
    return &a->attribute;
}

size_t runIndexOf(const PangoItem* item) {
    for (GSList* l = item->analysis.extra_attrs; l; l = l->next) {
        const auto* a = static_cast<const PangoAttribute*>(l->data);
        if (a->klass == &runAttributeClass())
            return reinterpret_cast<const RunAttribute*>(a)->index;
    }
    return 0;
}

void insertAttribute(PangoAttrList* list, PangoAttribute* a, size_t start, size_t end) {
    a->start_index = static_cast<guint>(start);
    a->end_index = static_cast<guint>(end);
    pango_attr_list_insert(list, a);
}

// The length of the paragraph separator at `i` (Pango's: \n, \r, \r\n, U+2029), 0 if none.
size_t separatorLength(std::string_view s, size_t i) {
    if (s[i] == '\n') return 1;
    if (s[i] == '\r') return i + 1 < s.size() && s[i + 1] == '\n' ? 2 : 1;
    return s.compare(i, 3, "\xE2\x80\xA9") == 0 ? 3 : 0;
}

// A strong mark of the direction of the paragraph starting at `at`, which the bidi algorithm
// takes from its first letter: left to right when it has none.
std::string_view paragraphMark(std::string_view s, size_t at) {
    for (size_t i = at; i < s.size() && separatorLength(s, i) == 0;) {
        const gunichar c =
            g_utf8_get_char_validated(s.data() + i, static_cast<gssize>(s.size() - i));
        if (c >= 0xFFFFFFFEu) {  // not UTF-8: Pango shows it as a replacement, no letter
            ++i;
            continue;
        }
        // Pango's wrapper of FriBidi's character types; deprecated in favour of FriBidi itself,
        // which the build does not link directly.
        G_GNUC_BEGIN_IGNORE_DEPRECATIONS
        const PangoBidiType type = pango_bidi_type_for_unichar(c);
        G_GNUC_END_IGNORE_DEPRECATIONS
        switch (type) {
            case PANGO_BIDI_TYPE_L:
                return kLeftToRightMark;
            case PANGO_BIDI_TYPE_R:
            case PANGO_BIDI_TYPE_AL:
                return kRightToLeftMark;
            default:
                i += g_utf8_skip[static_cast<unsigned char>(s[i])];
        }
    }
    return kLeftToRightMark;
}

std::string_view overrideFor(const std::optional<WritingDirection>& direction) {
    if (direction == WritingDirection::LeftToRight) return kLeftToRightOverride;
    if (direction == WritingDirection::RightToLeft) return kRightToLeftOverride;
    return {};
}

// The text Pango lays out: the string with directional overrides around the runs that force a
// direction, opened again after each paragraph separator since the bidi algorithm starts every
// paragraph afresh. `runEnds` gets where each run ends in it.
std::string laidOutText(const AttributedString& text, bool naturalBase,
                        std::vector<size_t>& runEnds) {
    const std::string_view source = text.string();
    // Pango would take an override for a letter when it looks for a paragraph's direction; a
    // mark of the right direction then opens each paragraph.
    const bool markParagraphs =
        naturalBase && std::any_of(text.runs().begin(), text.runs().end(), [](const auto& run) {
            return !overrideFor(run.attributes.writingDirection).empty();
        });
    std::string out;
    auto beginParagraph = [&](size_t at) {
        if (markParagraphs) out += paragraphMark(source, at);
    };
    beginParagraph(0);
    size_t i = 0;
    for (const AttributedString::Run& run : text.runs()) {
        const std::string_view override = overrideFor(run.attributes.writingDirection);
        out += override;
        // A \r\n split between two runs stays whole, in the first.
        while (i < run.start + run.length) {
            const size_t separator = separatorLength(source, i);
            if (separator == 0) {
                out += source[i++];
                continue;
            }
            if (!override.empty()) out += kPopDirectionalFormatting;
            out += source.substr(i, separator);
            i += separator;
            beginParagraph(i);
            out += override;
        }
        if (!override.empty()) out += kPopDirectionalFormatting;
        runEnds.push_back(out.size());
    }
    return out;
}

void setSource(cairo_t* cr, const Color& c, double alpha) {
    cairo_set_source_rgba(cr, std::clamp(c.r, 0.0, 1.0), std::clamp(c.g, 0.0, 1.0),
                          std::clamp(c.b, 0.0, 1.0), std::clamp(c.a, 0.0, 1.0) * alpha);
}

// Where a line starts in the rect, as a fraction of the room left beside it.
double alignmentFraction(TextAlignment alignment, bool rightToLeft) {
    switch (alignment) {
        case TextAlignment::Left:
            return 0;
        case TextAlignment::Center:
            return 0.5;
        case TextAlignment::Right:
            return 1;
        default:  // natural, and the last line of justified text
            return rightToLeft ? 1 : 0;
    }
}

AttributedString attributedOf(std::string text, const TextStyle& style) {
    TextAttributes a;
    a.font = style.font;
    a.foregroundColor = style.color;
    a.paragraphStyle = ParagraphStyle{style.alignment, style.lineBreak, style.lineSpacing,
                                      WritingDirection::Natural};
    return AttributedString(std::move(text), std::move(a));
}

}  // namespace

struct TextLayout::Impl {
    struct Line {
        PangoLayoutLine* line;
        double originOffset;  // from the line's left logical edge to its drawing origin
        double width;
        double baseline;  // from the top of the layout
        bool rightToLeft;
        Rect ink;  // from the line's drawing origin
    };

    Impl(const AttributedString& text, Size maxSize, int numberOfLines);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    void setText(const AttributedString& text);
    void configure();
    void collectLines();
    double lineX(const Rect& rect, const Line& line) const;
    Rect inkBounds(const Rect& rect) const;
    void paint(cairo_t* cr, const Rect& rect, double alpha) const;
    void paintGlyphs(cairo_t* cr, const PangoGlyphItem& glyphs, Point origin, double width,
                     double alpha) const;

    std::vector<TextAttributes> runs;  // by the index their RunAttribute carries
    ParagraphStyle paragraph;
    int numberOfLines;
    Size maxSize;
    PangoLayout* layout = nullptr;
    bool singleUnwrappedLine = false;
    double strokeOverhang = 0;  // how far strokes reach beyond the glyphs
    std::vector<Line> lines;    // the visible ones
    Size size;
};

TextLayout::Impl::Impl(const AttributedString& text, Size m, int lines)
    : paragraph(text.paragraphStyle()), numberOfLines(lines), maxSize(m) {
    std::lock_guard lock(pangoMutex());
    layout = pango_layout_new(contextFor(paragraph.baseWritingDirection));
    // A natural base direction comes from each paragraph's first strong character.
    pango_layout_set_auto_dir(layout, paragraph.baseWritingDirection == WritingDirection::Natural);
    setText(text);
    configure();
    collectLines();
}

TextLayout::Impl::~Impl() {
    std::lock_guard lock(pangoMutex());
    for (Line& l : lines) pango_layout_line_unref(l.line);
    g_object_unref(layout);
}

void TextLayout::Impl::setText(const AttributedString& text) {
    std::vector<size_t> runEnds;
    const std::string laidOut =
        laidOutText(text, paragraph.baseWritingDirection == WritingDirection::Natural, runEnds);
    PangoAttrList* attributes = pango_attr_list_new();
    size_t start = 0;
    for (size_t i = 0; i < runEnds.size(); ++i) {
        const TextAttributes& a = text.runs()[i].attributes;
        const size_t end = runEnds[i];
        insertAttribute(attributes, newRunAttribute(i), start, end);
        PangoFontDescription* font = describe(fontOf(a));
        insertAttribute(attributes, pango_attr_font_desc_new(font), start, end);
        pango_font_description_free(font);
        // Drawn by hand, but Pango then counts the underline in the ink extents.
        if (a.underlineStyle != 0) {
            insertAttribute(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE), start,
                            end);
        }
        strokeOverhang = std::max(strokeOverhang, strokeLineWidth(a) / 2);
        runs.push_back(a);
        start = end;
    }
    pango_layout_set_text(layout, laidOut.data(), static_cast<int>(laidOut.size()));
    pango_layout_set_attributes(layout, attributes);
    pango_attr_list_unref(attributes);
}

void TextLayout::Impl::configure() {
    pango_layout_set_spacing(layout, pango_units_from_double(std::max(0.0, paragraph.lineSpacing)));
    pango_layout_set_justify(layout, paragraph.alignment == TextAlignment::Justified);

    // A single clipped line does not wrap; it runs on and is cut at the box.
    singleUnwrappedLine = numberOfLines == 1 && paragraph.lineBreakMode == LineBreakMode::Clip;
    if (maxSize.width > 0 && !singleUnwrappedLine) {
        pango_layout_set_width(layout, pango_units_from_double(maxSize.width));
        pango_layout_set_wrap(layout, paragraph.lineBreakMode == LineBreakMode::CharWrap
                                          ? PANGO_WRAP_CHAR
                                          : PANGO_WRAP_WORD_CHAR);
    }
    const PangoEllipsizeMode ellipsize = ellipsizeMode(paragraph.lineBreakMode);
    pango_layout_set_ellipsize(layout, ellipsize);
    if (ellipsize == PANGO_ELLIPSIZE_NONE) return;
    // Negative heights count lines; positive ones are a height the text must fit.
    if (numberOfLines > 0)
        pango_layout_set_height(layout, -numberOfLines);
    else if (maxSize.height > 0)
        pango_layout_set_height(layout, pango_units_from_double(maxSize.height));
    else
        pango_layout_set_height(layout, INT_MAX);
}

void TextLayout::Impl::collectLines() {
    if (runs.empty()) return;
    const size_t maxLines = numberOfLines > 0 ? static_cast<size_t>(numberOfLines) : SIZE_MAX;
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
        PangoRectangle ink, logical;
        pango_layout_line_get_extents(line, &ink, &logical);
        lines.push_back({pango_layout_line_ref(line),
                         -points(logical.x),
                         points(logical.width),
                         points(pango_layout_iter_get_baseline(it)),
                         line->resolved_dir == PANGO_DIRECTION_RTL,
                         {points(ink.x), points(ink.y), points(ink.width), points(ink.height)}});
        width = std::max(width, points(logical.width));
        bottom = lineBottom;
    } while (pango_layout_iter_next_line(it));
    pango_layout_iter_free(it);
    if (singleUnwrappedLine && maxSize.width > 0) width = std::min(width, maxSize.width);
    size = {width, bottom};
}

double TextLayout::Impl::lineX(const Rect& rect, const Line& line) const {
    // A clipped line too long for the rect shows its start, which is on the right for
    // right-to-left text.
    if (singleUnwrappedLine && line.width > rect.size.width) {
        return line.rightToLeft ? rectGetMaxX(rect) - line.width : rect.origin.x;
    }
    return rect.origin.x + (rect.size.width - line.width) *
                               alignmentFraction(paragraph.alignment, line.rightToLeft);
}

Rect TextLayout::Impl::inkBounds(const Rect& rect) const {
    Rect bounds = rectNull();
    for (const Line& line : lines) {
        bounds = rectUnion(bounds, rectOffset(line.ink, lineX(rect, line) + line.originOffset,
                                              rect.origin.y + line.baseline));
    }
    // A point more for antialiased edges.
    return rectInset(bounds, -(strokeOverhang + 1), -(strokeOverhang + 1));
}

void TextLayout::Impl::paint(cairo_t* cr, const Rect& rect, double alpha) const {
    cairo_save(cr);
    if (singleUnwrappedLine) {
        cairo_rectangle(cr, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
        cairo_clip(cr);
    }
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    for (const Line& line : lines) {
        double x = lineX(rect, line) + line.originOffset;
        const double baseline = rect.origin.y + line.baseline;
        // The runs of a line come in visual order, left to right.
        for (GSList* l = line.line->runs; l; l = l->next) {
            const auto* glyphs = static_cast<const PangoGlyphItem*>(l->data);
            const double width = points(pango_glyph_string_get_width(glyphs->glyphs));
            paintGlyphs(cr, *glyphs, {x, baseline}, width, alpha);
            x += width;
        }
    }
    cairo_new_path(cr);
    cairo_restore(cr);
}

void TextLayout::Impl::paintGlyphs(cairo_t* cr, const PangoGlyphItem& glyphs, Point origin,
                                   double width, double alpha) const {
    PangoFont* font = glyphs.item->analysis.font;
    if (!font) return;
    const TextAttributes& a = runs[std::min(runIndexOf(glyphs.item), runs.size() - 1)];
    const Color fill = a.foregroundColor.value_or(Color::black());
    if (a.strokeWidth <= 0) {
        setSource(cr, fill, alpha);
        cairo_move_to(cr, origin.x, origin.y);
        pango_cairo_show_glyph_string(cr, font, glyphs.glyphs);
    }
    if (a.strokeWidth != 0) {
        cairo_move_to(cr, origin.x, origin.y);
        pango_cairo_glyph_string_path(cr, font, glyphs.glyphs);
        setSource(cr, a.strokeColor.value_or(fill), alpha);
        cairo_set_line_width(cr, strokeLineWidth(a));
        cairo_stroke(cr);
    }
    if (a.underlineStyle != 0) {
        PangoFontMetrics* metrics = pango_font_get_metrics(font, nullptr);
        // The position is the underline's top, above the baseline (so mostly negative).
        const double top = origin.y - points(pango_font_metrics_get_underline_position(metrics));
        const double thickness = points(pango_font_metrics_get_underline_thickness(metrics));
        pango_font_metrics_unref(metrics);
        cairo_rectangle(cr, origin.x, top, width, thickness);
        setSource(cr, fill, alpha);
        cairo_fill(cr);
    }
}

TextLayout::TextLayout(std::string text, TextStyle style, Size maxSize)
    : TextLayout(attributedOf(std::move(text), style), maxSize, style.numberOfLines) {}

TextLayout::TextLayout(const AttributedString& text, Size maxSize, int numberOfLines)
    : impl_(std::make_unique<Impl>(text, maxSize, numberOfLines)) {}

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
    impl_->paint(canvas.impl().cr, rect, canvas.impl().alpha);
}

void TextLayout::draw(BitmapContext& context, const Rect& rect) const {
    if (impl_->lines.empty()) return;
    context.drawWithCairo(impl_->inkBounds(rect), [this, &rect](cairo_t* cr) {
        std::lock_guard lock(pangoMutex());
        impl_->paint(cr, rect, 1);
    });
}

Size TextLayout::measure(const std::string& text, const Font& font) {
    TextStyle style;
    style.font = font;
    return TextLayout(text, style, {}).size();
}

}  // namespace orv::gfx
