// Drawing a puzzle from a level's bank.
#include "core/banks/Banks.h"

#include <array>
#include <cmath>

namespace {

// Int(r * n) in single precision, held to 0..n-1.
int ScaledDraw(float r, int n) {
    const float scaled = r * static_cast<float>(n);
    if (!(scaled >= 0.0f)) return 0;  // negative or NaN
    if (scaled >= static_cast<float>(n)) return n - 1;
    return static_cast<int>(std::floor(scaled));
}

}  // namespace

int BankBatchFromDraw(float r) { return ScaledDraw(r, kBatchesPerBank) + 1; }

int BankEntryFromDraw(float r) { return ScaledDraw(r, kEntriesPerBatch); }

namespace banks_detail {

std::string PickFromBank(const BankTable& table, IRandom& rnd) {
    const int batch = BankBatchFromDraw(rnd.Rnd());
    std::array<std::string, kEntriesPerBatch> entries;  // the chosen batch only
    for (int i = 0; i < kEntriesPerBatch; ++i) entries[i] = table[batch - 1][i];
    const int entry = BankEntryFromDraw(rnd.Rnd());
    return entries[entry];
}

std::string EntryOfBank(const BankTable& table, int batch, int entry) {
    if (batch < 1 || batch > kBatchesPerBank || entry < 0 || entry >= kEntriesPerBatch) return "";
    return table[batch - 1][entry];
}

}  // namespace banks_detail

std::string BankEntry(int level, int batch, int entry) {
    switch (level) {
        case 0: return mod_P1_Easy::Entry(batch, entry);
        case 1: return mod_P2_Intermediate::Entry(batch, entry);
        case 2: return mod_P3_Advanced::Entry(batch, entry);
        case 3: return mod_P4_Genius::Entry(batch, entry);
        default: return "";
    }
}

std::string GetPuzzle(int level, IRandom& rnd) {
    switch (level) {
        case 0: return mod_P1_Easy::GetPuzzle(rnd);
        case 1: return mod_P2_Intermediate::GetPuzzle(rnd);
        case 2: return mod_P3_Advanced::GetPuzzle(rnd);
        case 3: return mod_P4_Genius::GetPuzzle(rnd);
        default: return "";
    }
}
