#include "frameworks/core/OrvStickerLocalPackage.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>

#include "frameworks/core/OrvBundleImage.h"
#include "frameworks/core/OrvTSLog.h"
#include "platform/rt/Bundle.h"
#include "platform/rt/NoDestructor.h"

ORV_DEFINE_CLASS(OrvStickerLocalPackage, rt::Object)

using nlohmann::json;

// The categories as read, and each sticker's entry so that stickerWithIdt can make a fresh one.
struct OrvStickerLocalPackage::Catalogue {
    std::vector<std::shared_ptr<OrvStickerCategory>> categories;
    std::map<uint64_t, std::pair<json, long>> stickers;  // idt → entry, category id
};

namespace {

struct CatalogueError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A name is a text, or texts by language ("zh-Hans", "en"), the Chinese one being the fallback.
std::string localizedName(const json& name) {
    if (name.is_string()) return name.get<std::string>();
    const std::string language = rt::Bundle::main().language();
    if (name.contains(language)) return name.at(language).get<std::string>();
    return name.at("zh-Hans").get<std::string>();
}

// "#rrggbb", or "#rrggbbaa" with an alpha byte.
gfx::Color colorFrom(const json& value) {
    const std::string hex = value.get<std::string>();
    const size_t digits = hex.size() - (hex.starts_with('#') ? 1 : 0);
    if (digits == 8) {
        const auto rgb = gfx::Color::fromHex(hex.substr(0, hex.size() - 2));
        const std::string alpha = hex.substr(hex.size() - 2);
        if (rgb && alpha.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos) {
            return rgb->withAlpha(std::stoi(alpha, nullptr, 16) / 255.0);
        }
    } else if (const auto rgb = gfx::Color::fromHex(hex)) {
        return *rgb;
    }
    throw CatalogueError("bad colour \"" + hex + "\"");
}

gfx::Size sizeFrom(const json& value) {
    if (value.size() == 2) {
        const gfx::Size size{value.at(0).get<double>(), value.at(1).get<double>()};
        if (size.width > 0 && size.height > 0) return size;
    }
    throw CatalogueError("bad size " + value.dump());
}

gfx::Rect rectFrom(const json& value) {
    if (value.size() != 4) throw CatalogueError("bad rect " + value.dump());
    return {value.at(0).get<double>(), value.at(1).get<double>(), value.at(2).get<double>(),
            value.at(3).get<double>()};
}

std::shared_ptr<OrvStickerText> textFrom(const json& entry) {
    auto text = OrvStickerText::textWithType(entry.value("type", 0));
    text->setText(entry.at("text").get<std::string>());
    text->setSize(entry.at("size").get<double>());
    text->setColor(colorFrom(entry.at("color")));
    if (entry.contains("shadowColor")) text->setShadowColor(colorFrom(entry.at("shadowColor")));
    text->setAlignment(entry.value("alignment", 1));
    if (entry.contains("rect")) text->setRect(rectFrom(entry.at("rect")));
    // Composition draws a text by its attributes, so the alignment travels in them too.
    gfx::TextAttributes style;
    style.paragraphStyle = gfx::ParagraphStyle{
        .alignment = static_cast<gfx::TextAlignment>(std::clamp(text->alignment(), 0, 4))};
    text->setTextStyleDic(style);
    return text;
}

std::shared_ptr<OrvSticker> stickerFrom(const json& entry, long categoryId) {
    const int type = entry.at("type").get<int>();
    if (type != OrvSticker::kImage && type != OrvSticker::kText) {
        throw CatalogueError("sticker " + entry.at("idt").dump() + " has type " +
                             std::to_string(type));
    }
    auto sticker = OrvSticker::stickerWithType(type);
    sticker->setIdt(entry.at("idt").get<long>());
    sticker->setCategoryId(categoryId);
    sticker->setStickerImageName(entry.at("image").get<std::string>());
    sticker->setPreviewName(entry.at("preview").get<std::string>());
    sticker->setSize(sizeFrom(entry.at("size")));
    if (type == OrvSticker::kText) {
        OrvSticker::Texts texts;
        for (const json& text : entry.at("texts")) texts.push_back(textFrom(text));
        sticker->setTexts(std::move(texts));
    }
    return sticker;
}

std::shared_ptr<OrvStickerGroup> groupFrom(const json& entry, long categoryId,
                                           std::map<uint64_t, std::pair<json, long>>& index) {
    auto group = OrvStickerGroup::group();
    group->setIdt(entry.at("idt").get<long>());
    group->setName(localizedName(entry.at("name")));
    OrvStickerGroup::Stickers stickers;
    for (const json& stickerEntry : entry.at("stickers")) {
        auto sticker = stickerFrom(stickerEntry, categoryId);
        if (sticker->idt() <= 0 || index.contains(sticker->idt())) {
            throw CatalogueError("sticker id " + std::to_string(sticker->idt()) +
                                 " is not positive or not unique");
        }
        index.emplace(sticker->idt(), std::make_pair(stickerEntry, categoryId));
        stickers.push_back(std::move(sticker));
    }
    group->setStickers(std::move(stickers));
    return group;
}

std::shared_ptr<OrvStickerCategory> categoryFrom(const json& entry,
                                                 std::map<uint64_t, std::pair<json, long>>& index) {
    auto category = OrvStickerCategory::category();
    category->setIdt(entry.at("idt").get<long>());
    category->setName(localizedName(entry.at("name")));
    OrvStickerCategory::Groups groups;
    for (const json& group : entry.at("groups")) {
        groups.push_back(groupFrom(group, category->idt(), index));
    }
    category->setDatas(std::move(groups));
    return category;
}

}  // namespace

