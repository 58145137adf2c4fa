#pragma once
// The four levels of the game and their puzzle banks.

#include <array>
#include <string>

struct LevelInfo {
    int index;                // level index of the menu, 0..3
    const char* menuCaption;  // entry of mnuDifficulty, with its access key
    const char* labelName;    // word shown on lblDifficulty
    const char* bankModule;   // the module that holds the level's bank
    int baseScore;            // BaseScore of a game at this level
    int clues;                // givens in an entry of the bank
    int distinctEntries;      // entries of the bank that differ from each other
};

inline constexpr int kLevelCount = 4;
inline constexpr int kBatchesPerBank = 12;    // batches numbered 1..12
inline constexpr int kEntriesPerBatch = 100;  // entries numbered 0..99
inline constexpr int kEntriesPerBank = kBatchesPerBank * kEntriesPerBatch;

// The menu word of level 0 and its label differ on purpose.
inline constexpr std::array<LevelInfo, kLevelCount> kLevels = {{
    {0, "&Easy", "beginner", "mod_P1_Easy", 25000, 30, 1200},
    {1, "&Intermediate", "intermediate", "mod_P2_Intermediate", 50000, 24, 1115},
    {2, "&Advanced", "advanced", "mod_P3_Advanced", 100000, 24, 1200},
    {3, "&Genius", "genius", "mod_P4_Genius", 200000, 24, 1197},
}};

// BaseScore of a puzzle typed in by the player, and its label.
inline constexpr int kOwnPuzzleBaseScore = 25000;
inline constexpr const char* kOwnPuzzleLabel = "unknown";

// The level whose label word is `word` (any case), or nothing.
const LevelInfo* LevelOfWord(const std::string& word);
