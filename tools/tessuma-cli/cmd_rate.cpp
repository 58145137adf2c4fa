// tessuma-cli rate [--givens]: grades puzzles from standard input, one a
// line, by the techniques a person needs to solve them, and prints for each
//   grade <n> (<level word>), hardest technique: <technique>
// or "no solution" / "several solutions". The lines are read as by solve:
// "|" dropped, 81 cells of '1'..'9' and '0' or '.' for empty; with --givens
// in the game's board code, 'A'..'I' the givens. A line that is no puzzle is
// reported on standard error with its line number; the other lines are still
// rated and the exit status is 1.

#include "commands.h"

#include "PuzzleLines.h"
#include "tools/bankgen/Rater.h"

#include <istream>
#include <ostream>
#include <string>

int CmdRate(const CliArgs& args, std::istream& in, std::ostream& out, std::ostream& err) {
    const int status = ForEachPuzzleLine("rate", args, in, err, [&](std::uint8_t(&digits)[81]) {
        bankgen::Grid puzzle{};
        for (int c = 0; c < 81; ++c) puzzle[c] = digits[c];
        const bankgen::Rating r = bankgen::RatePuzzle(puzzle);
        switch (r.outcome) {
            case bankgen::RateOutcome::NoSolution: out << "no solution\n"; break;
            case bankgen::RateOutcome::SeveralSolutions: out << "several solutions\n"; break;
            case bankgen::RateOutcome::Rated:
                out << "grade " << r.Grade() << " (" << bankgen::GradeWord(r.hardest)
                    << "), hardest technique: " << bankgen::TechniqueName(r.hardest) << "\n";
                break;
        }
    });
    out.flush();
    return status;
}
