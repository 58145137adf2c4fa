#pragma once
// The constraint solver: candidate propagation, single places and a
// depth-first trial in a fixed order. One solver for the whole program; each
// LoadBoard overwrites the state of the last solve. Not reentrant.
//
// Calling order, always: LoadBoard, SolveBoard, GetSolution.

#include <cstdint>

namespace modSudoku {

using Board = std::uint8_t[81];  // 0 = empty, 1..9 = digit, cell = 9 * row + col

// Loads the board; true when every unit can still hold all nine digits.
// On false, Unsolved is forced to 0, so that SolveBoard answers true at once.
// A value above 9 is no digit; it is read as an empty cell.
bool LoadBoard(const Board& digits);

// Solves the loaded board; true when every cell was decided.
bool SolveBoard();

// Writes the digit of every decided cell, 0 for an undecided one.
void GetSolution(Board& digits);

// Number of SearchCell calls made by the last SolveBoard.
long SearchCalls();

// Cells not yet decided (read-only view of the solver state, for tests).
int Unsolved();

// The 20 peers of a cell (0..80) in the order in which propagation visits
// them: the rest of its box, then its column, then its row outside the box.
// Read-only view of the peer table, for tests; builds the tables if needed.
const std::int32_t* CellPeers(int cell);

}  // namespace modSudoku
