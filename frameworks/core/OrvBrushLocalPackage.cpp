#include "frameworks/core/OrvBrushLocalPackage.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <utility>

#include "frameworks/core/OrvBundleImage.h"
#include "frameworks/core/OrvTSLog.h"
#include "platform/rt/Bundle.h"
#include "platform/rt/NoDestructor.h"
#include "platform/ui/ImageView.h"

ORV_DEFINE_CLASS(OrvBrushLocalPackage, rt::Object)

using nlohmann::json;

namespace {

// Each brush's entry in catalogue order, so that brushWithCode can make a fresh one.
using Entries = std::vector<std::pair<std::string, json>>;  // code → entry

struct CatalogueError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A name is a text, or texts by language with the Chinese one as the fallback; none is empty.
std::string brushName(const json& entry) {
    if (!entry.contains("name")) return {};
    const json& name = entry.at("name");
    if (name.is_string()) return name.get<std::string>();
    const std::string language = rt::Bundle::main().language();
    return name.at(name.contains(language) ? language : "zh-Hans").get<std::string>();
}

std::shared_ptr<OrvBrush> brushFrom(const json& entry) {
    const long type = entry.at("brushType").get<long>();
    if (type < OrvBrush::kEraser || type > OrvBrush::kOnline) {
        throw CatalogueError("brush " + entry.at("code").dump() + " has type " +
                             std::to_string(type));
    }
    auto brush = OrvBrush::brushWithType(type);
    brush->setCode(entry.at("code").get<std::string>());
    brush->setName(brushName(entry));
    brush->setRotateType(entry.value("rotateType", 0L));
    brush->setPositionType(entry.value("positionType", 0L));
    brush->setSizeType(entry.value("sizeType", 0L));
    // The store's entry is a button, with a thumbnail but no shape.
    brush->setImageName(entry.value("image", ""));
    brush->setThumbName(entry.at("thumb").get<std::string>());
    return brush;
}

// Fills `brushes` and answers the default brush's code.
std::string readInto(Entries& brushes, const json& root) {
    std::set<std::string> seen;
    for (const json& entry : root.at("brushes")) {
        const auto brush = brushFrom(entry);
        if (brush->code().empty() || !seen.insert(brush->code()).second) {
            throw CatalogueError("brush code \"" + brush->code() + "\" is empty or not unique");
        }
        brushes.emplace_back(brush->code(), entry);
    }
    std::string defaultCode = root.at("default").get<std::string>();
    if (!seen.contains(defaultCode)) {
        throw CatalogueError("default brush \"" + defaultCode + "\" is not listed");
    }
    return defaultCode;
}

}  // namespace

struct OrvBrushLocalPackage::Catalogue {
    Entries brushes;
    std::string defaultCode;
};

std::shared_ptr<OrvBrushLocalPackage> OrvBrushLocalPackage::package() {
    static rt::NoDestructor<std::shared_ptr<OrvBrushLocalPackage>> instance(
        rt::make<OrvBrushLocalPackage>());
    return *instance;
}

std::shared_ptr<const OrvBrushLocalPackage::Catalogue> OrvBrushLocalPackage::catalogue() const {
    std::lock_guard lock(mutex_);
    if (catalogue_) return catalogue_;
    auto read = std::make_shared<Catalogue>();
    const auto path = rt::Bundle::main().pathForResource("catalogue", "json", kDirectory);
    if (!path) {
        OrvTSLog::error("brush catalogue %s/%s/catalogue.json is missing",
                        rt::Bundle::main().resourcePath().c_str(), kDirectory);
    } else {
        try {
            std::ifstream file(*path);
            read->defaultCode = readInto(read->brushes, json::parse(file));
        } catch (const std::exception& e) {
            // All or nothing: a bar with some brushes missing would look like a fault of the bar.
            OrvTSLog::error("brush catalogue %s is broken: %s", path->c_str(), e.what());
            read = std::make_shared<Catalogue>();
        }
    }
    catalogue_ = std::move(read);
    return catalogue_;
}

std::vector<std::string> OrvBrushLocalPackage::codes() const {
    std::vector<std::string> codes;
    for (const auto& [code, entry] : catalogue()->brushes) codes.push_back(code);
    return codes;
}

