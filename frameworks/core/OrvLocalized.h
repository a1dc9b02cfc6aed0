#pragma once
// The library's user-visible texts: looked up in the main bundle's "OrvKit" table by key, with
// the built-in text as the fallback for a missing key.

#include <string>

std::string orvLocalized(const char* key, const char* value);
