#include "orvviews/widgets/smudge/OrvBrushBarViewBase.h"

#include <algorithm>

#include "frameworks/core/OrvBrushLocalPackage.h"
#include "frameworks/core/OrvUserDefaults.h"

ORV_DEFINE_CLASS(OrvBrushBarViewBase, ui::View, OrvBrushLocalPackageDelegate)

OrvBrushTableViewInterface* OrvBrushBarViewBase::tableInterface() const {
    return dynamic_cast<OrvBrushTableViewInterface*>(tableView().get());
}

void OrvBrushBarViewBase::setCellWidth(double width) {
    if (width <= 0) return;
    cellWidth_ = width;
    if (auto* table = tableInterface()) table->setCellWidth(width);
}

std::vector<std::shared_ptr<OrvBrush>> OrvBrushBarViewBase::buildBrushItems() {
    auto package = OrvBrushLocalPackage::package();
    std::vector<std::shared_ptr<OrvBrush>> items;
    for (const std::string& code : package->codes()) {
        if (auto brush = package->brushWithCode(code)) items.push_back(std::move(brush));
    }
    return items;
}

void OrvBrushBarViewBase::loadBrushes() {
    auto package = OrvBrushLocalPackage::package();
    std::vector<std::shared_ptr<OrvBrush>> list;
    if (brushGroup_.empty()) {
        list = buildBrushItems();
        package->appenDelegate(std::dynamic_pointer_cast<OrvBrushLocalPackageDelegate>(
            std::static_pointer_cast<rt::Object>(shared_from_this())));
    } else {
        list = package->brushWithCodes(brushGroup_);
    }
    // Brushes are fresh objects each time, so the last brush is found by its code.
    std::shared_ptr<OrvBrush> last = loadLastBrush();
    auto indexOf = [&](const std::shared_ptr<OrvBrush>& brush) -> long {
        if (!brush) return OrvBrushTableViewInterface::kNotFound;
        auto it = std::find_if(list.begin(), list.end(),
                               [&](const auto& item) { return item->code() == brush->code(); });
        return it == list.end() ? OrvBrushTableViewInterface::kNotFound : it - list.begin();
    };
    long index = indexOf(last);
    if ((index == OrvBrushTableViewInterface::kNotFound ||
         (last && last->code() == orvEraserBrushCode)) &&
        list.size() > 1) {
        index = 1;
    }
    if (index != OrvBrushTableViewInterface::kNotFound) last = list[size_t(index)];
    if (auto* table = tableInterface()) {
        table->setModeList(list);
        table->selectPostion(index, true, true);
    }
    notifySelectedBrush(last);
}

std::string OrvBrushBarViewBase::lastBrushKey() const {
    return "orv_lastbrush_" + std::to_string(action_);
}

std::shared_ptr<OrvBrush> OrvBrushBarViewBase::loadLastBrush() {
    if (!saveLastBrush_) return nullptr;
    const nlohmann::json code = orvLoadForKey(lastBrushKey());
    if (!code.is_string()) return nullptr;
    return OrvBrushLocalPackage::package()->brushWithCode(code.get<std::string>());
}

void OrvBrushBarViewBase::saveLastBrush(const std::shared_ptr<OrvBrush>& brush) {
    if (!brush || !saveLastBrush_) return;
    orvSaveKey(lastBrushKey(), brush->code());
}

void OrvBrushBarViewBase::selectBrush(const std::shared_ptr<OrvBrush>& brush) {
    if (brush) saveLastBrush(brush);
}

void OrvBrushBarViewBase::brushManager(OrvBrushLocalPackage&, const std::shared_ptr<OrvBrush>&,
                                       long status) {
    if (status == OrvBrushLocalPackage::kStatusAdded ||
        status == OrvBrushLocalPackage::kStatusChanged) {
        refreshBrushData();
    }
}

void OrvBrushBarViewBase::viewWillDestory() {
    ui::View::viewWillDestory();
    OrvBrushLocalPackage::package()->removeDelegate(this);
}
