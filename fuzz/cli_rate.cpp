// Fuzz target: the standard input of `tessuma-cli rate`.
//
// The first byte chooses the form (odd: --givens); the rest is the input.
// Beside the command itself, each puzzle that the rater finds solvable is
// given to the game's solver, which has to find a completion that keeps
// the givens and breaks no rule: two engines that must agree.

#include <cstring>
#include <sstream>
#include <string>

#include "core/PuzzleText.h"
#include "core/modSudoku.h"
#include "fuzz/FuzzSupport.h"
#include "tools/bankgen/Rater.h"
#include "tools/tessuma-cli/commands.h"

namespace {

bool ValidCompletion(const std::uint8_t (&givens)[81], const std::uint8_t (&grid)[81]) {
    for (int c = 0; c < 81; ++c) {
        if (grid[c] < 1 || grid[c] > 9) return false;
        if (givens[c] != 0 && givens[c] != grid[c]) return false;
    }
    for (int u = 0; u < 9; ++u) {
        unsigned row = 0, col = 0, box = 0;
        for (int k = 0; k < 9; ++k) {
            row |= 1u << grid[u * 9 + k];
            col |= 1u << grid[k * 9 + u];
            box |= 1u << grid[(u / 3 * 3 + k / 3) * 9 + u % 3 * 3 + k % 3];
        }
        if (row != 0x3FE || col != 0x3FE || box != 0x3FE) return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using fuzz::Require;
    if (size == 0) return 0;
    const PuzzleForm form = (data[0] & 1) ? PuzzleForm::Givens : PuzzleForm::Digits;
    CliArgs args;
    if (form == PuzzleForm::Givens) args.push_back("--givens");
    const std::string input = fuzz::Text(data + 1, size - 1);
    {
        std::istringstream in(input);
        std::ostringstream out, err;
        const int status = CmdRate(args, in, out, err);
        Require(status == (err.str().empty() ? 0 : 1), "the status tells whether a line was refused");
    }

    std::istringstream lines(input);
    std::string line;
    while (std::getline(lines, line)) {
        std::uint8_t givens[81];
        if (!ParsePuzzleLine(line, form, givens)) continue;
        bankgen::Grid puzzle{};
        for (int c = 0; c < 81; ++c) puzzle[c] = givens[c];
        if (bankgen::RatePuzzle(puzzle).outcome == bankgen::RateOutcome::NoSolution) continue;
        modSudoku::LoadBoard(givens);
        const bool solved = modSudoku::SolveBoard();
        std::uint8_t grid[81];
        modSudoku::GetSolution(grid);
        Require(solved && ValidCompletion(givens, grid), "the solver completes every puzzle that has a solution");
    }
    return 0;
}
