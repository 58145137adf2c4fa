// The constraint solver. Every order in here (peers, digits high to low,
// the phases of HiddenSingles, the two cell scans of the trial) decides which
// completion a board with several solutions gets and how many trial steps a
// solve takes, so none of them may change.
//
// A digit d is bit d-1 of a 9-bit mask; 511 holds all nine. The tables of
// InitTables (BitCount, HighBit, Peers and the rest) are built once.
//
// Besides the candidate mask of each cell (Cand) the state keeps the same
// facts arranged for the questions the solver asks, brought up to date
// wherever a candidate goes:
//
//   Holders     for each digit, the set of undecided cells that hold it: the
//               peers to strike in PropagateNext, the place of a single.
//   CountPlane  the number of candidates of each undecided cell, one bit of
//               it per set of cells (decided cells count 0): the cells decided
//               by a strike, the cell to try next.
//   UnitCount   for each digit and each row, column and box, how many cells
//               of the unit hold the digit, plus 128 when the digit is done
//               (RowDone, ColDone, BoxDone) or being tried in the unit:
//               CheckUnits looks for a 0, the single places for a 1.
//
// A trial that has left some unit without a digit can only fail; it is cut
// short when the state it would leave is sure to be overwritten (see
// SearchCell).
//
// None of this changes what is computed: the results, down to the number of
// SearchCell calls and the state left after a failed solve, are those of
// walking the cells one by one, digit by digit. A trial level keeps its copy
// of the state on the stack and restores it by a plain copy; nothing is
// allocated during a solve.

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

// Units are numbered for the counts: rows 0..8, columns 9..17, boxes 18..26.
constexpr int kRowUnit = 0;
constexpr int kColUnit = 9;
constexpr int kBoxUnit = 18;

// The units in which single places are committed: the rows, column 0 and the
// boxes (see HiddenSingles).
constexpr std::uint32_t kRowUnits = 0x1FFu << kRowUnit;
constexpr std::uint32_t kCol0Unit = 1u << kColUnit;
constexpr std::uint32_t kBoxUnits = 0x1FFu << kBoxUnit;

// ---- Vectors of 16 bytes -------------------------------------------------------

using V16 = std::uint8_t __attribute__((vector_size(16)));
using C16 = char __attribute__((vector_size(16)));
using U2 = std::uint64_t __attribute__((vector_size(16)));

