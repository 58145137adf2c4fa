// Reading puzzle lines from a file or standard input.
#include "PuzzleLines.h"

#include <istream>
#include <ostream>

#include "core/PuzzleText.h"

int ForEachPuzzleLine(const std::string& command, const CliArgs& args, std::istream& in, std::ostream& err,
                      const PuzzleHandler& handle) {
    PuzzleForm form = PuzzleForm::Digits;
    for (const std::string& a : args) {
        if (a == "--givens") {
            form = PuzzleForm::Givens;
        } else {
            err << "tessuma-cli " << command << ": unknown option \"" << a << "\"\n"
                << "usage: tessuma-cli " << command << " [--givens] < puzzles\n";
            return 2;
        }
    }
    int status = 0;
    long lineNo = 0;
    std::string line;
    while (std::getline(in, line)) {
        ++lineNo;
        std::uint8_t digits[81] = {};
        std::string why;
        if (!ParsePuzzleLine(line, form, digits, &why)) {
            err << "tessuma-cli " << command << ": line " << lineNo << ": " << why << "\n";
            status = 1;
            continue;
        }
        handle(digits);
    }
    return status;
}
