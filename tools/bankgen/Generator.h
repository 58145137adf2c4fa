#pragma once
// Complete grids and puzzles with a single solution, from the generator's own
// random numbers.

#include <optional>

#include "tools/bankgen/Grid.h"
#include "tools/bankgen/Random64.h"

namespace bankgen {

// A complete, valid grid drawn at random.
Grid RandomSolution(Random64& rng);

// Takes clues away from a complete grid in a random order, keeping each
// removal only while the puzzle keeps a single solution (checked by
// CountSolutions), and stops at `clues` givens. Empty when the grid runs out
// of removable cells first.
std::optional<Grid> CarvePuzzle(const Grid& solution, int clues, Random64& rng);

// Gives a puzzle with a single solution `extra` more clues from its solution,
// picked at random. Uniqueness stays: more clues never add solutions.
Grid AddClues(const Grid& puzzle, const Grid& solution, int extra, Random64& rng);

}  // namespace bankgen
