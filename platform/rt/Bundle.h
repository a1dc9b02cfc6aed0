#pragma once
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/rt/Object.h"

namespace orv::rt {

// The application's resources: a folder of files, and string tables by language at
// strings/<language>/<table>.json (JSON objects of key → text). The language is "en" for
// English locales; any other locale keeps the built-in Chinese texts the code passes as
// defaults, overridden by a "zh-Hans" table where one exists. Tables load once, thread-safe.
class Bundle : public Object {
    ORV_DECLARE_CLASS(Bundle)
  public:
    // Resources from $ORV_RESOURCES, else the source tree's resources folder.
    static Bundle& main();
    // A bundle over another folder (tests, plug-in packages).
    static std::shared_ptr<Bundle> withResourcePath(std::string resourcePath);
    // "en" when $ORV_LOCALE, else $LC_ALL, $LC_MESSAGES, $LANG (the first one set) starts with
    // "en"; "zh-Hans" otherwise.
    static std::string languageFromEnvironment();

    std::string resourcePath() const;
    std::string language() const;

    // The file <resourcePath>/<directory>/<name>.<type> when it exists; `type` may be empty
    // (then `name` is the whole file name) and may start with a dot.
    std::optional<std::string> pathForResource(const std::string& name, const std::string& type,
                                               const std::string& directory = {}) const;

    // The table's text for `key` in the current language. A missing key, table or unreadable
    // table gives `value`, and the key itself when `value` is empty too.
    std::string localizedStringForKey(const std::string& key, const std::string& value,
                                      const std::string& table = "OrvKit") const;

    // Reads the language (and for the main bundle, the resource folder) from the environment
    // again and forgets the loaded tables.
    void reloadForTesting();

  private:
    using Table = std::map<std::string, std::string>;
    const Table& tableNamed(const std::string& table) const;  // with mutex_ held
    Table loadTable(const std::string& table) const;          // with mutex_ held

    mutable std::mutex mutex_;
    std::string resourcePath_;
    std::string language_;
    bool followsEnvironment_ = false;
    mutable std::map<std::string, Table> tables_;
};

}  // namespace orv::rt
