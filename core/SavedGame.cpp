// Reading and writing the text of a saved game.
#include "core/SavedGame.h"

#include <vector>

#include "core/vb.h"

std::optional<SavedGame> ParseSavedGame(std::string_view text) {
    const std::vector<std::string> lines = vb::SplitLines(vb::Remove(text, "|"));
    // Line 1 is the board: without 81 characters there is no game in it.
    if (lines.empty() || lines[0].size() < 81) return std::nullopt;
    SavedGame game;
    game.board = lines[0];
    if (lines.size() > 1) game.score = lines[1];
    if (lines.size() > 2) game.level = lines[2];
    if (lines.size() > 3) game.clock = vb::CLng(vb::Val(lines[3]));
    if (lines.size() > 4) game.marks = lines[4];
    return game;
}

std::string FormatSavedGame(const SavedGame& game) {
    constexpr const char* kCrLf = "\r\n";
    return game.board + kCrLf + game.score + kCrLf + game.level + kCrLf + vb::Str(game.clock) + kCrLf + game.marks +
           kCrLf;
}

std::string WithGameExtension(const std::string& path) {
    const std::string tail = path.size() > 4 ? path.substr(path.size() - 4) : path;
    return vb::LCase(tail) == ".tsm" ? path : path + ".tsm";
}
