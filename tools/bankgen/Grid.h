#pragma once
// Grids, units and the independent solution counter of the bank tools.
//
// A grid is 81 cells row by row, 0 an empty cell and 1..9 a digit. The
// counter here shares nothing with the game's solver: the banks are checked
// for a single solution by this code alone, and the game's solver then has to
// agree with it (see the bank tests).

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace bankgen {

using Grid = std::array<std::uint8_t, 81>;

// The 27 units: rows 0..8, columns 9..17, boxes 18..26, cells in order.
extern const std::array<std::array<int, 9>, 27> kUnits;
// The 20 other cells that share a unit with a cell.
extern const std::array<std::array<int, 20>, 81> kPeers;
// Row, column and box unit of a cell (indices into kUnits).
extern const std::array<std::array<int, 3>, 81> kCellUnits;
// Whether two different cells share a unit.
bool Sees(int a, int b);

// Number of set bits of a mask of at most nine bits, by table (the bank
// tools run on any x86-64, where a popcount instruction is not assumed).
struct BitCountTable {
    std::uint8_t n[512];
    constexpr BitCountTable() : n() {
        for (int m = 1; m < 512; ++m) n[m] = static_cast<std::uint8_t>(n[m >> 1] + (m & 1));
    }
};
inline constexpr BitCountTable kBitCount{};
inline int Count9(unsigned mask) { return kBitCount.n[mask & 0x1FFu]; }

inline int RowOf(int cell) { return cell / 9; }
inline int ColOf(int cell) { return cell % 9; }
inline int BoxOf(int cell) { return 3 * (cell / 27) + (cell % 9) / 3; }

// Number of filled cells.
int CountClues(const Grid& g);

// True when no digit stands twice in a unit (empty cells allowed).
bool IsConsistent(const Grid& g);
// True when every cell is filled and no unit holds a digit twice.
bool IsCompleteValid(const Grid& g);

// Counts the completions of g, stopping as soon as `limit` are found. When
// the result is at least 1, *first receives the first completion found.
int CountSolutions(const Grid& g, int limit = 2, Grid* first = nullptr);

// The bank entry of a puzzle: nine groups of nine characters, each followed
// by "|"; a clue is its letter 'A'..'I', any other cell the digit of the
// solution. Every clue must agree with the solution.
std::string EncodeEntry(const Grid& puzzle, const Grid& solution);

// Reads an entry (with or without the separators): 'A'..'I' clues into
// puzzle, and the digit of every cell into solution ('1'..'9' as written,
// clues by their letter). False when a cell holds anything else, or when the
// entry has not 81 cells.
bool DecodeEntry(std::string_view entry, Grid& puzzle, Grid& solution);

// 81 characters, '.' for an empty cell. For messages and tests.
std::string ToLine(const Grid& g);
// Reads 81 characters of '1'..'9', '0' or '.'; false on anything else.
bool FromLine(std::string_view line, Grid& g);

}  // namespace bankgen
