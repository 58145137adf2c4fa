#pragma once
// A saved game as a value. On disk it is five lines of text, each ending
// with CR LF: the board state, the score shown, the level word, the clock in
// seconds and the 729 characters of the marks. Reading forgives missing
// lines; text whose first line is under 81 characters is no game.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct SavedGame {
    std::string board;       // at least 81 characters
    std::string score;       // the score as it was shown; "" when missing
    std::string level;       // the level word as written; "" when missing
    std::int32_t clock = 0;  // seconds, the number's value rounded
    std::string marks;       // the marks line; "" when missing
};

// A saved game is under a kilobyte; a file past this is not one and is not
// read whole.
inline constexpr std::size_t kMaxGameFileBytes = 1024 * 1024;

// The game in a file's text ("|" characters are dropped first; CR LF or a
// lone LF ends a line). Nothing when it holds no game.
std::optional<SavedGame> ParseSavedGame(std::string_view text);

std::string FormatSavedGame(const SavedGame& game);

// The name a game is written under: ".tsm" is added unless the name ends
// with it in any case.
std::string WithGameExtension(const std::string& path);