std::shared_ptr<OrvBrush> OrvBrushLocalPackage::brushWithCode(
    const std::optional<std::string>& code) const {
    const auto snapshot = catalogue();
    const std::string& wanted = code.value_or(snapshot->defaultCode);
    for (const auto& [listed, entry] : snapshot->brushes) {
        // The entry was read once already, so it reads again without fault.
        if (listed == wanted) return brushFrom(entry);
    }
    return nullptr;
}

std::vector<std::shared_ptr<OrvBrush>> OrvBrushLocalPackage::brushWithCodes(
    const std::vector<std::string>& codes) const {
    std::vector<std::shared_ptr<OrvBrush>> brushes;
    for (const std::string& code : codes) {
        if (auto brush = brushWithCode(code)) brushes.push_back(std::move(brush));
    }
    return brushes;
}

bool OrvBrushLocalPackage::loadBrushData(const std::shared_ptr<OrvBrush>& brush) const {
    if (!brush) return false;
    if (brush->image()) return true;
    const std::string& name = brush->imageName();
    if (name.empty()) {
        OrvTSLog::warn("brush \"%s\" has no picture to load", brush->code().c_str());
        return false;
    }
    if (auto image = imageORVResourceNamed(kImageDirectory, name); image && image->bitmap()) {
        // Stamping measures brushes in pixels, so the picture is kept at scale 1 whichever
        // resolution the screen chose.
        brush->setImage(gfx::Image::withBitmap(image->bitmap(), 1));
        return true;
    }
    OrvTSLog::warn("brush \"%s\": no readable picture %s in %s/%s", brush->code().c_str(),
                   name.c_str(), rt::Bundle::main().resourcePath().c_str(), kImageDirectory);
    return false;
}

void OrvBrushLocalPackage::loadThumbWithBrush(const std::shared_ptr<OrvBrush>& brush,
                                              const std::shared_ptr<ui::ImageView>& imageView) {
    if (!imageView) return;
    // A reused cell must not keep the previous brush's thumbnail, so a failure clears it.
    gfx::ImagePtr thumb;
    if (brush && !brush->thumbName().empty()) {
        thumb = imageORVResourceNamed(kImageDirectory, brush->thumbName());
        if (!thumb) {
            OrvTSLog::warn("brush \"%s\": no readable thumbnail %s", brush->code().c_str(),
                           brush->thumbName().c_str());
        }
    }
    imageView->setImage(std::move(thumb));
}

void OrvBrushLocalPackage::cancelLoadImage(const std::shared_ptr<ui::ImageView>&) {}

void OrvBrushLocalPackage::appenDelegate(std::weak_ptr<OrvBrushLocalPackageDelegate> delegate) {
    std::lock_guard lock(delegatesMutex_);
    const auto added = delegate.lock();
    if (!added) return;
    const bool listed = std::any_of(delegates_.begin(), delegates_.end(),
                                    [&](const auto& d) { return d.lock() == added; });
    if (!listed) delegates_.push_back(std::move(delegate));
}

void OrvBrushLocalPackage::removeDelegate(const OrvBrushLocalPackageDelegate* delegate) {
    std::lock_guard lock(delegatesMutex_);
    // Gone delegates leave with it, so the list does not grow with bars long closed.
    std::erase_if(delegates_, [&](const auto& d) {
        const auto alive = d.lock();
        return !alive || alive.get() == delegate;
    });
}

void OrvBrushLocalPackage::notifyDelegates(long status) {
    std::vector<std::shared_ptr<OrvBrushLocalPackageDelegate>> alive;
    {
        std::lock_guard lock(delegatesMutex_);
        for (const auto& d : delegates_) {
            if (auto strong = d.lock()) alive.push_back(std::move(strong));
        }
    }
    // Called unlocked, so that a delegate may remove itself while it is told.
    for (const auto& delegate : alive) delegate->brushManager(*this, nullptr, status);
}

void OrvBrushLocalPackage::reloadForTesting() {
    {
        std::lock_guard lock(mutex_);
        catalogue_.reset();
    }
    notifyDelegates(kStatusChanged);
}
