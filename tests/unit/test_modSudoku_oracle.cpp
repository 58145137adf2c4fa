// The solver against a reference: a plain, step-by-step solver of the same
// design (tables, CommitCell, CheckUnits, PropagateNext, HiddenSingles cell by
// cell and digit by digit, the two cell scans of the trial) with none of the
// shortcuts, kept here so that the fast solver in core/ can be rewritten
// freely and still be held to the same digits, the same answer, the same
// count of SearchCell calls and the same state left behind, on every board
// tried.
//
// The boards: every bank puzzle, and random boards of many kinds (sparse,
// with doubled digits, near-complete, with a wrong digit, full, with values
// above 9). For a longer run, TESSUMA_ORACLE_BOARDS sets the number of
// random boards of each kind, TESSUMA_ORACLE_SEED picks another stream of
// them and TESSUMA_ORACLE_CALLS the number of SearchCell calls beyond which a
// sparse board is left out (20,000; the other kinds allow 200,000).

#include "core/banks/Banks.h"
#include "core/Levels.h"
#include "core/PuzzleText.h"
#include "core/modSudoku.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace {

// ---- The reference ---------------------------------------------------------

class Reference {
public:
    // Thrown when a board needs more SearchCell calls than the caller allows.
    struct TooLong {};

    explicit Reference(long callLimit) : limit_(callLimit) {}

    bool LoadBoard(const std::uint8_t* digits) {
        if (!TablesReady) InitTables();
        for (int k = 0; k < 9; ++k) RowDone[k] = ColDone[k] = BoxDone[k] = 0;
        QueueHead = 0;
        QueueTail = 0;
        Unsolved = 81;
        calls_ = 0;
        for (int cell = 0; cell < 81; ++cell) {
            const int digit = digits[cell] > 9 ? 0 : digits[cell];
            if (digit == 0)
                Cand[cell] = 511;
            else
                CommitCell(cell, DigitMask[digit]);
        }
        const bool ok = CheckUnits();
        if (!ok) Unsolved = 0;
        return ok;
    }

    bool SolveBoard() {
        calls_ = 0;
        while (Unsolved > 0) {
            if (QueueHead == QueueTail) {
                if (HiddenSingles()) break;
            }
            PropagateNext();
        }
        if (Unsolved == 0) return true;
        Solved = false;
        int choice = -1;
        int best = 10;
        for (int cell = 0; cell <= 80; ++cell) {
            const int n = BitCount[Cand[cell]];
            if (n > 1 && n < best) {
                choice = cell;
                best = n;
                if (n == 2) break;
            }
        }
        return SearchCell(choice);
    }

    void GetSolution(std::uint8_t* digits) const {
        for (int c = 0; c <= 80; ++c) digits[c] = static_cast<std::uint8_t>(MaskDigit[Cand[c]]);
    }

    long Calls() const { return calls_; }
    int UnsolvedCells() const { return Unsolved; }

private:
    void InitTables() {
        DigitMask[0] = 511;
        for (int d = 1; d <= 9; ++d) {
            DigitMask[d] = 1 << (d - 1);
            MaskDigit[DigitMask[d]] = d;
        }
        BitCount[0] = 0;
        HighBit[0] = 0;
        for (int d = 1; d <= 9; ++d) {
            const int m = DigitMask[d];
            for (int j = 0; j <= m - 1; ++j) {
                BitCount[m | j] = BitCount[j] + 1;
                HighBit[m | j] = m;
            }
        }
        for (int c = 0; c <= 80; ++c) {
            PeerStart[c] = c * 20;
            CellCol[c] = c % 9;
            CellRow[c] = c / 9;
            RowStart[c] = 9 * CellRow[c];
            CellBox[c] = 3 * (CellRow[c] / 3) + CellCol[c] / 3;
            BoxStart[c] = 9 * CellBox[c];
            BoxCell[c] = 9 * CellBox[c] + 3 * (CellRow[c] % 3) + CellCol[c] % 3;
        }
        int k = 0;
        for (int c = 0; c <= 80; ++c) {
            for (int i = BoxStart[c]; i <= BoxStart[c] + 8; ++i)
                if (BoxCell[i] != c) Peers[k++] = BoxCell[i];
            for (int r = 0; r <= 8; ++r) {
                const int p = 9 * r + CellCol[c];
                if (CellBox[p] != CellBox[c]) Peers[k++] = p;
            }
            for (int x = 0; x <= 8; ++x) {
                const int p = RowStart[c] + x;
                if (CellBox[p] != CellBox[c]) Peers[k++] = p;
            }
        }
        TablesReady = true;
    }

