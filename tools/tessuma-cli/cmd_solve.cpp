// tessuma-cli solve [--givens]: runs the game's solver over puzzles from
// standard input, one a line, and prints for each
//   <81 digits of the solution> <true|false> <number of SearchCell calls>
// A line that is no puzzle is reported on standard error with its line
// number; the other lines are still solved and the exit status is 1.

#include "commands.h"

#include "PuzzleLines.h"
#include "core/modSudoku.h"

#include <istream>
#include <ostream>
#include <string>

int CmdSolve(const CliArgs& args, std::istream& in, std::ostream& out, std::ostream& err) {
    const int status = ForEachPuzzleLine("solve", args, in, err, [&](std::uint8_t(&digits)[81]) {
        modSudoku::LoadBoard(digits);
        const bool solved = modSudoku::SolveBoard();
        modSudoku::GetSolution(digits);

        char text[81];
        for (int c = 0; c < 81; ++c) text[c] = static_cast<char>('0' + digits[c]);
        out.write(text, 81);
        out << ' ' << (solved ? "true" : "false") << ' ' << modSudoku::SearchCalls() << '\n';
    });
    out.flush();
    return status;
}
