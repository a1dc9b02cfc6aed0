#pragma once
// The place of a row in a table: its section, then its row. A value, ordered section first;
// where the platform passes nil, code uses std::optional<IndexPath>.

#include <compare>
#include <cstddef>
#include <functional>
#include <iosfwd>

namespace orv::ui {

struct IndexPath {
    long section = 0;
    long row = 0;

    static IndexPath forRow(long row, long section) { return {section, row}; }

    auto operator<=>(const IndexPath&) const = default;
};

// "[section, row]", for logs and test failures.
std::ostream& operator<<(std::ostream& out, const IndexPath& path);

}  // namespace orv::ui

template <>
struct std::hash<orv::ui::IndexPath> {
    size_t operator()(const orv::ui::IndexPath& path) const noexcept {
        const size_t h = std::hash<long>{}(path.section);
        return h ^ (std::hash<long>{}(path.row) + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2));
    }
};