    void CommitCell(int cell, int bit) {
        Cand[cell] = bit;
        RowDone[CellRow[cell]] |= bit;
        ColDone[CellCol[cell]] |= bit;
        BoxDone[CellBox[cell]] |= bit;
        SolveQueue[QueueTail] = cell;
        QueueTail += 1;
        Unsolved -= 1;
    }

    bool CheckUnits() const {
        for (int k = 0; k <= 8; ++k) {
            int u = 0;
            for (int i = 0; i <= 8; ++i) u |= Cand[9 * k + i];
            if (u != 511) return false;
            u = 0;
            for (int i = 9 * k; i <= 9 * k + 8; ++i) u |= Cand[BoxCell[i]];
            if (u != 511) return false;
        }
        for (int col = 0; col <= 8; ++col) {
            int u = 0;
            for (int i = col; i <= 80; i += 9) u |= Cand[i];
            if (u != 511) return false;
        }
        return true;
    }

    void PropagateNext() {
        const int c = SolveQueue[QueueHead];
        const int m = Cand[c];
        for (int k = PeerStart[c]; k <= PeerStart[c] + 19; ++k) {
            const int p = Peers[k];
            const int x = Cand[p];
            const int n = BitCount[x];
            if (n == 1) continue;
            const int y = x & ~m;
            if (y == x) continue;
            Cand[p] = y;
            if (n == 2) {
                RowDone[CellRow[p]] |= y;
                ColDone[CellCol[p]] |= y;
                BoxDone[CellBox[p]] |= y;
                SolveQueue[QueueTail] = p;
                QueueTail += 1;
                Unsolved -= 1;
            }
        }
        QueueHead += 1;
    }

    // True when stuck (nothing decided).
    bool HiddenSingles() {
        bool decided = false;

        for (int row = 0; row <= 8; ++row) {
            const int r0 = 9 * row;
            int missing = 511 & ~RowDone[row];
            while (missing != 0) {
                const int bit = HighBit[missing];
                int holders = 0, holder = -1, mask = 0;
                for (int i = r0; i <= r0 + 8; ++i) {
                    if (Cand[i] & bit) {
                        if (++holders == 2) break;
                        holder = i;
                        mask = Cand[i];
                    }
                }
                if (holders == 1 && BitCount[mask] > 1 && !(BoxDone[CellBox[holder]] & bit)) {
                    CommitCell(holder, bit);
                    decided = true;
                }
                missing &= ~bit;
            }
        }
        if (decided) return false;

        for (int col = 0; col <= 8; ++col) {
            int missing = 511 & ~ColDone[col];
            while (missing != 0) {
                const int bit = HighBit[missing];
                int holders = 0, holder = -1, mask = 0;
                int i = col;
                while (i <= 72) {
                    if (Cand[i] & bit) {
                        if (++holders == 2) break;
                        holder = i;
                        mask = Cand[i];
                    }
                    i += 9;
                }
                if (i > 80 && holders == 1 && BitCount[mask] > 1 && !(BoxDone[CellBox[holder]] & bit)) {
                    CommitCell(holder, bit);
                    decided = true;
                }
                missing &= ~bit;
            }
        }
        if (decided) return false;

        for (int b = 0; b <= 8; ++b) {
            int missing = 511 & ~BoxDone[b];
            while (missing != 0) {
                const int bit = HighBit[missing];
                int holders = 0, holder = -1, mask = 0;
                for (int i = 9 * b; i <= 9 * b + 8; ++i) {
                    const int cell = BoxCell[i];
                    if (Cand[cell] & bit) {
                        if (++holders == 2) break;
                        holder = cell;
                        mask = Cand[cell];
                    }
                }
                if (holders == 1 && BitCount[mask] > 1 && !(ColDone[CellCol[holder]] & bit) &&
                    !(RowDone[CellRow[holder]] & bit)) {
                    CommitCell(holder, bit);
                    decided = true;
                }
                missing &= ~bit;
            }
        }
        return !decided;
    }

