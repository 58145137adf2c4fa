// tessuma-cli: the command-line companion of Tessuma Sudoku.
#include "commands.h"

#include <cstring>
#include <iostream>

namespace {

void Usage(std::ostream& os) {
    os << "usage: tessuma-cli COMMAND [ARGS]\n"
          "  solve [--givens]   solve puzzles from standard input, one a line\n"
          "  rate               grade puzzles from standard input by the techniques they need\n"
          "  bank LEVEL         print the 1,200 built-in puzzles of level 0..3\n"
          "  script FILE|-      run a scenario against the game's forms\n";
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    if (argc < 2) {
        Usage(std::cerr);
        return 2;
    }
    const std::string cmd = argv[1];
    CliArgs args(argv + 2, argv + argc);
    if (cmd == "solve") return CmdSolve(args, std::cin, std::cout, std::cerr);
    if (cmd == "rate") return CmdRate(args, std::cin, std::cout, std::cerr);
    if (cmd == "bank") return CmdBank(args, std::cin, std::cout, std::cerr);
    if (cmd == "script") return CmdScript(args, std::cin, std::cout, std::cerr);
    if (cmd == "-h" || cmd == "--help" || cmd == "help") {
        Usage(std::cout);
        return 0;
    }
    std::cerr << "tessuma-cli: unknown command \"" << cmd << "\"\n";
    Usage(std::cerr);
    return 2;
}