template <class V>
inline V Load(const void* p) {
    V v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

template <class V>
inline void Store(void* p, V v) {
    std::memcpy(p, &v, sizeof v);
}

// Bit i set when byte i of v is 0xFF (v holds only 0x00 and 0xFF bytes).
inline unsigned MoveMask(V16 v) {
#if defined(__SSE2__)
    return static_cast<unsigned>(__builtin_ia32_pmovmskb128(reinterpret_cast<C16>(v)));
#else
    unsigned m = 0;
    for (int i = 0; i < 16; ++i) m |= static_cast<unsigned>(v[i] >> 7) << i;
    return m;
#endif
}

// ---- Sets of cells ---------------------------------------------------------------

// Bit i of lane 0 is cell i (0..63), bit i of lane 1 is cell 64 + i.
using CellSet = U2;

inline bool Empty(CellSet s) { return (s[0] | s[1]) == 0; }

// Calls f(cell) for each cell of s, in ascending order.
template <class F>
inline void ForEachCell(CellSet s, F&& f) {
    for (std::uint64_t w = s[0]; w != 0; w &= w - 1) f(__builtin_ctzll(w));
    for (std::uint64_t w = s[1]; w != 0; w &= w - 1) f(64 + __builtin_ctzll(w));
}

CellSet CellBit[81];     // the cell alone
CellSet PeerSet[81];     // its 20 peers
CellSet BoxPeerSet[81];  // its peers in the box
CellSet ColPeerSet[81];  // its peers in the column outside the box
CellSet RowPeerSet[81];  // its peers in the row outside the box
CellSet UnitSet[27];     // the cells of each unit
CellSet AllCells;

// For each cell, its three units as a line of 32 bytes with 1 at the unit
// numbers, to take from a digit's line of UnitCount.
alignas(16) std::uint8_t CellUnitOnes[81][32];

// ---- State of one solve, overwritten by LoadBoard ---------------------------
//
// Everything a trial level copies and restores is in one block, so that the
// copy is a single run of vector moves.
struct SolverState {
    // Holders[d]: the undecided cells that hold digit d + 1.
    CellSet Holders[9];
    // CountPlane[k]: the undecided cells whose number of candidates has bit k.
    CellSet CountPlane[4];
    // UnitCount[d][u]: how many cells of unit u hold digit d + 1, plus
    // kMarked when the digit is done or being tried in the unit. Bytes 27..31
    // of each line are 255 and never change.
    alignas(16) std::uint8_t UnitCount[9][32];
    // Candidate mask of each cell; 81..87 are padding.
    alignas(16) std::uint16_t Cand[88];
};
static_assert(sizeof(SolverState) % 16 == 0);

SolverState State;
std::uint16_t* const Cand = State.Cand;

// True when a count of UnitCount is 0: some unit has lost a digit. Counts
// only fall during a trial, so once set it stays set until the state is
// restored; it is set where counts fall (DecideCell, PropagateNext).
bool LostDigit = false;

// The number of trial levels on the current path whose digit being tried is
// not their last. While it is above 0, the state a failing trial leaves is
// certain to be overwritten by a restore before anyone sees it.
int OpenLevels = 0;

std::int32_t SolveQueue[81];
std::int32_t QueueHead = 0;
std::int32_t QueueTail = 0;
std::int32_t Unsolved = 0;
bool Solved = false;

long SearchCallCount = 0;

// The stop of the running solve, if any; Aborted once it was heeded. Every
// trial level then returns false without trying more digits.
SearchStop* Stop = nullptr;
bool Aborted = false;

// The mark in UnitCount of a digit that is done in a unit, or being tried
// there. A marked count is never 0 (the decided cell that put the mark there
// holds the digit for as long as the mark stands) and never 1, so neither
// the unit check nor the single places see it.
//
// A tried digit is kept out of RowDone, ColDone and BoxDone; single places
// then find its only holder in the unit, the decided tried cell, and pass
// over it, and marking it gives the same. Where a phase tests only Done (the
// box of the holder in the row and column phases, its row and column in the
// box phase), the mark of a tried digit never stands in the way either: the
// tried cell has been propagated, so no undecided cell in its row, column or
// box still holds the digit, and the holder of a single place is undecided.
constexpr std::uint8_t kMarked = 128;
alignas(16) std::uint8_t CellUnitMarks[81][32];  // kMarked at the unit numbers

// A trial that can only fail and whose remaining work would be overwritten.
inline bool Doomed() { return LostDigit && OpenLevels > 0; }

// ---- Tables ----------------------------------------------------------------------

inline CellSet OneCell(int cell) {
    return cell < 64 ? CellSet{std::uint64_t{1} << cell, 0} : CellSet{0, std::uint64_t{1} << (cell - 64)};
}

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

    AllCells = CellSet{0, 0};
    for (int c = 0; c < 81; ++c) {
        CellBit[c] = OneCell(c);
        AllCells |= CellBit[c];
        const int units[3] = {kRowUnit + CellRow[c], kColUnit + CellCol[c], kBoxUnit + CellBox[c]};
        for (int u : units) {
            UnitSet[u] |= CellBit[c];
            CellUnitOnes[c][u] = 1;
            CellUnitMarks[c][u] = kMarked;
        }
        PeerSet[c] = BoxPeerSet[c] = ColPeerSet[c] = RowPeerSet[c] = CellSet{0, 0};
        for (int j = 0; j < 20; ++j) {
            const CellSet p = OneCell(Peers[PeerStart[c] + j]);
            PeerSet[c] |= p;
            (j < 8 ? BoxPeerSet[c] : j < 14 ? ColPeerSet[c] : RowPeerSet[c]) |= p;
        }
    }

    TablesReady = true;
}

