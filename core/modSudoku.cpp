// The constraint solver. Every order in here (peers, digits high to low,
// the phases of HiddenSingles, the two cell scans of the trial) decides which
// completion a board with several solutions gets and how many trial steps a
// solve takes, so none of them may change.
//
// A digit d is bit d-1 of a 9-bit mask; 511 holds all nine. Counts and
// highest digits come from the BitCount and HighBit tables, the peers of a
// cell from one flat table. A trial level keeps its copy of the state on the
// stack and restores it by a plain copy; nothing is allocated during a solve.
//
// Where the straightforward reading of a step walks cells digit by digit,
// the code here gets the same answer from whole units at once (see "Single
// places" below); the results, down to the number of SearchCell calls, are
// the same.

#include "core/modSudoku.h"

#include <cstring>
#include <utility>

namespace modSudoku {
namespace detail {

// ---- Tables, built once by InitTables -------------------------------------
std::int32_t BitCount[512];
std::int32_t HighBit[512];
std::int32_t DigitMask[10];
std::int32_t MaskDigit[512];
std::int32_t Peers[1620];
std::int32_t PeerStart[81];
std::int32_t CellCol[81];
std::int32_t CellRow[81];
std::int32_t RowStart[81];
std::int32_t CellBox[81];
std::int32_t BoxStart[81];
std::int32_t BoxCell[81];  // cell -> box-major position; its own inverse
bool TablesReady = false;

// ---- State of one solve, overwritten by LoadBoard ---------------------------
std::int32_t Cand[81];
std::int32_t SolveQueue[81];
std::int32_t RowDone[9];
std::int32_t ColDone[9];
std::int32_t BoxDone[9];
std::int32_t QueueHead = 0;
std::int32_t QueueTail = 0;
std::int32_t Unsolved = 0;
bool Solved = false;

long SearchCallCount = 0;

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
        for (int j = 0; j < m; ++j) {
            BitCount[m | j] = BitCount[j] + 1;
            HighBit[m | j] = m;
        }
    }

    for (int c = 0; c < 81; ++c) {
        const int row = c / 9;
        const int col = c % 9;
        PeerStart[c] = c * 20;
        CellCol[c] = col;
        CellRow[c] = row;
        RowStart[c] = 9 * row;
        CellBox[c] = 3 * (row / 3) + col / 3;
        BoxStart[c] = 9 * CellBox[c];
        BoxCell[c] = 9 * CellBox[c] + 3 * (row % 3) + col % 3;
    }

    int k = 0;
    for (int c = 0; c < 81; ++c) {
        const int row = CellRow[c];
        const int col = CellCol[c];
        // The rest of the box, in ascending cell numbers.
        for (int i = BoxStart[c]; i <= BoxStart[c] + 8; ++i)
            if (BoxCell[i] != c) Peers[k++] = BoxCell[i];
        // The column outside the box, top to bottom.
        for (int r = 0; r < 9; ++r)
            if (r / 3 != row / 3) Peers[k++] = 9 * r + col;
        // The row outside the box, left to right.
        for (int x = 0; x < 9; ++x)
            if (x / 3 != col / 3) Peers[k++] = 9 * row + x;
    }

    TablesReady = true;
}

// Decides a cell by a given digit or a single place.
inline void CommitCell(int cell, std::int32_t bit) {
    Cand[cell] = bit;
    RowDone[CellRow[cell]] |= bit;
    ColDone[CellCol[cell]] |= bit;
    BoxDone[CellBox[cell]] |= bit;
    SolveQueue[QueueTail] = cell;
    ++QueueTail;
    --Unsolved;
}

// Every unit must still hold all nine digits among its candidates: row k
// and box k for k = 0..8, then the columns. The only test for a
// contradiction anywhere in the solver.
bool CheckUnits() {
    for (int k = 0; k < 9; ++k) {
        const std::int32_t* r = &Cand[9 * k];
        if ((r[0] | r[1] | r[2] | r[3] | r[4] | r[5] | r[6] | r[7] | r[8]) != 511) return false;
        const std::int32_t* b = &Cand[BoxCell[9 * k]];
        if ((b[0] | b[1] | b[2] | b[9] | b[10] | b[11] | b[18] | b[19] | b[20]) != 511) return false;
    }
    for (int col = 0; col < 9; ++col) {
        const std::int32_t* c = &Cand[col];
        if ((c[0] | c[9] | c[18] | c[27] | c[36] | c[45] | c[54] | c[63] | c[72]) != 511) return false;
    }
    return true;
}

