#pragma once
// modGetSet: the only way to the per-user settings. Application "Tessuma";
// the section comes from a prefix of the key: "ScreenPos/Left" is key "Left"
// of section "ScreenPos", "Data/3" key "3" of "Data", anything else a key of
// "Options".

#include <string>

class ISettingsStore;

namespace modGetSet {

constexpr const char* kApp = "Tessuma";
constexpr const char* kKeepCaps = "KeepCaps";

// Derives the section from the key and shortens the key in place.
void RouteKey(std::string& section, std::string& key);

// Reads a value; lower-cased unless keepCaps is "KeepCaps". An empty or
// missing value is replaced by the default, which is then stored.
std::string GetData(ISettingsStore& store, std::string key, const std::string& def, const std::string& keepCaps);

void SaveData(ISettingsStore& store, std::string key, const std::string& value);

}  // namespace modGetSet
