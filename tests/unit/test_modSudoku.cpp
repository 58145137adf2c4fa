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

// A stop ends a search between trial steps: the answer is false and says
// so, and it leaves nothing behind for the next solve, which runs whole.
TEST(SolverTrial, AStoppedSearchGivesUpAndLeavesTheNextWhole) {
    const std::string twoFives = "55" + std::string(79, '0');
    const Outcome whole = Solve(twoFives);
    ASSERT_FALSE(whole.solved);
    ASSERT_EQ(whole.calls, 8801);
    EXPECT_FALSE(modSudoku::Stopped());

    modSudoku::Board b{};
    b[0] = b[1] = 5;
    for (long budget : {2048L, 5000L}) {
        modSudoku::SearchStop stop;
        stop.maxCalls = budget;
        (void)modSudoku::LoadBoard(b);
        EXPECT_FALSE(modSudoku::SolveBoard(&stop));
        EXPECT_TRUE(modSudoku::Stopped());
        EXPECT_EQ(modSudoku::SearchCalls(), (budget + 1023) / 1024 * 1024);
    }
    modSudoku::SearchStop asked;
    asked.requested = true;
    (void)modSudoku::LoadBoard(b);
    EXPECT_FALSE(modSudoku::SolveBoard(&asked));
    EXPECT_EQ(modSudoku::SearchCalls(), 1024);

    const Outcome again = Solve(twoFives);
    EXPECT_FALSE(modSudoku::Stopped());
    EXPECT_EQ(again.calls, whole.calls);
    EXPECT_EQ(again.digits, whole.digits);
}

}  // namespace
