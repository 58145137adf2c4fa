// The solver must reach the same digits after the same number of SearchCell
// calls as every other build of the game, so these tests pin whole outcomes:
// any change in an order of trial (digits high to low, the two cell scans,
// the phases of single places, the peer order) shows up as other digits or
// another count.

#include "core/modSudoku.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using Digits = std::vector<std::uint8_t>;

struct Outcome {
    bool loaded;
    int unsolvedAfterLoad;
    bool solved;
    long calls;
    std::string digits;  // 81 characters '0'..'9'
};

// 81 characters, '0' or '.' empty.
Outcome Solve(const std::string& board) {
    modSudoku::Board b{};
    for (int c = 0; c < 81; ++c) b[c] = board.at(c) == '.' ? 0 : static_cast<std::uint8_t>(board[c] - '0');
    Outcome o;
    o.loaded = modSudoku::LoadBoard(b);
    o.unsolvedAfterLoad = modSudoku::Unsolved();
    o.solved = modSudoku::SolveBoard();
    o.calls = modSudoku::SearchCalls();
    modSudoku::Board out{};
    modSudoku::GetSolution(out);
    for (int c = 0; c < 81; ++c) o.digits += static_cast<char>('0' + out[c]);
    return o;
}

TEST(SolverTrial, PuzzleWithOneSolution) {
    const Outcome o = Solve(".5..4.....47.12....8....3..6....5.1....2.79.6.........3........5....4..9.79...52.");
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 6);
    EXPECT_EQ(o.digits, "153846297947312865286579341692485713814237956735691482321958674568724139479163528");
}

}  // namespace
