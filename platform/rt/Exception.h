#pragma once
#include <stdexcept>
#include <string>

namespace orv::rt {

// An integrator's programming error. Raised with a reason text and never caught by the system.
class Exception : public std::runtime_error {
public:
    explicit Exception(const std::string& reason) : std::runtime_error(reason) {}
    std::string reason() const { return what(); }
};

}  // namespace orv::rt
