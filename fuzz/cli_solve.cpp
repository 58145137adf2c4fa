// Fuzz target: the standard input of `tessuma-cli solve`.
//
// The first byte chooses the form (odd: --givens); the rest is the input.
// Every line is either answered with one line of output or reported on
// standard error, in order, and an answer is 81 digits, "true" or "false"
// and the number of search calls.
//
// Boards with the same digit twice in a row, column or box are skipped: the
// solver has no limit on effort, and on such a board it may try millions of
// cells before it gives up (two 5s in cells 2 and 3: 8.3 million calls).
// The game never hands it one, since it looks for duplicates first; the
// command passes them on as they are, and that is slow, not wrong.

#include <sstream>
#include <string>

#include "core/PuzzleText.h"
#include "fuzz/FuzzSupport.h"
#include "tools/tessuma-cli/commands.h"

namespace {

bool IsAnswer(const std::string& line) {
    if (line.size() < 81 + 1 + 4 + 1 + 1 || line[81] != ' ') return false;
    for (int i = 0; i < 81; ++i)
        if (line[static_cast<std::size_t>(i)] < '0' || line[static_cast<std::size_t>(i)] > '9') return false;
    std::string rest = line.substr(82);
    std::size_t digits;
    if (rest.rfind("true ", 0) == 0)
        digits = 5;
    else if (rest.rfind("false ", 0) == 0)
        digits = 6;
    else
        return false;
    if (digits >= rest.size()) return false;
    for (std::size_t i = digits; i < rest.size(); ++i)
        if (rest[i] < '0' || rest[i] > '9') return false;
    return true;
}

// True when some unit holds a digit twice.
bool HasDuplicate(const std::uint8_t (&d)[81]) {
    for (int u = 0; u < 9; ++u) {
        unsigned row = 0, col = 0, box = 0;
        for (int k = 0; k < 9; ++k) {
            const unsigned r = d[u * 9 + k], c = d[k * 9 + u], b = d[(u / 3 * 3 + k / 3) * 9 + u % 3 * 3 + k % 3];
            if ((r && (row & (1u << r))) || (c && (col & (1u << c))) || (b && (box & (1u << b)))) return true;
            if (r) row |= 1u << r;
            if (c) col |= 1u << c;
            if (b) box |= 1u << b;
        }
    }
    return false;
}

long CountLines(const std::string& text) {
    long n = 0;
    for (char c : text) n += c == '\n';
    return n;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using fuzz::Require;
    if (size == 0) return 0;
    CliArgs args;
    if (data[0] & 1) args.push_back("--givens");
    const std::string input = fuzz::Text(data + 1, size - 1);
    {
        std::istringstream lines(input);
        std::string line;
        std::uint8_t digits[81];
        while (std::getline(lines, line))
            if (ParsePuzzleLine(line, args.empty() ? PuzzleForm::Digits : PuzzleForm::Givens, digits) &&
                HasDuplicate(digits))
                return 0;
    }
    std::istringstream in(input);
    std::ostringstream out, err;
    const int status = CmdSolve(args, in, out, err);

    long lines = CountLines(input) + (!input.empty() && input.back() != '\n' ? 1 : 0);
    Require(CountLines(out.str()) + CountLines(err.str()) == lines, "one answer or one error per line");
    Require(status == (err.str().empty() ? 0 : 1), "the status tells whether a line was refused");
    std::istringstream answers(out.str());
    std::string line;
    while (std::getline(answers, line)) Require(IsAnswer(line), "an answer is 81 digits, a verdict and a count");
    return 0;
}
