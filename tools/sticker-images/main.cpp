// Draws the local sticker package into resources/packages/stickers: emoji stickers rendered from
// the system's colour emoji font (Noto Color Emoji), text stickers drawn with our own paths, and
// the catalogue that lists them.
//
//     orv-sticker-images <resources/packages/stickers folder>
//
// Every picture is written at 1x, 2x and 3x ("name.png", "name@2x.png", "name@3x.png") for its
// size in points, and its preview once at 2x ("name_preview@2x.png").

#include <pango/pangocairo.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/codec/PngCodec.h"
#include "platform/gfx/Canvas.h"
#include "platform/gfx/CanvasImpl.h"
#include "platform/gfx/TextLayout.h"

namespace gfx = orv::gfx;
namespace fs = std::filesystem;
// Ordered, so that the catalogue lists each entry's id and name before its contents.
using json = nlohmann::ordered_json;

namespace {

constexpr double kEmojiSide = 80;    // points
constexpr double kPreviewSide = 32;  // points, written at 2x
constexpr double kEmojiFill = 0.92;  // of the side the emoji's ink may take

// Draws a sticker of that size in points from the canvas's origin.
using Draw = std::function<void(gfx::Canvas&, gfx::Size)>;

struct TextSpec {
    std::string text;
    double size;
    std::string color;
    std::string shadowColor;
    gfx::Rect rect;  // fractions of the sticker
};

struct StickerSpec {
    std::string name;
    gfx::Size size;
    Draw draw;
    std::vector<TextSpec> texts;  // a text sticker when not empty
};

struct GroupSpec {
    long idt;
    json name;
    std::vector<StickerSpec> stickers;
};

struct CategorySpec {
    long idt;
    json name;
    std::vector<GroupSpec> groups;
};

bool write(const gfx::Canvas& canvas, const fs::path& path) {
    const bool ok = orv::codec::PngCodec::writeFile(*canvas.snapshot(), path.string());
    std::printf("%s %s\n", ok ? "wrote" : "FAILED", path.c_str());
    return ok;
}

std::string scaledName(const std::string& name, int scale) {
    return scale == 1 ? name + ".png" : name + "@" + std::to_string(scale) + "x.png";
}

constexpr const char* kEmojiFamily = "Noto Color Emoji";

// Without the font, fontconfig would quietly draw the emoji in some other font.
bool emojiFontInstalled() {
    PangoFontFamily** families = nullptr;
    int count = 0;
    pango_font_map_list_families(pango_cairo_font_map_get_default(), &families, &count);
    bool found = false;
    for (int i = 0; i < count; ++i) {
        found |= std::string(pango_font_family_get_name(families[i])) == kEmojiFamily;
    }
    g_free(families);
    return found;
}

// The emoji scaled so that its ink fills a square of that side, centred on it. Pango's cairo
// renderer draws the font's colour bitmaps in colour.
void drawEmoji(gfx::Canvas& canvas, double side, const std::string& emoji) {
    cairo_t* cr = canvas.impl().cr;
    PangoLayout* layout = pango_cairo_create_layout(cr);
    pango_cairo_context_set_resolution(pango_layout_get_context(layout), 72);
    pango_layout_set_text(layout, emoji.c_str(), -1);
    const auto inkAt = [&](double size) {
        PangoFontDescription* font = pango_font_description_from_string(kEmojiFamily);
        pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
        pango_layout_set_font_description(layout, font);
        pango_font_description_free(font);
        PangoRectangle ink;
        pango_layout_get_extents(layout, &ink, nullptr);
        return gfx::Rect{ink.x / double(PANGO_SCALE), ink.y / double(PANGO_SCALE),
                         ink.width / double(PANGO_SCALE), ink.height / double(PANGO_SCALE)};
    };
    const gfx::Rect reference = inkAt(100);
    const double size =
        100 * side * kEmojiFill / std::max(reference.size.width, reference.size.height);
    const gfx::Rect ink = inkAt(size);
    cairo_move_to(cr, (side - ink.size.width) / 2 - ink.origin.x,
                  (side - ink.size.height) / 2 - ink.origin.y);
    pango_cairo_show_layout(cr, layout);
    g_object_unref(layout);
}

StickerSpec emoji(const std::string& name, const std::string& character) {
    return {name,
            {kEmojiSide, kEmojiSide},
            [character](gfx::Canvas& c, gfx::Size s) { drawEmoji(c, s.width, character); },
            {}};
}

// A round speech bubble with its tail at the lower left; the text goes in the body.
void drawRoundBubble(gfx::Canvas& canvas, gfx::Size s) {
    const gfx::Rect body{6, 6, s.width - 12, s.height * 0.72};
    gfx::Path path;
    path.addRoundedRect(body, body.size.height / 2);
    gfx::Path tail;
    tail.moveTo({s.width * 0.22, body.origin.y + body.size.height - 8});
    tail.lineTo({s.width * 0.14, s.height - 6});
    tail.lineTo({s.width * 0.42, body.origin.y + body.size.height - 4});
    tail.close();
    gfx::StrokeStyle stroke;
    stroke.width = 3;
    stroke.join = gfx::LineJoin::Round;
    const gfx::Color ink = gfx::Color::rgb(0.2, 0.2, 0.2);
    canvas.strokePath(tail, ink, stroke);
    canvas.strokePath(path, ink, stroke);
    canvas.fillPath(tail, gfx::Color::whiteColor());
    canvas.fillPath(path, gfx::Color::whiteColor());
}

// A warm banner with a light inner edge, for a short word in white.
void drawTagLabel(gfx::Canvas& canvas, gfx::Size s) {
    const gfx::Rect outer{4, 4, s.width - 8, s.height - 8};
    canvas.fillPath(gfx::Path::roundedRect(outer, 14), gfx::Color::rgb(0.93, 0.42, 0.18));
    gfx::StrokeStyle stroke;
    stroke.width = 2;
    const gfx::Rect inner{9, 9, s.width - 18, s.height - 18};
    canvas.strokePath(gfx::Path::roundedRect(inner, 10), gfx::Color::white(1, 0.75), stroke);
}

std::vector<CategorySpec> catalogue() {
    const auto names = [](const char* zh, const char* en) {
        return json{{"zh-Hans", zh}, {"en", en}};
    };
    return {
        {1,
         names("表情", "Faces"),
         {{101,
           names("笑脸", "Smileys"),
           {emoji("sticker_face_grin", "\U0001F600"), emoji("sticker_face_joy", "\U0001F602"),
            emoji("sticker_face_heart_eyes", "\U0001F60D"),
            emoji("sticker_face_sunglasses", "\U0001F60E"),
            emoji("sticker_face_thinking", "\U0001F914"), emoji("sticker_face_sob", "\U0001F62D"),
            emoji("sticker_face_angry", "\U0001F621"), emoji("sticker_face_party", "\U0001F973")}},
          {102,
           names("对话", "Bubbles"),
           {{"sticker_bubble_round",
             {150, 110},
             drawRoundBubble,
             {{"你好", 26, "#333333", "#ffffff00", {0.1, 0.12, 0.8, 0.5}}}},
            {"sticker_label_tag",
             {170, 70},
             drawTagLabel,
             {{"Hello", 28, "#ffffff", "#00000080", {0.1, 0.15, 0.8, 0.7}}}}}}}},
        {2,
         names("动物", "Animals"),
         {{201,
           names("萌宠", "Pets and friends"),
           {emoji("sticker_animal_dog", "\U0001F436"), emoji("sticker_animal_cat", "\U0001F431"),
            emoji("sticker_animal_panda", "\U0001F43C"), emoji("sticker_animal_fox", "\U0001F98A"),
            emoji("sticker_animal_rabbit", "\U0001F430"),
            emoji("sticker_animal_penguin", "\U0001F427"),
            emoji("sticker_animal_frog", "\U0001F438"),
            emoji("sticker_animal_unicorn", "\U0001F984")}}}},
        {3,
         names("美食", "Food and things"),
         {{301,
           names("美味", "Treats"),
           {emoji("sticker_food_pizza", "\U0001F355"), emoji("sticker_food_doughnut", "\U0001F369"),
            emoji("sticker_food_watermelon", "\U0001F349"),
            emoji("sticker_food_ice_cream", "\U0001F366"), emoji("sticker_food_cake", "\U0001F382"),
            emoji("sticker_food_coffee", "\u2615")}},
          {302,
           names("派对", "Party"),
           {emoji("sticker_thing_balloon", "\U0001F388"), emoji("sticker_thing_star", "\u2B50"),
            emoji("sticker_thing_heart", "\u2764\uFE0F")}}}},
    };
}

// The default texts on a preview, centred in their rects as the sticker item places its labels,
// so that a text sticker's thumbnail shows what it says.
void drawTexts(gfx::Canvas& canvas, const StickerSpec& sticker) {
    for (const TextSpec& text : sticker.texts) {
        const gfx::Rect box{
            text.rect.origin.x * sticker.size.width, text.rect.origin.y * sticker.size.height,
            text.rect.size.width * sticker.size.width, text.rect.size.height * sticker.size.height};
        gfx::TextStyle style;
        style.font = gfx::Font::systemFont(text.size);
        style.color = gfx::Color::fromHex(text.color).value_or(gfx::Color::black());
        style.alignment = gfx::TextAlignment::Center;
        style.numberOfLines = 1;
        const gfx::TextLayout layout(text.text, style, box.size);
        const double top = box.origin.y + (box.size.height - layout.size().height) / 2;
        layout.draw(canvas, {box.origin.x, top, box.size.width, layout.size().height});
    }
}

bool drawSticker(const fs::path& imageDir, const StickerSpec& sticker) {
    bool ok = true;
    for (int scale : {1, 2, 3}) {
        gfx::Canvas canvas(sticker.size, scale);
        sticker.draw(canvas, sticker.size);
        ok &= write(canvas, imageDir / scaledName(sticker.name, scale));
    }
    // The preview: the picture fitted into a square, so that grid cells line up.
    const double fit = kPreviewSide / std::max(sticker.size.width, sticker.size.height);
    gfx::Canvas preview({kPreviewSide, kPreviewSide}, 2);
    const gfx::Size drawn{sticker.size.width * fit, sticker.size.height * fit};
    preview.translate((kPreviewSide - drawn.width) / 2, (kPreviewSide - drawn.height) / 2);
    preview.concat(gfx::AffineTransform::scale(fit, fit));
    sticker.draw(preview, sticker.size);
    drawTexts(preview, sticker);
    ok &= write(preview, imageDir / scaledName(sticker.name + "_preview", 2));
    return ok;
}

json stickerEntry(long idt, const StickerSpec& sticker) {
    json entry{{"idt", idt},
               {"type", sticker.texts.empty() ? 1 : 2},
               {"image", sticker.name},
               {"preview", sticker.name + "_preview"},
               {"size", {sticker.size.width, sticker.size.height}}};
    for (const TextSpec& text : sticker.texts) {
        const gfx::Rect& r = text.rect;
        entry["texts"].push_back({{"text", text.text},
                                  {"size", text.size},
                                  {"color", text.color},
                                  {"shadowColor", text.shadowColor},
                                  {"alignment", 1},
                                  {"rect", {r.origin.x, r.origin.y, r.size.width, r.size.height}}});
    }
    return entry;
}

// The catalogue with one line a sticker, which keeps it short enough to read through.
std::string catalogueText(const json& categories) {
    std::string text = "{\n  \"categories\": [\n";
    for (size_t c = 0; c < categories.size(); ++c) {
        const json& category = categories[c];
        text += "    {\"idt\": " + category["idt"].dump() +
                ", \"name\": " + category["name"].dump() + ", \"groups\": [\n";
        for (size_t g = 0; g < category["groups"].size(); ++g) {
            const json& group = category["groups"][g];
            text += "      {\"idt\": " + group["idt"].dump() +
                    ", \"name\": " + group["name"].dump() + ", \"stickers\": [\n";
            for (size_t s = 0; s < group["stickers"].size(); ++s) {
                text += "        " + group["stickers"][s].dump();
                text += s + 1 < group["stickers"].size() ? ",\n" : "\n";
            }
            text += g + 1 < category["groups"].size() ? "      ]},\n" : "      ]}\n";
        }
        text += c + 1 < categories.size() ? "    ]},\n" : "    ]}\n";
    }
    return text + "  ]\n}\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <resources/packages/stickers folder>\n", argv[0]);
        return 2;
    }
    if (!emojiFontInstalled()) {
        std::fprintf(stderr, "the %s font is missing (Debian: fonts-noto-color-emoji)\n",
                     kEmojiFamily);
        return 1;
    }
    const fs::path dir = argv[1];
    const fs::path imageDir = dir / "images";
    fs::create_directories(imageDir);
    bool ok = true;
    json categories = json::array();
    for (const CategorySpec& category : catalogue()) {
        json groups = json::array();
        for (const GroupSpec& group : category.groups) {
            json stickers = json::array();
            long idt = group.idt * 100;
            for (const StickerSpec& sticker : group.stickers) {
                ok &= drawSticker(imageDir, sticker);
                stickers.push_back(stickerEntry(++idt, sticker));
            }
            groups.push_back({{"idt", group.idt}, {"name", group.name}, {"stickers", stickers}});
        }
        categories.push_back({{"idt", category.idt}, {"name", category.name}, {"groups", groups}});
    }
    std::FILE* file = std::fopen((dir / "catalogue.json").c_str(), "w");
    ok &= file != nullptr;
    if (file) {
        const std::string text = catalogueText(categories);
        ok &= std::fwrite(text.data(), 1, text.size(), file) == text.size();
        ok &= std::fclose(file) == 0;
    }
    std::printf("%s %s\n", ok ? "wrote" : "FAILED", (dir / "catalogue.json").c_str());
    return ok ? 0 : 1;
}
