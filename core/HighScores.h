#pragma once
// The high-score table as values. An entry is "score,name"; the table holds
// ten stored entries, three of the player's past games and one new entry
// (fourteen in all). Ranking pads every score to six digits, so that text
// order is score order, and sorts the fourteen; the first ten are shown.

#include <array>
#include <optional>
#include <string>

using HighTable = std::array<std::string, 14>;

// The stored entries of a first run.
inline constexpr const char* kDefaultHighs[3] = {"1250,bombastic", "12000,funkalicious", "4500,shikamoo"};

// Pads and sorts the table in place.
void RankHighScores(HighTable& entries);

// One row of the table as shown: the name and the score without its zeros in
// front (a score of 0 shows nothing; a score that is no number as it stands).
// Nothing for an entry without a comma in its first eight characters: its
// row stays empty.
struct HighRow {
    std::string name, score;
};
std::optional<HighRow> HighRowOf(const std::string& entry);
