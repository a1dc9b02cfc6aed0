#pragma once
// The catalogue of look filters: each a code, a name, a group and its recipe as data (tone
// curves, a colour matrix, a colour look-up table made from them, split toning, grain,
// vignette), read from resources/packages/filters/catalogue.json. A missing or broken
// catalogue is logged and gives no looks; the tool filters work without it.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frameworks/strand/kernels/FilterSettings.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class Look;

class LookCatalogue {
  public:
    struct Entry {
        std::string code;
        std::string name;        // English
        std::string localName;   // Chinese
        std::string group;       // English
        std::string localGroup;  // Chinese
        std::shared_ptr<const Look> look;
    };

    // The process's catalogue from the main bundle's resources, read at first use.
    static std::shared_ptr<const LookCatalogue> shared();
    // A catalogue from a file; empty (logged) when it cannot be read.
    static std::shared_ptr<const LookCatalogue> fromFile(const std::string& path);

    const std::vector<Entry>& entries() const { return entries_; }
    const Entry* entryWithCode(const std::string& code) const;

  private:
    std::vector<Entry> entries_;
};

// One look: its recipe, its published parameters with their defaults, and the filter.
class Look {
  public:
    virtual ~Look() = default;
    // The parameters it publishes ("strength" and any others), with their defaults.
    virtual LookSettings defaults() const = 0;
    virtual gfx::BitmapPtr apply(const gfx::Bitmap& src, const LookSettings& settings) const = 0;
};

}  // namespace orv::strand