    bool SearchCell(int cell) {
        if (++calls_ > limit_) throw TooLong{};
        if (Solved) return true;

        std::array<int, 81> savedCand;
        std::array<int, 9> savedRow, savedCol, savedBox;
        std::copy(Cand, Cand + 81, savedCand.begin());
        std::copy(RowDone, RowDone + 9, savedRow.begin());
        std::copy(ColDone, ColDone + 9, savedCol.begin());
        std::copy(BoxDone, BoxDone + 9, savedBox.begin());
        const int savedHead = QueueHead, savedTail = QueueTail, savedUnsolved = Unsolved;
        int tryMask = Cand[cell];

        for (;;) {
            QueueTail = savedTail + 1;
            const int bit = HighBit[tryMask];
            Cand[cell] = bit;
            SolveQueue[QueueTail - 1] = cell;
            Unsolved -= 1;

            bool stuck = false;
            for (;;) {
                if (!(Unsolved > 0)) {
                    stuck = false;
                    break;
                }
                if (QueueHead == QueueTail) {
                    if (!CheckUnits()) {
                        stuck = false;
                        break;
                    }
                    if (HiddenSingles()) {
                        stuck = true;
                        break;
                    }
                }
                PropagateNext();
            }

            if (stuck) {
                int choice = -1;
                int best = 9;
                for (int i = 80; i >= 0; --i) {
                    const int n = BitCount[Cand[i]];
                    if (n > 1 && n < best && i != cell) {
                        choice = i;
                        best = n;
                        if (n == 2) break;
                    }
                }
                if (choice >= 0 && SearchCell(choice)) return true;
            }
            if (!stuck && Unsolved == 0) {
                if (CheckUnits()) {
                    Solved = true;
                    return true;
                }
            }
            if (BitCount[tryMask] == 1) return false;
            tryMask &= ~bit;
            QueueHead = savedHead;
            Unsolved = savedUnsolved;
            std::copy(savedCand.begin(), savedCand.end(), Cand);
            std::copy(savedRow.begin(), savedRow.end(), RowDone);
            std::copy(savedCol.begin(), savedCol.end(), ColDone);
            std::copy(savedBox.begin(), savedBox.end(), BoxDone);
        }
    }

    int BitCount[512] = {}, HighBit[512] = {}, DigitMask[10] = {}, MaskDigit[512] = {};
    int Peers[1620] = {}, PeerStart[81] = {}, CellCol[81] = {}, CellRow[81] = {}, RowStart[81] = {};
    int CellBox[81] = {}, BoxStart[81] = {}, BoxCell[81] = {};
    bool TablesReady = false;

    int Cand[81] = {}, SolveQueue[81] = {}, RowDone[9] = {}, ColDone[9] = {}, BoxDone[9] = {};
    int QueueHead = 0, QueueTail = 0, Unsolved = 0;
    bool Solved = false;

    long calls_ = 0;
    long limit_;
};

// ---- Comparing ---------------------------------------------------------------

struct Outcome {
    bool loaded = false;
    int unsolvedAfterLoad = 0;
    bool solved = false;
    long calls = 0;
    int unsolvedAfterSolve = 0;
    std::string digits;

    bool operator==(const Outcome&) const = default;
};

std::string Text(const std::uint8_t* d) {
    std::string s;
    for (int c = 0; c < 81; ++c) s += static_cast<char>('0' + d[c]);
    return s;
}

std::string InputText(const std::uint8_t* d) {
    std::string s;
    for (int c = 0; c < 81; ++c) s += d[c] <= 9 ? static_cast<char>('0' + d[c]) : '*';
    return s;
}

Outcome RunGame(const std::uint8_t* board) {
    modSudoku::Board b;
    std::copy(board, board + 81, b);
    Outcome o;
    o.loaded = modSudoku::LoadBoard(b);
    o.unsolvedAfterLoad = modSudoku::Unsolved();
    o.solved = modSudoku::SolveBoard();
    o.calls = modSudoku::SearchCalls();
    o.unsolvedAfterSolve = modSudoku::Unsolved();
    modSudoku::Board out;
    modSudoku::GetSolution(out);
    o.digits = Text(out);
    return o;
}

// The reference's outcome, or false when it needs more calls than allowed.
bool RunReference(Reference& ref, const std::uint8_t* board, Outcome& o) {
    try {
        o.loaded = ref.LoadBoard(board);
        o.unsolvedAfterLoad = ref.UnsolvedCells();
        o.solved = ref.SolveBoard();
        o.calls = ref.Calls();
        o.unsolvedAfterSolve = ref.UnsolvedCells();
        std::uint8_t out[81];
        ref.GetSolution(out);
        o.digits = Text(out);
        return true;
    } catch (const Reference::TooLong&) {
        return false;
    }
}

struct Tally {
    long compared = 0;
    long skipped = 0;
    long mismatches = 0;
};