// ---- Keeping the state ---------------------------------------------------------

// Plain copy of the whole state, written out as vector moves: a copy loop or
// memcpy of this size becomes a string-move instruction, which costs more
// than it moves.
template <std::size_t... I>
inline void CopyVectors(std::uint8_t* dst, const std::uint8_t* src, std::index_sequence<I...>) {
    ((Store(dst + 16 * I, Load<V16>(src + 16 * I))), ...);
}

inline void CopyState(SolverState& dst, const SolverState& src) {
    CopyVectors(reinterpret_cast<std::uint8_t*>(&dst), reinterpret_cast<const std::uint8_t*>(&src),
                std::make_index_sequence<sizeof(SolverState) / 16>{});
}

// Marks digit d as done or tried in the units of cell.
inline void MarkUnits(int d, int cell) {
    std::uint8_t* const line = State.UnitCount[d];
    const std::uint8_t* const marks = CellUnitMarks[cell];
    Store(line, Load<V16>(line) | Load<V16>(marks));
    Store(line + 16, Load<V16>(line + 16) | Load<V16>(marks + 16));
}

// Sets an undecided cell to the one candidate bit: its other digits leave
// the counts of its units, and the cell leaves the holders and the count
// planes. (The marks and the queue are the caller's.)
inline void DecideCell(int cell, std::uint16_t bit) {
    const CellSet out = ~CellBit[cell];
    for (CellSet& plane : State.CountPlane) plane &= out;
    for (CellSet& holders : State.Holders) holders &= out;
    // Take 1 from the counts of the cell's units for each struck digit.
    const V16 lo = Load<V16>(CellUnitOnes[cell]);
    const V16 hi = Load<V16>(CellUnitOnes[cell] + 16);
    V16 zero = {};
    for (unsigned struck = Cand[cell] & ~bit; struck != 0; struck &= struck - 1) {
        std::uint8_t* const line = State.UnitCount[__builtin_ctz(struck)];
        const V16 a = Load<V16>(line) - lo;
        const V16 b = Load<V16>(line + 16) - hi;
        Store(line, a);
        Store(line + 16, b);
        zero |= reinterpret_cast<V16>(a == V16{}) | reinterpret_cast<V16>(b == V16{});
    }
    LostDigit |= MoveMask(zero) != 0;
    Cand[cell] = bit;
}

// Decides a cell by a given digit or a single place.
inline void CommitCell(int cell, std::uint16_t bit) {
    DecideCell(cell, bit);
    MarkUnits(MaskDigit[bit] - 1, cell);
    SolveQueue[QueueTail] = cell;
    ++QueueTail;
    --Unsolved;
}

// Every unit must still hold all nine digits among its candidates, that is
// no count of UnitCount is 0. The only test for a contradiction anywhere in
// the solver. (Which unit fails first does not matter: the answer is all
// there is.)
inline bool CheckUnits() { return !LostDigit; }

