#pragma once
// The constraint solver: candidate propagation, single places and a
// depth-first trial in a fixed order. One solver for the whole program; each
// LoadBoard overwrites the state of the last solve. Not reentrant.
//
// Calling order, always: LoadBoard, SolveBoard, GetSolution.

#include <atomic>
#include <cstdint>
#include <limits>

namespace modSudoku {

using Board = std::uint8_t[81];  // 0 = empty, 1..9 = digit, cell = 9 * row + col

// Loads the board; true when every unit can still hold all nine digits.
// On false, Unsolved is forced to 0, so that SolveBoard answers true at once.
// A value above 9 is no digit; it is read as an empty cell.
bool LoadBoard(const Board& digits);

// Ends a search early from outside. A solve given one looks at it every
// 1024 trial steps and gives up once `requested` is set (from any thread) or
// `maxCalls` trial steps are made: it answers false, Stopped() tells why, and
// the state is left as it stood, of no use to GetSolution.
struct SearchStop {
    std::atomic<bool> requested{false};
    long maxCalls = std::numeric_limits<long>::max();
};

// Solves the loaded board; true when every cell was decided.
bool SolveBoard(SearchStop* stop = nullptr);

// True when the last SolveBoard gave up at its SearchStop.
bool Stopped();

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
