#include "platform/rt/Error.h"

namespace orv::rt {

ORV_DEFINE_CLASS(Error, Object)

std::shared_ptr<Error> Error::errorWithDomain(std::string domain, long code,
                                              std::map<std::string, std::string> userInfo) {
    auto error = make<Error>();
    error->domain_ = std::move(domain);
    error->code_ = code;
    error->userInfo_ = std::move(userInfo);
    return error;
}

std::string Error::description() const {
    std::string text = "Error Domain=" + domain_ + " Code=" + std::to_string(code_);
    if (userInfo_.empty()) return text + " \"(null)\"";
    text += " UserInfo={";
    bool first = true;
    for (const auto& [key, value] : userInfo_) {
        if (!first) text += ", ";
        text += key + "=" + value;
        first = false;
    }
    return text + "}";
}

}  // namespace orv::rt