// Takes the next decided cell off the queue and strikes its digit from its
// undecided peers; a peer left with one digit joins the queue. Decided peers
// are left alone, even with the same digit.
//
// The peers to strike are the undecided holders of the digit among the
// peers, found as one set; the peers left with one digit join the queue in
// the order of the peer table: box, then column, then row, each ascending.
inline void PropagateNext() {
    const int c = SolveQueue[QueueHead];
    ++QueueHead;
    const std::uint16_t m = Cand[c];
    const int d = MaskDigit[m] - 1;
    const CellSet strike = State.Holders[d] & PeerSet[c];
    if (Empty(strike)) return;
    State.Holders[d] &= ~strike;

    // Candidates and unit counts.
    V16 lo = {}, hi = {};
    ForEachCell(strike, [&](int p) {
        Cand[p] ^= m;
        lo += Load<V16>(CellUnitOnes[p]);
        hi += Load<V16>(CellUnitOnes[p] + 16);
    });
    std::uint8_t* const line = State.UnitCount[d];
    const V16 a = Load<V16>(line) - lo;
    const V16 b = Load<V16>(line + 16) - hi;
    Store(line, a);
    Store(line + 16, b);
    LostDigit |= MoveMask(reinterpret_cast<V16>(a == V16{}) | reinterpret_cast<V16>(b == V16{})) != 0;

    // One less candidate in each struck cell: a subtraction on the bit planes.
    CellSet* const plane = State.CountPlane;
    CellSet borrow = strike;
    for (int k = 0; k < 4; ++k) {
        const CellSet was = plane[k];
        plane[k] = was ^ borrow;
        borrow &= ~was;
    }
    // Cells left with one candidate are decided.
    const CellSet decided = strike & plane[0] & ~(plane[1] | plane[2] | plane[3]);
    if (Empty(decided)) return;
    plane[0] &= ~decided;

    auto enqueue = [](int p) {
        const std::uint16_t y = Cand[p];
        const int e = MaskDigit[y] - 1;
        State.Holders[e] &= ~CellBit[p];
        MarkUnits(e, p);
        SolveQueue[QueueTail] = p;
        ++QueueTail;
        --Unsolved;
    };
    ForEachCell(decided & BoxPeerSet[c], enqueue);
    ForEachCell(decided & ColPeerSet[c], enqueue);
    ForEachCell(decided & RowPeerSet[c], enqueue);
}

// ---- Single places -----------------------------------------------------

enum class SinglesResult { Decided, Stuck, Broken };

// The digits that have one holder in unit u and are missing from it.
inline unsigned LoneDigits(int u) {
    unsigned m = 0;
    for (int d = 0; d < 9; ++d) m |= static_cast<unsigned>(State.UnitCount[d][u] == 1) << d;
    return m;
}

inline bool Marked(int d, int u) { return State.UnitCount[d][u] & kMarked; }

// The single places of one unit, digits from high to low, and the commits
// among them; true when one was committed. They are the digits that have one
// holder in the unit and are missing from it (neither done nor tried there):
// such a holder is undecided, since a decided cell's digit is done or tried
// in each of its units. canCommit(holder, d) tells whether the
// phase lets the holder take digit d + 1.
//
// Each digit is looked up in the counts as they stand at that moment, so a
// commit (which strips the other digits of its cell) is seen by the lower
// digits of the unit. A commit marks only its own digit, so the digits
// missing from the unit stay as they were before its first digit.
//
// A commit that leaves a unit without a digit dooms the trial (see
// SearchCell); when the rest of the work would only be overwritten, the pass
// stops there.
template <class CanCommit>
inline bool UnitSingles(int u, CanCommit canCommit) {
    bool decided = false;
    unsigned lone = LoneDigits(u);
    while (lone != 0) {
        const int d = 31 - __builtin_clz(lone);
        const CellSet h = State.Holders[d] & UnitSet[u];
        const int holder = Empty(h) ? -1 : h[0] ? __builtin_ctzll(h[0]) : 64 + __builtin_ctzll(h[1]);
        if (holder >= 0 && canCommit(holder, d)) {
            CommitCell(holder, static_cast<std::uint16_t>(1u << d));
            decided = true;
            if (Doomed()) break;
            lone = LoneDigits(u) & ((1u << d) - 1);
        } else {
            lone &= ~(1u << d);
        }
    }
    return decided;
}

