#pragma once
// Which empty cell a hint fills, and the search for a doubled digit in a
// typed puzzle.

#include <array>
#include <optional>
#include <string>

// The place in the list of empty cells that a hint fills for a draw r, or -1
// when no cell is empty. The multiplier is the last place and not the count,
// so the last empty cell is never picked while another is left. A draw out
// of [0, 1) counts as 0.
int HintPick(double r, int emptyCells);

// The first digit that stands twice in a unit of the typed board: rows before
// columns before boxes, within a unit the lowest digit. `unit` is how the
// game names it ("third column").
struct Duplicate {
    std::string digit, unit;
};
std::optional<Duplicate> FindDuplicate(const std::array<std::string, 81>& cellTexts);
