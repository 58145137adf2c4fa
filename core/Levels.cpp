// Finding a level by its word.
#include "core/Levels.h"

#include "core/vb.h"

const LevelInfo* LevelOfWord(const std::string& word) {
    const std::string lower = vb::LCase(word);
    for (const LevelInfo& level : kLevels)
        if (lower == level.labelName) return &level;
    return nullptr;
}
