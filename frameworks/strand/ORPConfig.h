#pragma once
// String settings of a pipe filter; the image filter reads its name (which filter it is) here.

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class ORPConfig : public rt::Object {
    ORV_DECLARE_CLASS(ORPConfig)
  public:
    void setString(const std::string& value, const std::string& key) { strings_[key] = value; }
    std::optional<std::string> stringForKey(const std::string& key) const;

  private:
    std::map<std::string, std::string> strings_;
};