// Takes the next decided cell off the queue and strikes its digit from its
// undecided peers; a peer left with one digit joins the queue. Decided peers
// are left alone, even with the same digit. (The digit m of a queued cell is
// a single bit, so "x holds m and is not m" is "x undecided and holding m".)
inline void PropagateNext() {
    const int c = SolveQueue[QueueHead];
    const std::int32_t m = Cand[c];
    const std::int32_t* peer = &Peers[PeerStart[c]];
    for (int k = 0; k < 20; ++k) {
        const int p = peer[k];
        const std::int32_t x = Cand[p];
        if (!(x & m) || x == m) continue;
        const std::int32_t y = x ^ m;
        Cand[p] = y;
        if (!(y & (y - 1))) {  // two candidates before, one now: decided
            RowDone[CellRow[p]] |= y;
            ColDone[CellCol[p]] |= y;
            BoxDone[CellBox[p]] |= y;
            SolveQueue[QueueTail] = p;
            ++QueueTail;
            --Unsolved;
        }
    }
    ++QueueHead;
}

// ---- Single places -----------------------------------------------------
//
// For each unit the digits that have exactly one holder are found in one
// sweep over its nine masks ("once" and "twice" seen). Walking the cells
// digit by digit and stopping at a second holder gives the same answer.
// Digits tried by SearchCell are kept in RowTry, Col0Try and BoxTry, the
// units of the cells on the current path of trial: such a digit is missing
// from the Done arrays, but its only holder is the decided tried cell, which
// is never committed, so it is dropped before the holder is looked for.

std::int32_t RowTry[9];
std::int32_t BoxTry[9];
std::int32_t Col0Try = 0;

struct OnceTwice {
    std::int32_t once, twice;
};

inline OnceTwice Three(std::int32_t a, std::int32_t b, std::int32_t c) {
    const std::int32_t ab = a | b;
    return {ab | c, (a & b) | (c & ab)};
}

inline OnceTwice Join(OnceTwice x, OnceTwice y, OnceTwice z) {
    const std::int32_t xy = x.once | y.once;
    return {xy | z.once, x.twice | y.twice | z.twice | (x.once & y.once) | (z.once & xy)};
}

inline std::int32_t Lone(OnceTwice u) { return u.once & ~u.twice; }

inline OnceTwice ScanRow(int row) {
    const std::int32_t* p = &Cand[9 * row];
    return Join(Three(p[0], p[1], p[2]), Three(p[3], p[4], p[5]), Three(p[6], p[7], p[8]));
}

inline OnceTwice ScanBox(int box) {
    const std::int32_t* p = &Cand[BoxCell[9 * box]];
    return Join(Three(p[0], p[1], p[2]), Three(p[9], p[10], p[11]), Three(p[18], p[19], p[20]));
}

inline OnceTwice ScanCol0() {
    const std::int32_t* p = Cand;
    return Join(Three(p[0], p[9], p[18]), Three(p[27], p[36], p[45]), Three(p[54], p[63], p[72]));
}

// The whole board in one sweep, four cells to a vector: every row and box
// with its once and twice sets, column 0 likewise, and the digits present in
// all nine columns.
using V4 = std::int32_t __attribute__((vector_size(16)));

