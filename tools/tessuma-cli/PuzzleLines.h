#pragma once
// The common reading of solve and rate: the --givens option, then puzzles
// from a stream, one a line. A bad line is named on the error stream with
// its number and the others go on; the result is the command's exit status
// (0, 1 when a line was bad, 2 for an unknown option).

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

#include "commands.h"

using PuzzleHandler = std::function<void(std::uint8_t (&digits)[81])>;

int ForEachPuzzleLine(const std::string& command, const CliArgs& args, std::istream& in, std::ostream& err,
                      const PuzzleHandler& handle);
