#include "frameworks/strand/kernels/LookCatalogue.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "frameworks/strand/kernels/CurveLook.h"
#include "platform/rt/Bundle.h"
#include "platform/rt/Log.h"

namespace orv::strand {

using nlohmann::json;

namespace {

constexpr const char* kDirectory = "packages/filters";

// A name in English and Chinese: {"en": ..., "zh-Hans": ...}.
std::pair<std::string, std::string> names(const json& name, const std::string& what) {
    if (!name.is_object() || !name.contains("en") || !name.contains("zh-Hans") ||
        !name["en"].is_string() || !name["zh-Hans"].is_string()) {
        throw std::runtime_error(what + " needs a name with \"en\" and \"zh-Hans\"");
    }
    return {name["en"].get<std::string>(), name["zh-Hans"].get<std::string>()};
}

std::vector<LookCatalogue::Entry> entriesFrom(const json& catalogue) {
    if (!catalogue.is_object() || !catalogue.contains("groups") ||
        !catalogue["groups"].is_array()) {
        throw std::runtime_error("no \"groups\" list");
    }
    std::vector<LookCatalogue::Entry> entries;
    std::set<std::string> codes;
    for (const json& group : catalogue["groups"]) {
        const auto [groupName, localGroup] = names(group.value("name", json()), "a group");
        if (!group.contains("looks") || !group["looks"].is_array()) {
            throw std::runtime_error("group " + groupName + " has no \"looks\" list");
        }
        for (const json& look : group["looks"]) {
            const std::string code = look.value("code", "");
            if (code.empty()) throw std::runtime_error("a look of " + groupName + " has no code");
            if (!codes.insert(code).second)
                throw std::runtime_error("code " + code + " is used twice");
            const auto [name, localName] = names(look.value("name", json()), "look " + code);
            try {
                auto made = std::make_shared<const CurveLook>(
                    CurveLook::recipeFrom(look.value("recipe", json::object())));
                entries.push_back({code, name, localName, groupName, localGroup, std::move(made)});
            } catch (const std::exception& e) {
                throw std::runtime_error("look " + code + ": " + e.what());
            }
        }
    }
    return entries;
}

}  // namespace

std::shared_ptr<const LookCatalogue> LookCatalogue::shared() {
    static const std::shared_ptr<const LookCatalogue> catalogue = [] {
        const rt::Bundle& bundle = rt::Bundle::main();
        if (const auto path = bundle.pathForResource("catalogue", "json", kDirectory)) {
            return fromFile(*path);
        }
        rt::Log::errorf("look catalogue %s/%s/catalogue.json is missing; no looks",
                        bundle.resourcePath().c_str(), kDirectory);
        return std::make_shared<const LookCatalogue>();
    }();
    return catalogue;
}

std::shared_ptr<const LookCatalogue> LookCatalogue::fromFile(const std::string& path) {
    auto catalogue = std::make_shared<LookCatalogue>();
    std::ifstream file(path);
    if (!file) {
        rt::Log::errorf("look catalogue %s cannot be read; no looks", path.c_str());
        return catalogue;
    }
    try {
        // All or nothing: a catalogue with holes would be hard to notice.
        catalogue->entries_ = entriesFrom(json::parse(file));
    } catch (const std::exception& e) {
        rt::Log::errorf("look catalogue %s is broken: %s; no looks", path.c_str(), e.what());
    }
    return catalogue;
}

const LookCatalogue::Entry* LookCatalogue::entryWithCode(const std::string& code) const {
    for (const Entry& entry : entries_) {
        if (entry.code == code) return &entry;
    }
    return nullptr;
}

}  // namespace orv::strand
