#pragma once
// The 81-character code of a board: 'A'..'I' given, 'J'..'R' entered,
// 'S'..'[' hinted, digits and blanks empty cells (a digit being the cell's
// solution). The same code is a bank entry without its "|" and the first
// line of a saved game.

#include <cstdint>
#include <string>
#include <string_view>

enum class CellKind { Empty, Given, Entered, Hinted };

// Sorted by the character's code, highest test first; nothing is validated.
CellKind KindOfCode(unsigned char c);
// The digit character a code shows: code-16, -25 or -34 by kind; '\0' for empty.
char DigitOfCode(unsigned char c);
// The colour that tells a kind.
std::int32_t ColorOfKind(CellKind kind);

// The 81-character state turned a quarter to the right (clockwise): the cell
// at (row j, col i) moves to (row i, col 8-j).
std::string RotateBoard(std::string_view state);

// The judgement of a digit d in cell i against the stored state: wrong when
// the state has 81 characters, its character i is not a blank, and differs.
bool IsWrongDigit(std::string_view boardState, int cell, std::string_view text);
