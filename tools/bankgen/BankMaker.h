#pragma once
// Makes the four puzzle banks of the game from fixed seeds and writes them as
// the C++ modules core/banks/mod_P1_Easy.cpp .. mod_P4_Genius.cpp.

#include <array>
#include <iosfwd>
#include <string>

#include "core/Levels.h"
#include "tools/bankgen/Rater.h"

namespace bankgen {

// Slot of an entry inside a bank: (batch - 1) * 100 + entry.
constexpr int SlotOf(int batch, int entry) { return (batch - 1) * kEntriesPerBatch + entry; }

using Bank = std::array<std::string, kEntriesPerBank>;
using BankSet = std::array<Bank, kLevelCount>;

// Entries that stand in the banks exactly as written here.
extern const char* const kEasyFirstEntry;   // mod_P1_Easy batch 1 entry 0
extern const char* const kEasyEnteredNine;  // mod_P1_Easy batch 8 entry 75, with its 'R'
extern const char* const kGeniusLastEntry;  // mod_P4_Genius batch 12 entry 99

struct MakeReport {
    long attempts30 = 0;  // grids carved towards 30 clues
    long attempts24 = 0;  // grids carved towards 24 clues
    // Generated entries of each level by hardest technique.
    std::array<std::array<int, kTechniqueCount>, kLevelCount> byTechnique{};
};

// Makes all four banks. Deterministic: the same code gives the same banks.
// Progress lines go to `log` when it is not null.
BankSet MakeBanks(MakeReport* report = nullptr, std::ostream* log = nullptr);

// The complete source text of the module of one level.
std::string ModuleSource(int level, const Bank& bank);

// File name of a level's module, e.g. "mod_P1_Easy.cpp".
std::string ModuleFileName(int level);

}  // namespace bankgen
