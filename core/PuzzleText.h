#pragma once
// Puzzles written as one line of text, as the command-line tools read them.
//
// Every "|" is dropped first (bank entries use it as a separator); what is
// left must be exactly 81 characters, one per cell, row by row. A line end
// (LF, CR LF or a lone CR) at the end of the text is ignored.
//
//   PuzzleForm::Digits  '1'..'9' a digit, '0' or '.' an empty cell; any
//                       other character is an error.
//   PuzzleForm::Givens  the board code of the game: 'A'..'I' are the given
//                       digits 1..9, every other character is an empty cell
//                       (entered and hinted letters, solution digits, blanks).

#include <cstdint>
#include <string>
#include <string_view>

enum class PuzzleForm { Digits, Givens };

// Fills digits (0 = empty, 1..9) and returns true, or leaves digits as they
// were, puts a one-line reason into *error (when error is not null) and
// returns false.
bool ParsePuzzleLine(std::string_view line, PuzzleForm form, std::uint8_t (&digits)[81], std::string* error = nullptr);
