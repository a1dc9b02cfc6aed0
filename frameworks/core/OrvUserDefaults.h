#pragma once
// Persistence of a user's choices (last filter, filter history, last brush) in the user defaults.

#include <string>

#include <nlohmann/json.hpp>

// Stores the value under the key; a null value removes the key.
void orvSaveKey(const std::string& key, const nlohmann::json& value);
// The stored value, or null when there is none.
nlohmann::json orvLoadForKey(const std::string& key);
