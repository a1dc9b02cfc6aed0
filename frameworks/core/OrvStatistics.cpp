#include "frameworks/core/OrvStatistics.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <nlohmann/json.hpp>

#include "frameworks/core/OrvTSLog.h"
#include "platform/rt/UserDefaults.h"

namespace {

std::mutex& statsMutex() {
    static std::mutex m;
    return m;
}

std::map<long, long>& pending() {
    static std::map<long, long> counts;
    return counts;
}

std::string hexId(long idt) {
    char text[24];
    std::snprintf(text, sizeof text, "0x%lx", idt);
    return text;
}

// Reads the totals stored so far; a missing or unreadable file counts as none.
nlohmann::json readTotals(const std::string& path) {
    std::ifstream in(path);
    if (!in) return nlohmann::json::object();
    nlohmann::json totals = nlohmann::json::parse(in, nullptr, false);
    if (!totals.is_object()) {
        OrvTSLog::warn("statistics file %s is unreadable; starting its counts again", path.c_str());
        return nlohmann::json::object();
    }
    return totals;
}

bool writeAtomically(const std::string& path, const std::string& text) {
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ec);
    const std::string temp = path + ".tmp";
    {
        std::ofstream out(temp, std::ios::trunc);
        if (!(out << text)) return false;
    }
    std::filesystem::rename(temp, path, ec);
    return !ec;
}

}  // namespace

void OrvStatistics::appendWithComponentIdt(long idt) {
    std::lock_guard lock(statsMutex());
    ++pending()[idt];
}

std::map<long, long> OrvStatistics::pendingCounts() {
    std::lock_guard lock(statsMutex());
    return pending();
}

std::string OrvStatistics::storePath() {
    if (const char* path = std::getenv("ORV_STATISTICS_PATH"); path && *path) return path;
    const std::filesystem::path defaults = orv::rt::UserDefaults::defaultPath();
    return (defaults.parent_path() / "statistics.json").string();
}

void OrvStatistics::flushData() {
    std::lock_guard lock(statsMutex());
    if (pending().empty()) return;
    const std::string path = storePath();
    nlohmann::json totals = readTotals(path);
    for (const auto& [idt, count] : pending()) {
        const std::string key = hexId(idt);
        totals[key] = totals.value(key, 0L) + count;
    }
    if (writeAtomically(path, totals.dump(2))) {
        pending().clear();
    } else {
        OrvTSLog::warn("statistics could not be written to %s; keeping the counts", path.c_str());
    }
}

void OrvStatistics::resetForTesting() {
    std::lock_guard lock(statsMutex());
    pending().clear();
}
