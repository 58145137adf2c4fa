#pragma once
// The built-in puzzle banks: 1,200 entries for each of the four levels, held
// as constants in the modules mod_P1_Easy .. mod_P4_Genius.
//
// An entry is nine groups of nine characters, one group to a board row, each
// followed by "|": 'A'..'I' a given digit 1..9, '1'..'9' a cell for the player
// and its solution. Batches are numbered 1..12 and entries 0..99 inside a
// batch. The tables are made by tessuma-bankgen (see tools/bankgen/README.md)
// and some entries keep known oddities of the data on purpose: batch 2 of
// mod_P1_Easy lacks the last "|", its batch 8 entry 75 holds an 'R', two
// genius entries have 26 givens, and the banks hold repeats.

#include <string>

#include "core/Levels.h"
#include "core/Random.h"

// The picking rule shared by the four modules: the first draw r picks batch
// Int(r * 12) + 1, the second draw picks entry Int(r * 100), both products
// taken in single precision. Out-of-range draws are held to the nearest
// batch or entry.
int BankBatchFromDraw(float r);
int BankEntryFromDraw(float r);

// Each module: GetPuzzle draws the batch, builds that batch alone as a local
// array of 100 strings, draws the entry and returns it as it stands,
// separators included. Entry returns one entry without drawing, "" when batch
// or entry is out of range.
namespace mod_P1_Easy {
std::string GetPuzzle(IRandom& rnd);
std::string Entry(int batch, int entry);
}  // namespace mod_P1_Easy

namespace mod_P2_Intermediate {
std::string GetPuzzle(IRandom& rnd);
std::string Entry(int batch, int entry);
}  // namespace mod_P2_Intermediate

namespace mod_P3_Advanced {
std::string GetPuzzle(IRandom& rnd);
std::string Entry(int batch, int entry);
}  // namespace mod_P3_Advanced

namespace mod_P4_Genius {
std::string GetPuzzle(IRandom& rnd);
std::string Entry(int batch, int entry);
}  // namespace mod_P4_Genius

// The entry at level 0..3, batch 1..12, entry 0..99, as it stands; "" when
// any of the three is out of range.
std::string BankEntry(int level, int batch, int entry);

// GetPuzzle of the level's module. A level outside 0..3 draws nothing and
// returns "".
std::string GetPuzzle(int level, IRandom& rnd);

namespace banks_detail {
// One bank as the modules hold it: 12 batches of 100 entries.
using BankTable = const char* const[kBatchesPerBank][kEntriesPerBatch];
std::string PickFromBank(const BankTable& table, IRandom& rnd);
std::string EntryOfBank(const BankTable& table, int batch, int entry);
}  // namespace banks_detail