// One pass of single places, for an empty queue: rows, then column 0, then
// boxes. A phase that decides anything ends the pass.
//
// A commit changes the counts and marks of its own row, column and box only,
// and a phase visits each of its units once, so the single places found for
// all units at the start hold for each unit when its turn comes.
//
// With checkFirst the pass begins with CheckUnits and answers Broken,
// deciding nothing, when it fails.
SinglesResult HiddenSingles(bool checkFirst) {
    if (checkFirst && !CheckUnits()) return SinglesResult::Broken;

    // The units where some digit has one holder and is missing.
    std::uint32_t any;
    {
        const V16 one = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
        V16 a = {}, b = {};
        for (int d = 0; d < 9; ++d) {
            a |= reinterpret_cast<V16>(Load<V16>(State.UnitCount[d]) == one);
            b |= reinterpret_cast<V16>(Load<V16>(State.UnitCount[d] + 16) == one);
        }
        any = (MoveMask(a) | MoveMask(b) << 16) & (kRowUnits | kCol0Unit | kBoxUnits);
    }
    if (any == 0) return SinglesResult::Stuck;

    bool decided = false;

    // Rows. A digit is committed when it is not yet done in the holder's box.
    for (std::uint32_t rows = any & kRowUnits; rows != 0; rows &= rows - 1) {
        const int u = __builtin_ctz(rows);
        decided |= UnitSingles(u, [](int holder, int d) { return !Marked(d, kBoxUnit + CellBox[holder]); });
        if (decided && Doomed()) return SinglesResult::Decided;
    }
    if (decided) return SinglesResult::Decided;

    // Columns. The walk of a column stops at cell 72 and a holder counts only
    // when the walk ran past cell 80, which only column 0 does: this phase
    // commits in column 0 alone, and that is how the game has always searched.
    // The walks of columns 1 to 8 change nothing and are left out.
    if ((any & kCol0Unit) &&
        UnitSingles(kColUnit, [](int holder, int d) { return !Marked(d, kBoxUnit + CellBox[holder]); }))
        return SinglesResult::Decided;

    // Boxes. Here the holder's row and column must both still lack the digit.
    for (std::uint32_t boxes = any & kBoxUnits; boxes != 0; boxes &= boxes - 1) {
        const int u = __builtin_ctz(boxes);
        decided |= UnitSingles(u, [](int holder, int d) {
            return !Marked(d, kRowUnit + CellRow[holder]) && !Marked(d, kColUnit + CellCol[holder]);
        });
        if (decided && Doomed()) return SinglesResult::Decided;
    }
    return decided ? SinglesResult::Decided : SinglesResult::Stuck;
}

// ---- Trial ---------------------------------------------------------------------

// The undecided cells with exactly n candidates (n = 2..9), from the planes.
inline CellSet CellsWithCount(int n) {
    const CellSet* const plane = State.CountPlane;
    CellSet s = AllCells;
    for (int k = 0; k < 4; ++k) s &= (n >> k) & 1 ? plane[k] : ~plane[k];
    return s;
}

// The next cell to try after a trial got stuck: the highest-numbered cell
// among those with the fewest candidates, never one with all nine, nor the
// tried cell itself (decided, so not counted). -1 when there is none.
inline int ChooseNextCell() {
    for (int n = 2; n < 9; ++n) {
        const CellSet s = CellsWithCount(n);
        if (s[1]) return 64 + 63 - __builtin_clzll(s[1]);
        if (s[0]) return 63 - __builtin_clzll(s[0]);
    }
    return -1;
}