std::shared_ptr<OrvStickerLocalPackage> OrvStickerLocalPackage::package() {
    static rt::NoDestructor<std::shared_ptr<OrvStickerLocalPackage>> instance(
        rt::make<OrvStickerLocalPackage>());
    return *instance;
}

std::shared_ptr<const OrvStickerLocalPackage::Catalogue> OrvStickerLocalPackage::catalogue() const {
    std::lock_guard lock(mutex_);
    if (catalogue_) return catalogue_;
    auto read = std::make_shared<Catalogue>();
    const auto path = rt::Bundle::main().pathForResource("catalogue", "json", kDirectory);
    if (!path) {
        OrvTSLog::error("sticker catalogue %s/%s/catalogue.json is missing",
                        rt::Bundle::main().resourcePath().c_str(), kDirectory);
    } else {
        try {
            std::ifstream file(*path);
            const json root = json::parse(file);
            for (const json& entry : root.at("categories")) {
                read->categories.push_back(categoryFrom(entry, read->stickers));
            }
        } catch (const std::exception& e) {
            // All or nothing: a half-read catalogue would show groups with holes in them.
            OrvTSLog::error("sticker catalogue %s is broken: %s", path->c_str(), e.what());
            read = std::make_shared<Catalogue>();
        }
    }
    catalogue_ = std::move(read);
    return catalogue_;
}

std::vector<std::shared_ptr<OrvStickerCategory>> OrvStickerLocalPackage::categories() const {
    return catalogue()->categories;
}

std::shared_ptr<OrvStickerCategory> OrvStickerLocalPackage::categorieWithIdt(long idt) const {
    for (const auto& category : catalogue()->categories) {
        if (category->idt() == idt) return category;
    }
    return nullptr;
}

std::shared_ptr<OrvSticker> OrvStickerLocalPackage::stickerWithIdt(uint64_t idt) const {
    const auto snapshot = catalogue();
    const auto found = snapshot->stickers.find(idt);
    if (found == snapshot->stickers.end()) return nullptr;
    // The entry was read once already, so it reads again without fault.
    return stickerFrom(found->second.first, found->second.second);
}

void OrvStickerLocalPackage::loadStickerData(const std::shared_ptr<OrvSticker>& sticker) const {
    // A sticker made at run time (id 0) carries its own picture or none; it has no file here.
    if (!sticker || sticker->idt() == 0 || sticker->image() ||
        sticker->stickerImageName().empty()) {
        return;
    }
    const std::string& name = sticker->stickerImageName();
    if (auto image = imageORVResourceNamed(kImageDirectory, name)) {
        sticker->setImage(std::move(image));
        return;
    }
    OrvTSLog::warn("sticker %ld: no readable picture %s in %s/%s", sticker->idt(), name.c_str(),
                   rt::Bundle::main().resourcePath().c_str(), kImageDirectory);
}

void OrvStickerLocalPackage::reloadForTesting() {
    std::lock_guard lock(mutex_);
    catalogue_.reset();
}