inline V4 Load4(const std::int32_t* p) {
    V4 v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// Plain copy of N integers, written out as vector moves: short enough that
// a string-move instruction (what a copy loop or memcpy becomes) would cost
// more than it moves.
template <std::size_t... I>
inline void CopyPieces(std::int32_t* dst, const std::int32_t* src, std::index_sequence<I...>) {
    V4 v[sizeof...(I)];
    ((std::memcpy(&v[I], src + 4 * I, sizeof(V4))), ...);
    ((std::memcpy(dst + 4 * I, &v[I], sizeof(V4))), ...);
}

template <int N>
inline void CopyInts(std::int32_t* dst, const std::int32_t* src) {
    CopyPieces(dst, src, std::make_index_sequence<N / 4>{});
    for (int i = N / 4 * 4; i < N; ++i) dst[i] = src[i];
}

struct BoardSweep {
    std::int32_t rowOnce[12];  // rows 0..8; room for whole vectors
    std::int32_t rowTwice[12];
    OnceTwice boxes[9];
    OnceTwice col0;
    std::int32_t inAllCols;
};

// 4 x 4 transpose: lane i of result k is lane k of input i.
inline void Transpose(V4& r0, V4& r1, V4& r2, V4& r3) {
    const V4 t0 = __builtin_shufflevector(r0, r1, 0, 4, 1, 5);
    const V4 t1 = __builtin_shufflevector(r2, r3, 0, 4, 1, 5);
    const V4 t2 = __builtin_shufflevector(r0, r1, 2, 6, 3, 7);
    const V4 t3 = __builtin_shufflevector(r2, r3, 2, 6, 3, 7);
    r0 = __builtin_shufflevector(t0, t1, 0, 1, 4, 5);
    r1 = __builtin_shufflevector(t0, t1, 2, 3, 6, 7);
    r2 = __builtin_shufflevector(t2, t3, 0, 1, 4, 5);
    r3 = __builtin_shufflevector(t2, t3, 2, 3, 6, 7);
}

inline void SweepBoard(BoardSweep& sw) {
    V4 a[9], b[9];
    std::int32_t c[9];
    for (int r = 0; r < 9; ++r) {
        const std::int32_t* p = &Cand[9 * r];
        a[r] = Load4(p);
        b[r] = Load4(p + 4);
        c[r] = p[8];
    }

    // Rows 0..7, four at a time: cells k and k + 4 side by side, then the
    // four rows transposed so that each lane holds one row, then cell 8.
    for (int g = 0; g < 8; g += 4) {
        V4 o[4], t[4];
        for (int i = 0; i < 4; ++i) {
            o[i] = a[g + i] | b[g + i];
            t[i] = a[g + i] & b[g + i];
        }
        Transpose(o[0], o[1], o[2], o[3]);
        Transpose(t[0], t[1], t[2], t[3]);
        const V4 o01 = o[0] | o[1], t01 = t[0] | t[1] | (o[0] & o[1]);
        const V4 o23 = o[2] | o[3], t23 = t[2] | t[3] | (o[2] & o[3]);
        V4 once = o01 | o23, twice = t01 | t23 | (o01 & o23);
        const V4 last = {c[g], c[g + 1], c[g + 2], c[g + 3]};
        twice |= once & last;
        once |= last;
        std::memcpy(&sw.rowOnce[g], &once, sizeof once);
        std::memcpy(&sw.rowTwice[g], &twice, sizeof twice);
    }
    const OnceTwice row8 = ScanRow(8);
    sw.rowOnce[8] = row8.once;
    sw.rowTwice[8] = row8.twice;

    // Bands of three rows: each column of the band as once and twice, from
    // which come the boxes, column 0 and the column unions.
    V4 colsA = {0, 0, 0, 0}, colsB = {0, 0, 0, 0};
    std::int32_t cols8 = 0;
    OnceTwice col0Band[3];
    for (int band = 0; band < 3; ++band) {
        const V4* x = &a[3 * band];
        const V4* y = &b[3 * band];
        const std::int32_t* z = &c[3 * band];
        const V4 ab = x[0] | x[1];
        const V4 ao = ab | x[2], at = (x[0] & x[1]) | (x[2] & ab);
        const V4 bb = y[0] | y[1];
        const V4 bo = bb | y[2], bt = (y[0] & y[1]) | (y[2] & bb);
        const OnceTwice c8 = Three(z[0], z[1], z[2]);
        colsA |= ao;
        colsB |= bo;
        cols8 |= c8.once;
        col0Band[band] = {ao[0], at[0]};
        sw.boxes[3 * band] = Join({ao[0], at[0]}, {ao[1], at[1]}, {ao[2], at[2]});
        sw.boxes[3 * band + 1] = Join({ao[3], at[3]}, {bo[0], bt[0]}, {bo[1], bt[1]});
        sw.boxes[3 * band + 2] = Join({bo[2], bt[2]}, {bo[3], bt[3]}, c8);
    }
    sw.col0 = Join(col0Band[0], col0Band[1], col0Band[2]);
    const V4 all = colsA & colsB;
    sw.inAllCols = all[0] & all[1] & all[2] & all[3] & cols8;
}

enum class SinglesResult { Decided, Stuck, Broken };

// One pass of single places, for an empty queue: rows, then column 0, then
// boxes. Within a unit the digits go from high to low, each looked up in the
// masks as they stand at that moment, so a commit (which strips the other
// digits of its cell) is seen by the lower digits of the same unit; the
// digits missing from the unit are taken once, before its first digit. A
// phase that decides anything ends the pass.
//
// With checkFirst the pass begins with CheckUnits on the same sweep and
// answers Broken, deciding nothing, when it fails.
SinglesResult HiddenSingles(bool checkFirst) {
    // A commit changes only its own row (or column 0, or box), and the pass
    // ends after a phase that committed, so the sweep stays valid for every
    // unit not yet visited.
    BoardSweep sw;
    SweepBoard(sw);
    const OnceTwice* boxes = sw.boxes;

    if (checkFirst) {
        std::int32_t all = sw.inAllCols;
        for (int k = 0; k < 9; ++k) all &= sw.rowOnce[k] & boxes[k].once;
        if (all != 511) return SinglesResult::Broken;
    }

    bool decided = false;

    // Rows. A digit is committed when it has one holder in the row, that
    // holder is still undecided, and the digit is not yet done in its box.
    for (int row = 0; row < 9; ++row) {
        const std::int32_t missing = 511 & ~RowDone[row] & ~RowTry[row];
        std::int32_t lone = sw.rowOnce[row] & ~sw.rowTwice[row] & missing;
        const std::int32_t* r = &Cand[9 * row];
        while (lone != 0) {
            const std::int32_t bit = HighBit[lone];
            int k = 0;
            while (!(r[k] & bit)) ++k;
            const int holder = 9 * row + k;
            if (BitCount[r[k]] > 1 && !(BoxDone[CellBox[holder]] & bit)) {
                CommitCell(holder, bit);
                decided = true;
                lone = Lone(ScanRow(row)) & missing & (bit - 1);
            } else {
                lone &= ~bit;
            }
        }
    }
    if (decided) return SinglesResult::Decided;

    // Columns. The walk of a column stops at cell 72 and a holder counts only
    // when the walk ran past cell 80, which only column 0 does: this phase
    // commits in column 0 alone, and that is how the game has always searched.
    // The walks of columns 1 to 8 change nothing and are left out.
    {
        const std::int32_t missing = 511 & ~ColDone[0] & ~Col0Try;
        std::int32_t lone = Lone(sw.col0) & missing;
        while (lone != 0) {
            const std::int32_t bit = HighBit[lone];
            int holder = 0;
            while (!(Cand[holder] & bit)) holder += 9;
            if (BitCount[Cand[holder]] > 1 && !(BoxDone[CellBox[holder]] & bit)) {
                CommitCell(holder, bit);
                decided = true;
                lone = Lone(ScanCol0()) & missing & (bit - 1);
            } else {
                lone &= ~bit;
            }
        }
    }
    if (decided) return SinglesResult::Decided;

    // Boxes, cells in ascending order. Here the holder's row and column must
    // both still lack the digit.
    for (int b = 0; b < 9; ++b) {
        const std::int32_t missing = 511 & ~BoxDone[b] & ~BoxTry[b];
        std::int32_t lone = Lone(boxes[b]) & missing;
        const std::int32_t* cells = &BoxCell[9 * b];
        while (lone != 0) {
            const std::int32_t bit = HighBit[lone];
            int k = 0;
            while (!(Cand[cells[k]] & bit)) ++k;
            const int holder = cells[k];
            if (BitCount[Cand[holder]] > 1 && !(ColDone[CellCol[holder]] & bit) &&
                !(RowDone[CellRow[holder]] & bit)) {
                CommitCell(holder, bit);
                decided = true;
                lone = Lone(ScanBox(b)) & missing & (bit - 1);
            } else {
                lone &= ~bit;
            }
        }
    }
    return decided ? SinglesResult::Decided : SinglesResult::Stuck;
}

// Tries the candidates of cell from the highest digit down. True when a
// full, valid board stands in Cand.
bool SearchCell(int cell) {
    ++SearchCallCount;
    if (Solved) return true;

    // This level's copy of the state: 108 integers and three scalars.
    std::int32_t savedCand[81];
    std::int32_t savedRowDone[9];
    std::int32_t savedColDone[9];
    std::int32_t savedBoxDone[9];
    CopyInts<81>(savedCand, Cand);
    CopyInts<9>(savedRowDone, RowDone);
    CopyInts<9>(savedColDone, ColDone);
    CopyInts<9>(savedBoxDone, BoxDone);
    const std::int32_t savedHead = QueueHead;
    const std::int32_t savedTail = QueueTail;
    const std::int32_t savedUnsolved = Unsolved;
    std::int32_t tryMask = Cand[cell];

    const int row = CellRow[cell];
    const int box = CellBox[cell];
    const bool col0 = CellCol[cell] == 0;
    const std::int32_t savedRowTry = RowTry[row];
    const std::int32_t savedBoxTry = BoxTry[box];
    const std::int32_t savedCol0Try = Col0Try;

    for (;;) {
        // The tried digit goes on the queue but not into the Done arrays.
        QueueTail = savedTail + 1;
        const std::int32_t bit = HighBit[tryMask];
        Cand[cell] = bit;
        SolveQueue[QueueTail - 1] = cell;
        --Unsolved;
        RowTry[row] = savedRowTry | bit;
        BoxTry[box] = savedBoxTry | bit;
        if (col0) Col0Try = savedCol0Try | bit;

        bool stuck = false;
        for (;;) {
            if (Unsolved <= 0) break;
            if (QueueHead == QueueTail) {
                const SinglesResult r = HiddenSingles(true);
                if (r == SinglesResult::Broken) break;
                if (r == SinglesResult::Stuck) {
                    stuck = true;
                    break;
                }
            }
            PropagateNext();
        }

        if (stuck) {
            // Highest-numbered cell among those with the fewest candidates,
            // never one with all nine, nor the tried cell itself (which holds
            // one candidate, so the count test passes it over already).
            // Counts are compared less 2 and unsigned: n > 1 and n < best.
            int choice = -1;
            std::uint32_t best = 9 - 2;
            for (int i = 80; i >= 0; --i) {
                const auto n = static_cast<std::uint32_t>(BitCount[Cand[i]] - 2);
                if (n < best) {
                    choice = i;
                    best = n;
                    if (n == 0) break;
                }
            }
            if (choice >= 0 && SearchCell(choice)) return true;
        } else if (Unsolved == 0 && CheckUnits()) {
            Solved = true;
            return true;
        }

        RowTry[row] = savedRowTry;
        BoxTry[box] = savedBoxTry;
        Col0Try = savedCol0Try;

        if (BitCount[tryMask] == 1) return false;  // last candidate; caller restores

        tryMask &= ~bit;
        QueueHead = savedHead;
        Unsolved = savedUnsolved;
        CopyInts<81>(Cand, savedCand);
        CopyInts<9>(RowDone, savedRowDone);
        CopyInts<9>(ColDone, savedColDone);
        CopyInts<9>(BoxDone, savedBoxDone);
    }
}

}  // namespace detail

