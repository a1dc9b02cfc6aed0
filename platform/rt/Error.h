#pragma once
#include <map>
#include <memory>
#include <string>

#include "platform/rt/Object.h"

namespace orv::rt {

// A failure that is reported rather than raised: a domain, a code and optional details.
class Error : public Object {
    ORV_DECLARE_CLASS(Error)
public:
    static std::shared_ptr<Error> errorWithDomain(std::string domain, long code,
                                                  std::map<std::string, std::string> userInfo = {});

    const std::string& domain() const { return domain_; }
    long code() const { return code_; }
    const std::map<std::string, std::string>& userInfo() const { return userInfo_; }
    // "Error Domain=<domain> Code=<code> <userInfo>", the form the logs print.
    std::string description() const override;

private:
    std::string domain_;
    long code_ = 0;
    std::map<std::string, std::string> userInfo_;
};

}  // namespace orv::rt