// Tries the candidates of cell from the highest digit down. True when a
// full, valid board stands in Cand.
bool SearchCell(int cell) {
    ++SearchCallCount;
    if (Solved) return true;
    if (Stop && (SearchCallCount & 1023) == 0 &&
        (SearchCallCount >= Stop->maxCalls || Stop->requested.load(std::memory_order_relaxed))) {
        Aborted = true;
        return false;
    }

    // This level's copy of the state.
    SolverState saved;
    CopyState(saved, State);
    const std::int32_t savedHead = QueueHead;
    const std::int32_t savedTail = QueueTail;
    const std::int32_t savedUnsolved = Unsolved;
    const bool savedLostDigit = LostDigit;
    std::int32_t tryMask = Cand[cell];

    for (;;) {
        // The tried digit goes on the queue; it is marked as tried in the
        // units of the cell, not entered as done.
        QueueTail = savedTail + 1;
        const std::uint16_t bit = static_cast<std::uint16_t>(HighBit[tryMask]);
        DecideCell(cell, bit);
        MarkUnits(MaskDigit[bit] - 1, cell);
        SolveQueue[QueueTail - 1] = cell;
        --Unsolved;
        const bool open = BitCount[tryMask] > 1;
        OpenLevels += open;

        // A unit that has lost a digit keeps it lost, so from then on the
        // trial can only fail: the next CheckUnits sees it, and nothing
        // before that calls SearchCell. The rest of its work matters only for
        // the state it leaves, and that is overwritten unless every level of
        // the path is at its last digit; only then is the trial run out.
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
            if (Doomed()) break;
            PropagateNext();
        }

        if (stuck) {
            const int choice = ChooseNextCell();
            if (choice >= 0 && SearchCell(choice)) return true;
            if (Aborted) return false;
        } else if (Unsolved == 0 && CheckUnits()) {
            Solved = true;
            return true;
        }
        OpenLevels -= open;

        if (BitCount[tryMask] == 1) return false;  // last candidate; caller restores

        tryMask &= ~bit;
        QueueHead = savedHead;
        Unsolved = savedUnsolved;
        LostDigit = savedLostDigit;
        CopyState(State, saved);
    }
}

}  // namespace detail

using namespace detail;

bool LoadBoard(const Board& digits) {
    if (!TablesReady) InitTables();

    QueueHead = 0;
    QueueTail = 0;
    detail::Unsolved = 81;
    SearchCallCount = 0;

    // The empty board: every cell holds all nine digits, every unit each
    // digit nine times.
    for (CellSet& h : State.Holders) h = AllCells;
    State.CountPlane[0] = AllCells;  // 9 = 1001 in binary
    State.CountPlane[1] = CellSet{0, 0};
    State.CountPlane[2] = CellSet{0, 0};
    State.CountPlane[3] = AllCells;
    for (auto& line : State.UnitCount) {
        std::memset(line, 9, 27);
        std::memset(line + 27, 255, 5);
    }
    for (int cell = 0; cell < 88; ++cell) Cand[cell] = cell < 81 ? 511 : 0;
    LostDigit = false;
    OpenLevels = 0;

    // Givens wait in the queue in ascending cell order; no peer is touched yet.
    for (int cell = 0; cell < 81; ++cell) {
        const int digit = digits[cell];
        if (digit != 0 && digit <= 9) CommitCell(cell, static_cast<std::uint16_t>(DigitMask[digit]));
    }

    // Only a unit with all nine cells filled can fail here.
    const bool ok = CheckUnits();
    if (!ok) detail::Unsolved = 0;
    return ok;
}

bool SolveBoard(SearchStop* stop) {
    SearchCallCount = 0;
    OpenLevels = 0;
    Aborted = false;
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
    Stop = stop;
    const bool solved = SearchCell(choice);
    Stop = nullptr;
    return solved;
}

void GetSolution(Board& digits) {
    for (int c = 0; c < 81; ++c) digits[c] = static_cast<std::uint8_t>(MaskDigit[Cand[c]]);
}

long SearchCalls() { return SearchCallCount; }

bool Stopped() { return Aborted; }

int Unsolved() { return detail::Unsolved; }

const std::int32_t* CellPeers(int cell) {
    if (!TablesReady) InitTables();
    if (cell < 0 || cell > 80) return nullptr;
    return &Peers[PeerStart[cell]];
}

}  // namespace modSudoku
