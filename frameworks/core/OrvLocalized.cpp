#include "frameworks/core/OrvLocalized.h"

#include "platform/rt/Bundle.h"

std::string orvLocalized(const char* key, const char* value) {
    return orv::rt::Bundle::main().localizedStringForKey(key, value, "OrvKit");
}
