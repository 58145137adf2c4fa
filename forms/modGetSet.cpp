// modGetSet: where each setting is stored, and how it is read back.
#include "forms/modGetSet.h"

#include "core/vb.h"
#include "forms/Ports.h"

namespace modGetSet {

void RouteKey(std::string& section, std::string& key) {
    if (key.compare(0, 10, "ScreenPos/") == 0 && key.size() >= 10) {
        section = "ScreenPos";
        key = key.substr(10);
    } else if (key.compare(0, 5, "Data/") == 0 && key.size() >= 5) {
        section = "Data";
        key = key.substr(5);
    } else {
        section = "Options";
    }
}

std::string GetData(ISettingsStore& store, std::string key, const std::string& def, const std::string& keepCaps) {
    std::string section;
    RouteKey(section, key);
    const bool keep = keepCaps == kKeepCaps;
    std::string value = store.Get(kApp, section, key);
    if (!keep) value = vb::LCase(value);
    if (value.empty()) {
        if (!def.empty()) store.Save(kApp, section, key, def);
        value = keep ? def : vb::LCase(def);
    }
    return value;
}

void SaveData(ISettingsStore& store, std::string key, const std::string& value) {
    std::string section;
    RouteKey(section, key);
    store.Save(kApp, section, key, value);
}

}  // namespace modGetSet