using namespace detail;

bool LoadBoard(const Board& digits) {
    if (!TablesReady) InitTables();

    for (int k = 0; k < 9; ++k) {
        RowDone[k] = 0;
        ColDone[k] = 0;
        BoxDone[k] = 0;
        RowTry[k] = 0;
        BoxTry[k] = 0;
    }
    Col0Try = 0;
    QueueHead = 0;
    QueueTail = 0;
    detail::Unsolved = 81;
    SearchCallCount = 0;

    // Givens wait in the queue in ascending cell order; no peer is touched yet.
    for (int cell = 0; cell < 81; ++cell) {
        const int digit = digits[cell];
        if (digit == 0 || digit > 9)
            Cand[cell] = 511;
        else
            CommitCell(cell, DigitMask[digit]);
    }

    // Only a unit with all nine cells filled can fail here.
    const bool ok = CheckUnits();
    if (!ok) detail::Unsolved = 0;
    return ok;
}

bool SolveBoard() {
    SearchCallCount = 0;
    while (detail::Unsolved > 0) {
        if (QueueHead == QueueTail && HiddenSingles(false) == SinglesResult::Stuck) break;
        PropagateNext();
    }
    // Filled by propagation and single places alone: reported as solved
    // without a check of the units.
    if (detail::Unsolved == 0) return true;

    Solved = false;

    // Lowest-numbered cell among those with the fewest candidates.
    int choice = -1;
    std::int32_t best = 10;
    for (int cell = 0; cell < 81; ++cell) {
        const std::int32_t n = BitCount[Cand[cell]];
        if (n > 1 && n < best) {
            choice = cell;
            best = n;
            if (n == 2) break;
        }
    }
    if (choice < 0) return false;
    return SearchCell(choice);
}

void GetSolution(Board& digits) {
    for (int c = 0; c < 81; ++c) digits[c] = static_cast<std::uint8_t>(MaskDigit[Cand[c]]);
}

long SearchCalls() { return SearchCallCount; }

int Unsolved() { return detail::Unsolved; }

const std::int32_t* CellPeers(int cell) {
    if (!TablesReady) InitTables();
    if (cell < 0 || cell > 80) return nullptr;
    return &Peers[PeerStart[cell]];
}

}  // namespace modSudoku