void Compare(Reference& ref, const std::uint8_t* board, Tally& tally) {
    Outcome want;
    if (!RunReference(ref, board, want)) {
        ++tally.skipped;
        return;
    }
    const Outcome got = RunGame(board);
    ++tally.compared;
    if (got == want) return;
    if (++tally.mismatches > 5) return;  // the first few tell enough
    ADD_FAILURE() << "board " << InputText(board) << "\n  loaded " << got.loaded << " / " << want.loaded
                  << ", unsolved after load " << got.unsolvedAfterLoad << " / " << want.unsolvedAfterLoad
                  << "\n  solved " << got.solved << " / " << want.solved << ", calls " << got.calls << " / "
                  << want.calls << ", unsolved after solve " << got.unsolvedAfterSolve << " / "
                  << want.unsolvedAfterSolve << "\n  digits " << got.digits << "\n  wanted " << want.digits;
}

// ---- Random boards -------------------------------------------------------------

class Rng {
public:
    explicit Rng(std::uint64_t seed) : s_(seed) {}
    std::uint64_t Next() {  // splitmix64
        std::uint64_t z = (s_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    int Below(int n) { return static_cast<int>(Next() % static_cast<std::uint64_t>(n)); }

private:
    std::uint64_t s_;
};

using Grid = std::array<std::uint8_t, 81>;

// A full valid board: the pattern board with digits, rows in bands, bands,
// columns in stacks and stacks shuffled, and sometimes transposed.
Grid RandomSolution(Rng& rng) {
    std::array<int, 9> digit{1, 2, 3, 4, 5, 6, 7, 8, 9};
    for (int i = 8; i > 0; --i) std::swap(digit[i], digit[rng.Below(i + 1)]);
    auto order = [&rng]() {
        std::array<int, 3> band{0, 1, 2};
        for (int i = 2; i > 0; --i) std::swap(band[i], band[rng.Below(i + 1)]);
        std::array<int, 9> out;
        for (int b = 0; b < 3; ++b) {
            std::array<int, 3> in{0, 1, 2};
            for (int i = 2; i > 0; --i) std::swap(in[i], in[rng.Below(i + 1)]);
            for (int i = 0; i < 3; ++i) out[3 * b + i] = 3 * band[b] + in[i];
        }
        return out;
    };
    const std::array<int, 9> rows = order(), cols = order();
    const bool transpose = rng.Below(2) == 1;
    Grid g;
    for (int r = 0; r < 9; ++r)
        for (int c = 0; c < 9; ++c) {
            const int rr = rows[r], cc = cols[c];
            const int v = (3 * (rr % 3) + rr / 3 + cc) % 9;
            g[transpose ? 9 * c + r : 9 * r + c] = static_cast<std::uint8_t>(digit[v]);
        }
    return g;
}

// Keeps `keep` cells of the board, chosen at random; the rest empty.
Grid KeepCells(const Grid& full, int keep, Rng& rng) {
    std::array<int, 81> cells;
    for (int i = 0; i < 81; ++i) cells[i] = i;
    for (int i = 80; i > 0; --i) std::swap(cells[i], cells[rng.Below(i + 1)]);
    Grid g{};
    for (int i = 0; i < keep; ++i) g[cells[i]] = full[cells[i]];
    return g;
}

std::uint8_t RandomDigit(Rng& rng) { return static_cast<std::uint8_t>(1 + rng.Below(9)); }

long BoardsOfEachKind(long byDefault) {
    if (const char* s = std::getenv("TESSUMA_ORACLE_BOARDS"); s && *s) return std::max(1L, std::atol(s));
    return byDefault;
}

std::uint64_t Seed() {
    if (const char* s = std::getenv("TESSUMA_ORACLE_SEED"); s && *s) return std::strtoull(s, nullptr, 10);
    return 20240611;
}

// A random board may need millions of calls; those are left out and counted.
constexpr long kCallLimit = 200000;

long SparseCallLimit() {
    if (const char* s = std::getenv("TESSUMA_ORACLE_CALLS"); s && *s) return std::max(1L, std::atol(s));
    return 20000;
}

// True when digit already stands in a unit of cell.
bool Repeats(const Grid& g, int cell, std::uint8_t digit) {
    const int row = cell / 9, col = cell % 9;
    for (int i = 0; i < 9; ++i) {
        const int box = 9 * (3 * (row / 3) + i / 3) + 3 * (col / 3) + i % 3;
        if (g[9 * row + i] == digit || g[9 * i + col] == digit || g[box] == digit) return true;
    }
    return false;
}

void ExpectMostCompared(const Tally& t, long planned) {
    EXPECT_EQ(t.mismatches, 0);
    EXPECT_EQ(t.compared + t.skipped, planned);
    EXPECT_GE(t.compared * 4, planned * 3) << "too many boards left out as too long";
    ::testing::Test::RecordProperty("compared", std::to_string(t.compared));
    ::testing::Test::RecordProperty("skipped", std::to_string(t.skipped));
}

// ---- The tests -----------------------------------------------------------------

TEST(SolverReference, EveryBankPuzzle) {
    Reference ref(kCallLimit);
    Tally t;
    long planned = 0;
    for (int level = 0; level < kLevelCount; ++level)
        for (int batch = 1; batch <= kBatchesPerBank; ++batch)
            for (int entry = 0; entry < kEntriesPerBatch; ++entry) {
                std::uint8_t board[81];
                ASSERT_TRUE(ParsePuzzleLine(BankEntry(level, batch, entry), PuzzleForm::Givens, board));
                ++planned;
                Compare(ref, board, t);
            }
    EXPECT_EQ(planned, 4800);
    EXPECT_EQ(t.skipped, 0);
    ExpectMostCompared(t, planned);
}

TEST(SolverReference, KnownBoards) {
    // The boards whose outcomes test_modSudoku pins, and a few edge cases.
    Reference ref(kCallLimit);
    Tally t;
    std::vector<Grid> boards;
    boards.push_back(Grid{});
    Grid g{};
    g[0] = 1;
    boards.push_back(g);
    g[0] = 5;
    g[1] = 5;
    boards.push_back(g);
    g = Grid{};
    g[17] = 8;
    boards.push_back(g);
    g = Grid{};
    for (int c = 0; c < 9; ++c) g[c] = static_cast<std::uint8_t>(c == 8 ? 8 : c + 1);
    boards.push_back(g);
    for (int c = 0; c < 81; ++c) g[c] = static_cast<std::uint8_t>(10 + 3 * c);
    boards.push_back(g);
    for (const Grid& b : boards) Compare(ref, b.data(), t);
    EXPECT_EQ(t.compared, static_cast<long>(boards.size()));
    EXPECT_EQ(t.mismatches, 0);
}

// Sparse boards with digits at random: few givens, half of them free of
// repeats in their units, the other half placed blindly, so with doubled
// digits that make the trial run out.
TEST(SolverReference, SparseRandomBoards) {
    Reference ref(SparseCallLimit());
    Rng rng(Seed());
    Tally t;
    const long n = BoardsOfEachKind(300);
    for (long i = 0; i < n; ++i) {
        Grid g{};
        const int givens = rng.Below(12);
        const bool blind = i % 2 == 1;
        for (int k = 0; k < givens; ++k) {
            const int cell = rng.Below(81);
            const std::uint8_t digit = RandomDigit(rng);
            if (!blind && Repeats(g, cell, digit)) continue;
            g[cell] = digit;
        }
        Compare(ref, g.data(), t);
    }
    ExpectMostCompared(t, n);
}

// Givens taken from a valid full board: from a handful up to nearly full,
// most with several completions.
TEST(SolverReference, BoardsWithACompletion) {
    Reference ref(kCallLimit);
    Rng rng(Seed() + 1);
    Tally t;
    const long n = BoardsOfEachKind(3000);
    for (long i = 0; i < n; ++i) {
        const Grid full = RandomSolution(rng);
        Compare(ref, KeepCells(full, rng.Below(82), rng).data(), t);
    }
    ExpectMostCompared(t, n);
}

// The same with one to three wrong digits: contradictions found early, late
// or never (a board filled by propagation alone is not checked).
TEST(SolverReference, BoardsWithWrongDigits) {
    Reference ref(kCallLimit);
    Rng rng(Seed() + 2);
    Tally t;
    const long n = BoardsOfEachKind(3000);
    for (long i = 0; i < n; ++i) {
        const Grid full = RandomSolution(rng);
        Grid g = KeepCells(full, 20 + rng.Below(62), rng);
        const int wrong = 1 + rng.Below(3);
        for (int k = 0; k < wrong; ++k) g[rng.Below(81)] = RandomDigit(rng);
        Compare(ref, g.data(), t);
    }
    ExpectMostCompared(t, n);
}

// Full or nearly full boards, right or wrong, and boards with values above 9.
TEST(SolverReference, FullBoardsAndValuesAboveNine) {
    Reference ref(kCallLimit);
    Rng rng(Seed() + 3);
    Tally t;
    const long n = BoardsOfEachKind(3000);
    for (long i = 0; i < n; ++i) {
        Grid g = RandomSolution(rng);
        const int changes = rng.Below(6);
        for (int k = 0; k < changes; ++k) {
            const int cell = rng.Below(81);
            switch (rng.Below(3)) {
                case 0: g[cell] = 0; break;
                case 1: g[cell] = RandomDigit(rng); break;
                default: g[cell] = static_cast<std::uint8_t>(10 + rng.Below(246)); break;
            }
        }
        Compare(ref, g.data(), t);
    }
    ExpectMostCompared(t, n);
}

}  // namespace
