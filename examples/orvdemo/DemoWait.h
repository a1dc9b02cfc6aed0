#pragma once
// Waiting in a scripted session: work off the main thread takes real time while animations take
// the stepped clock's, so both go on until the condition holds.

#include <functional>

namespace orvdemo {

// Runs the main loop until `done`, for up to `seconds` of real time; false when it never held.
bool waitFor(const std::function<bool()>& done, double seconds = 120);

}  // namespace orvdemo
