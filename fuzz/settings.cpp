// Fuzz target: whatever the settings store holds at start-up.
//
// The input is split at line feeds into the values of every key the game
// keeps, in the order of kKeys; a key past the last line is missing. The
// text after the last key is the dialogs' profile file. The game starts,
// shows the high scores, the help pages and a file dialog, and is closed.
// After the close the options hold values the game itself writes, and a
// second start and close from that store leave them as they were.

#include <cstdio>
#include <map>
#include <string>
#include <tuple>

#include "forms/frmTessuma.h"
#include "forms/modGetSet.h"
#include "forms/modMain.h"
#include "fuzz/FuzzSupport.h"
#include "sim/World.h"

namespace {

constexpr const char* kKeys[] = {
    "Clickring",
    "Skin",
    "Sounds",
    "Volume",
    "ShowOptions",
    "LastHelpPage",
    "ScreenPos/Left",
    "ScreenPos/Top",
    "ScreenPos/Maximized",
    "Data/0",
    "Data/1",
    "Data/2",
    "Data/3",
    "Data/4",
    "Data/5",
    "Data/6",
    "Data/7",
    "Data/8",
    "Data/9",
    "Data/LastSavedName",
};
constexpr std::size_t kKeyCount = sizeof kKeys / sizeof kKeys[0];

using Store = std::map<std::tuple<std::string, std::string, std::string>, std::string>;

// One run of the game on a store: start, look around, close.
void RunOnce(World& w) {
    Program p(w.MakePorts());
    p.Main();
    fuzz::Require(p.Running && p.MainForm != nullptr, "the game starts with any settings");
    frmTessuma& f = *p.MainForm;
    f.cmdSideNav_Click(5);  // the high scores
    f.cmdSideNav_Click(5);
    f.cmdSideNav_Click(6);  // the help pages, at the page stored last
    f.cmdOK_Click();
    f.cmdSideNav_Click(1);  // the open dialog, cancelled
    f.cmdClose_Click();
    fuzz::Require(!p.Running, "the close command ends the game");
}

Store WithoutHighs(const Store& all) {
    Store kept;
    for (const auto& [key, value] : all)
        if (std::get<1>(key) != "Data") kept[key] = value;
    return kept;
}

std::string Value(World& w, const char* key) {
    std::string section, k = key;
    modGetSet::RouteKey(section, k);
    return w.settings.Get(modGetSet::kApp, section, k);
}

bool IsWholeNumber(const std::string& s, long lo, long hi) {
    if (s.empty() || s.size() > 11) return false;
    std::size_t i = s[0] == '-' ? 1 : 0;
    if (i == s.size()) return false;
    for (std::size_t j = i; j < s.size(); ++j)
        if (s[j] < '0' || s[j] > '9') return false;
    const long v = std::stol(s);
    return v >= lo && v <= hi;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using fuzz::Require;
    const std::vector<std::string> parts = fuzz::Split(fuzz::Text(data, size), '\n');

    World w;
    for (std::size_t i = 0; i < kKeyCount && i < parts.size(); ++i) modGetSet::SaveData(w.settings, kKeys[i], parts[i]);
    if (parts.size() > kKeyCount) {
        std::string profile;
        for (std::size_t i = kKeyCount; i < parts.size(); ++i) profile += parts[i] + "\n";
        w.files.Put("tessuma.ini", profile);
    }

    RunOnce(w);
    for (const char* key : {"Clickring", "Skin", "Sounds"})
        Require(Value(w, key) == "0" || Value(w, key) == "1", "a check box is stored as 0 or 1");
    Require(IsWholeNumber(Value(w, "Volume"), 0, 75), "the volume is stored as 0 to 75");
    Require(IsWholeNumber(Value(w, "LastHelpPage"), 0, 9), "the help page is stored as 0 to 9");
    for (const char* key : {"ShowOptions", "ScreenPos/Maximized"})
        Require(Value(w, key) == "True" || Value(w, key) == "False", "a flag is stored as True or False");

    // The options and the window's place the first run left are ones the
    // game can live with: a second run changes nothing in them. (The high
    // score table is left out: over scores that are no numbers, its padding
    // and sorting rules may move entries at every start, by design.)
    const Store settled = WithoutHighs(w.settings.values);
    RunOnce(w);
    const Store again = WithoutHighs(w.settings.values);
    if (again != settled) {
        for (const auto& [key, value] : again) {
            const auto it = settled.find(key);
            const std::string was = it == settled.end() ? "(missing)" : it->second;
            if (was != value)
                std::fprintf(stderr, "%s/%s: \"%s\" became \"%s\"\n", std::get<1>(key).c_str(),
                             std::get<2>(key).c_str(), was.c_str(), value.c_str());
        }
    }
    Require(again == settled, "a second start and close leave the options as they were");
    return 0;
}
