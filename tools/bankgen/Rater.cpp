// Rating a puzzle by the techniques a player needs for it.
#include "tools/bankgen/Rater.h"

#include <algorithm>
#include <bit>
#include <vector>

#include "core/Levels.h"

namespace bankgen {

namespace {

using Mask = std::uint16_t;  // bit d-1 stands for digit d
constexpr Mask kAll = 0x1FF;

inline Mask Bit(int d) { return static_cast<Mask>(1u << (d - 1)); }
inline int Count(unsigned m) { return Count9(m); }
inline int Lowest(unsigned m) { return std::countr_zero(m) + 1; }

// Calls f(mask) for every subset of `n` bits of `pool` (a mask of at most 9
// bits); stops and returns true as soon as f returns true.
template <class F>
bool ForEachSubset(unsigned pool, int n, F&& f, unsigned chosen = 0) {
    if (n == 0) return f(chosen);
    for (unsigned m = pool; m; m &= m - 1) {
        const unsigned low = m & (~m + 1);
        if (Count(m) < n) return false;
        if (ForEachSubset(m & ~low, n - 1, f, chosen | low)) return true;
    }
    return false;
}

// The state the rater works on: the digits placed so far and the candidates
// of every empty cell.
struct Board {
    std::array<Mask, 81> cand{};
    Grid val{};

    void Place(int c, int d) {
        val[c] = static_cast<std::uint8_t>(d);
        cand[c] = 0;
        const Mask keep = static_cast<Mask>(~Bit(d));
        for (int p : kPeers[c]) cand[p] &= keep;
    }
    bool Remove(int c, Mask m) {
        if (!(cand[c] & m)) return false;
        cand[c] &= static_cast<Mask>(~m);
        return true;
    }
    bool Solved() const {
        for (auto v : val)
            if (!v) return false;
        return true;
    }
    // Positions of digit d in unit u, as a mask over the unit's nine cells.
    unsigned Where(int u, int d) const {
        unsigned m = 0;
        const Mask b = Bit(d);
        for (int i = 0; i < 9; ++i)
            if (cand[kUnits[u][i]] & b) m |= 1u << i;
        return m;
    }
    bool Placed(int u, int d) const {
        for (int c : kUnits[u])
            if (val[c] == d) return true;
        return false;
    }
    // A dead end: an empty cell without candidates, or a digit that has no
    // place left in a unit.
    bool Broken() const {
        for (int c = 0; c < 81; ++c)
            if (!val[c] && !cand[c]) return true;
        for (int u = 0; u < 27; ++u) {
            Mask seen = 0;
            for (int c : kUnits[u]) seen |= val[c] ? Bit(val[c]) : cand[c];
            if (seen != kAll) return true;
        }
        return false;
    }
};

Board FromCandidateBoard(const CandidateBoard& cb) {
    Board b;
    b.cand = cb.cand;
    b.val = cb.values;
    return b;
}

// ---- Singles -----------------------------------------------------------------

bool HiddenSingle(Board& b) {
    for (int u = 0; u < 27; ++u) {
        Mask once = 0, twice = 0;
        for (int c : kUnits[u]) {
            twice |= once & b.cand[c];
            once |= b.cand[c];
        }
        const Mask single = once & static_cast<Mask>(~twice);
        if (!single) continue;
        const int d = Lowest(single);
        for (int c : kUnits[u]) {
            if (b.cand[c] & Bit(d)) {
                b.Place(c, d);
                return true;
            }
        }
    }
    return false;
}

bool NakedSingle(Board& b) {
    for (int c = 0; c < 81; ++c) {
        if (!b.val[c] && Count(b.cand[c]) == 1) {
            b.Place(c, Lowest(b.cand[c]));
            return true;
        }
    }
    return false;
}

// ---- Intersections -------------------------------------------------------------

bool LockedCandidates(Board& b) {
    // Pointing: inside a box, the digit is confined to one row or column.
    for (int box = 18; box < 27; ++box) {
        for (int d = 1; d <= 9; ++d) {
            const unsigned where = b.Where(box, d);
            if (Count(where) < 2) continue;
            int row = -1, col = -1;
            bool sameRow = true, sameCol = true;
            for (unsigned m = where; m; m &= m - 1) {
                const int c = kUnits[box][std::countr_zero(m)];
                if (row < 0) {
                    row = RowOf(c);
                    col = ColOf(c);
                } else {
                    sameRow &= RowOf(c) == row;
                    sameCol &= ColOf(c) == col;
                }
            }
            bool changed = false;
            if (sameRow)
                for (int c : kUnits[row])
                    if (18 + BoxOf(c) != box) changed |= b.Remove(c, Bit(d));
            if (sameCol)
                for (int c : kUnits[9 + col])
                    if (18 + BoxOf(c) != box) changed |= b.Remove(c, Bit(d));
            if (changed) return true;
        }
    }
    // Claiming: inside a row or column, the digit is confined to one box.
    for (int line = 0; line < 18; ++line) {
        for (int d = 1; d <= 9; ++d) {
            const unsigned where = b.Where(line, d);
            if (Count(where) < 2) continue;
            int box = -1;
            bool same = true;
            for (unsigned m = where; m; m &= m - 1) {
                const int bx = BoxOf(kUnits[line][std::countr_zero(m)]);
                if (box < 0)
                    box = bx;
                else
                    same &= bx == box;
            }
            if (!same) continue;
            bool changed = false;
            for (int c : kUnits[18 + box]) {
                const bool onLine = line < 9 ? RowOf(c) == line : ColOf(c) == line - 9;
                if (!onLine) changed |= b.Remove(c, Bit(d));
            }
            if (changed) return true;
        }
    }
    return false;
}

// ---- Subsets -----------------------------------------------------------------

// n cells of a unit that together hold only n digits: those digits leave the
// other cells of the unit.
bool NakedSubset(Board& b, int n) {
    for (int u = 0; u < 27; ++u) {
        unsigned pool = 0;  // unit positions of empty cells with 2..n candidates
        int empty = 0;
        for (int i = 0; i < 9; ++i) {
            const int k = Count(b.cand[kUnits[u][i]]);
            if (k > 0) ++empty;
            if (k >= 2 && k <= n) pool |= 1u << i;
        }
        if (empty <= n) continue;
        const bool hit = ForEachSubset(pool, n, [&](unsigned cells) {
            Mask digits = 0;
            for (unsigned m = cells; m; m &= m - 1) digits |= b.cand[kUnits[u][std::countr_zero(m)]];
            if (Count(digits) != n) return false;
            bool changed = false;
            for (int i = 0; i < 9; ++i)
                if (!(cells & (1u << i))) changed |= b.Remove(kUnits[u][i], digits);
            return changed;
        });
        if (hit) return true;
    }
    return false;
}

// n digits of a unit that together fit only n cells: those cells lose every
// other candidate.
bool HiddenSubset(Board& b, int n) {
    for (int u = 0; u < 27; ++u) {
        std::array<unsigned, 10> where{};
        unsigned pool = 0;  // digits (bit d-1) with 2..n places in the unit
        for (int d = 1; d <= 9; ++d) {
            where[d] = b.Where(u, d);
            const int k = Count(where[d]);
            if (k >= 2 && k <= n) pool |= Bit(d);
        }
        const bool hit = ForEachSubset(pool, n, [&](unsigned digits) {
            unsigned cells = 0;
            for (unsigned m = digits; m; m &= m - 1) cells |= where[Lowest(m)];
            if (Count(cells) != n) return false;
            bool changed = false;
            for (unsigned m = cells; m; m &= m - 1)
                changed |= b.Remove(kUnits[u][std::countr_zero(m)], static_cast<Mask>(kAll & ~digits));
            return changed;
        });
        if (hit) return true;
    }
    return false;
}

// ---- Fish ----------------------------------------------------------------------

// n rows in which the digit fits only n columns: the digit leaves those columns
// in every other row. And the same with rows and columns swapped.
bool Fish(Board& b, int n) {
    for (int d = 1; d <= 9; ++d) {
        for (int orient = 0; orient < 2; ++orient) {
            const int base = orient == 0 ? 0 : 9;   // base lines: rows or columns
            const int cover = orient == 0 ? 9 : 0;  // cover lines: the others
            std::array<unsigned, 9> where{};
            unsigned pool = 0;
            for (int i = 0; i < 9; ++i) {
                where[i] = b.Where(base + i, d);
                const int k = Count(where[i]);
                if (k >= 2 && k <= n) pool |= 1u << i;
            }
            const bool hit = ForEachSubset(pool, n, [&](unsigned lines) {
                unsigned covers = 0;
                for (unsigned m = lines; m; m &= m - 1) covers |= where[std::countr_zero(m)];
                if (Count(covers) != n) return false;
                bool changed = false;
                for (unsigned m = covers; m; m &= m - 1) {
                    const auto& unit = kUnits[cover + std::countr_zero(m)];
                    for (int i = 0; i < 9; ++i)  // cell i of a cover line lies on base line i
                        if (!(lines & (1u << i))) changed |= b.Remove(unit[i], Bit(d));
                }
                return changed;
            });
            if (hit) return true;
        }
    }
    return false;
}

// ---- Wings ---------------------------------------------------------------------

// Removes the digits `m` from every cell that sees all of the given cells.
bool RemoveSeenByAll(Board& b, Mask m, std::initializer_list<int> cells) {
    bool changed = false;
    for (int c = 0; c < 81; ++c) {
        if (!(b.cand[c] & m)) continue;
        bool all = true;
        for (int x : cells) all &= Sees(c, x);
        if (all) changed |= b.Remove(c, m);
    }
    return changed;
}

// A pivot {a,b} with pincers {a,c} and {b,c} among its peers: c leaves every
// cell that sees both pincers.
bool XYWing(Board& b) {
    for (int p = 0; p < 81; ++p) {
        if (Count(b.cand[p]) != 2) continue;
        for (int q : kPeers[p]) {
            const Mask cq = b.cand[q];
            if (Count(cq) != 2 || Count(cq & b.cand[p]) != 1) continue;
            const Mask z = cq & static_cast<Mask>(~b.cand[p]);
            const Mask want = static_cast<Mask>((b.cand[p] & ~cq) | z);
            for (int r : kPeers[p]) {
                if (r == q || b.cand[r] != want) continue;
                if (RemoveSeenByAll(b, z, {q, r})) return true;
            }
        }
    }
    return false;
}

// A pivot {a,b,c} with pincers {a,c} and {b,c} among its peers: c leaves every
// cell that sees the pivot and both pincers.
bool XYZWing(Board& b) {
    for (int p = 0; p < 81; ++p) {
        const Mask cp = b.cand[p];
        if (Count(cp) != 3) continue;
        for (int q : kPeers[p]) {
            const Mask cq = b.cand[q];
            if (Count(cq) != 2 || (cq & cp) != cq) continue;
            for (int r : kPeers[p]) {
                const Mask cr = b.cand[r];
                if (r <= q || Count(cr) != 2 || (cr & cp) != cr || cr == cq) continue;
                const Mask z = cq & cr;
                if (RemoveSeenByAll(b, z, {p, q, r})) return true;
            }
        }
    }
    return false;
}

// ---- Chains --------------------------------------------------------------------

// Conjugate pairs of a digit: for every cell, the cells that form with it the
// only two places of the digit in some unit.
struct StrongLinks {
    std::array<std::array<int, 3>, 81> to{};
    std::array<int, 81> count{};

    StrongLinks(const Board& b, int d) {
        for (int u = 0; u < 27; ++u) {
            const unsigned where = b.Where(u, d);
            if (Count(where) != 2) continue;
            const int x = kUnits[u][std::countr_zero(where)];
            const int y = kUnits[u][31 - std::countl_zero(where)];
            Add(x, y);
            Add(y, x);
        }
    }
    void Add(int x, int y) {
        for (int i = 0; i < count[x]; ++i)
            if (to[x][i] == y) return;
        to[x][count[x]++] = y;
    }
};

// Two-colours every chain of conjugate pairs of a digit. Two cells of one
// colour in one unit mean that colour is false everywhere; a cell that sees
// both colours of a chain cannot hold the digit.
bool SimpleColouring(Board& b) {
    for (int d = 1; d <= 9; ++d) {
        const Mask bit = Bit(d);
        const StrongLinks links(b, d);
        std::array<int, 81> colour;
        colour.fill(-1);
        for (int start = 0; start < 81; ++start) {
            if (colour[start] >= 0 || links.count[start] == 0) continue;
            std::vector<int> members{start};
            colour[start] = 0;
            for (std::size_t i = 0; i < members.size(); ++i) {
                const int x = members[i];
                for (int k = 0; k < links.count[x]; ++k) {
                    const int y = links.to[x][k];
                    if (colour[y] < 0) {
                        colour[y] = 1 - colour[x];
                        members.push_back(y);
                    }
                }
            }
            // Colour wrap.
            for (int side = 0; side < 2; ++side) {
                bool clash = false;
                for (int x : members)
                    for (int y : members)
                        if (x < y && colour[x] == side && colour[y] == side && Sees(x, y)) clash = true;
                if (clash) {
                    for (int x : members)
                        if (colour[x] == side) b.Remove(x, bit);
                    return true;
                }
            }
            // Colour trap: any cell outside this chain that sees both colours.
            std::array<bool, 81> inChain{};
            for (int x : members) inChain[x] = true;
            bool changed = false;
            for (int c = 0; c < 81; ++c) {
                if (!(b.cand[c] & bit) || inChain[c]) continue;
                bool sees[2] = {false, false};
                for (int x : members)
                    if (Sees(c, x)) sees[colour[x]] = true;
                if (sees[0] && sees[1]) changed |= b.Remove(c, bit);
            }
            if (changed) return true;
        }
    }
    return false;
}

// Single-digit alternating chains: from a start cell s taken as false, strong
// links (conjugate pairs) make the next cell true, weak links (any peer) make
// it false. Every cell e reached as true means "s or e holds the digit", so
// the digit leaves every cell that sees both.
bool XChain(Board& b) {
    std::vector<int> queue;
    queue.reserve(162);
    for (int d = 1; d <= 9; ++d) {
        const Mask bit = Bit(d);
        const StrongLinks links(b, d);
        for (int s = 0; s < 81; ++s) {
            if (links.count[s] == 0) continue;
            // State 2*cell: the cell is false; 2*cell+1: the cell is true.
            std::array<bool, 162> seen{};
            queue.clear();
            queue.push_back(2 * s);
            seen[2 * s] = true;
            for (std::size_t i = 0; i < queue.size(); ++i) {
                const int x = queue[i] / 2;
                if (queue[i] % 2 == 0) {
                    for (int k = 0; k < links.count[x]; ++k) {
                        const int y = links.to[x][k];
                        if (!seen[2 * y + 1]) {
                            seen[2 * y + 1] = true;
                            queue.push_back(2 * y + 1);
                        }
                    }
                } else {
                    for (int y : kPeers[x]) {
                        if ((b.cand[y] & bit) && !seen[2 * y]) {
                            seen[2 * y] = true;
                            queue.push_back(2 * y);
                        }
                    }
                }
            }
            for (int state : queue) {
                const int e = state / 2;
                if (state % 2 == 0 || e == s) continue;
                bool changed = false;
                for (int c : kPeers[s])
                    if (c != e && Sees(c, e)) changed |= b.Remove(c, bit);
                if (changed) return true;
            }
        }
    }
    return false;
}

// Chains of two-digit cells: if the start cell s is not a, it is its other
// digit, which its peer in the chain then cannot be, and so on. A chain that
// ends in a cell e forced to a means "s or e is a": a leaves every cell that
// sees both.
bool XYChain(Board& b) {
    std::vector<int> queue;
    queue.reserve(810);
    for (int s = 0; s < 81; ++s) {
        if (Count(b.cand[s]) != 2) continue;
        for (unsigned m = b.cand[s]; m; m &= m - 1) {
            const int a = Lowest(m);
            const int other = Lowest(b.cand[s] & ~Bit(a));
            // State 10*cell + v: the cell holds v.
            std::array<bool, 810> seen{};
            queue.clear();
            queue.push_back(10 * s + other);
            seen[10 * s + other] = true;
            for (std::size_t i = 0; i < queue.size(); ++i) {
                const int x = queue[i] / 10;
                const int v = queue[i] % 10;
                for (int y : kPeers[x]) {
                    if (Count(b.cand[y]) != 2 || !(b.cand[y] & Bit(v))) continue;
                    const int w = Lowest(b.cand[y] & ~Bit(v));
                    if (!seen[10 * y + w]) {
                        seen[10 * y + w] = true;
                        queue.push_back(10 * y + w);
                    }
                }
            }
            for (int e = 0; e < 81; ++e) {
                if (e == s || !seen[10 * e + a]) continue;
                bool changed = false;
                for (int c : kPeers[s])
                    if (c != e && Sees(c, e)) changed |= b.Remove(c, Bit(a));
                if (changed) return true;
            }
        }
    }
    return false;
}

// Alternating inference chains over all candidates: strong links are the
// conjugate pairs of a digit and the two digits of a two-digit cell, weak links
// join a candidate to the same digit in its peers and to the other digits of
// its cell. From a candidate (s, d) taken as false, every candidate (e, x)
// reached as true gives "(s, d) or (e, x)":
//   same digit, other cell: d leaves every cell that sees both s and e;
//   same cell, other digit: s holds d or x, its other digits go;
//   the candidate itself: s must be d;
//   other digit, cell e sees s: x leaves s and d leaves e.
bool AlternatingChain(Board& b) {
    // Node 9*cell + (d-1); state 2*node (false) or 2*node+1 (true).
    std::array<std::array<int, 4>, 729> strong{};
    std::array<int, 729> strongCount{};
    auto addStrong = [&](int from, int to) {
        for (int i = 0; i < strongCount[from]; ++i)
            if (strong[from][i] == to) return;
        strong[from][strongCount[from]++] = to;
    };
    for (int d = 1; d <= 9; ++d) {
        for (int u = 0; u < 27; ++u) {
            const unsigned where = b.Where(u, d);
            if (Count(where) != 2) continue;
            const int x = kUnits[u][std::countr_zero(where)];
            const int y = kUnits[u][31 - std::countl_zero(where)];
            addStrong(9 * x + d - 1, 9 * y + d - 1);
            addStrong(9 * y + d - 1, 9 * x + d - 1);
        }
    }
    for (int c = 0; c < 81; ++c) {
        if (Count(b.cand[c]) != 2) continue;
        const int x = Lowest(b.cand[c]);
        const int y = Lowest(b.cand[c] & ~Bit(x));
        addStrong(9 * c + x - 1, 9 * c + y - 1);
        addStrong(9 * c + y - 1, 9 * c + x - 1);
    }

    std::vector<int> queue;
    queue.reserve(1458);
    for (int s = 0; s < 81; ++s) {
        for (unsigned m = b.cand[s]; m; m &= m - 1) {
            const int d = Lowest(m);
            const int start = 9 * s + d - 1;
            if (strongCount[start] == 0) continue;
            std::array<bool, 1458> seen{};
            queue.clear();
            queue.push_back(2 * start);
            seen[2 * start] = true;
            for (std::size_t i = 0; i < queue.size(); ++i) {
                const int node = queue[i] / 2;
                auto visit = [&](int n, int on) {
                    if (!seen[2 * n + on]) {
                        seen[2 * n + on] = true;
                        queue.push_back(2 * n + on);
                    }
                };
                if (queue[i] % 2 == 0) {
                    for (int k = 0; k < strongCount[node]; ++k) visit(strong[node][k], 1);
                } else {
                    const int c = node / 9;
                    const int v = node % 9 + 1;
                    for (int p : kPeers[c])
                        if (b.cand[p] & Bit(v)) visit(9 * p + v - 1, 0);
                    for (unsigned o = b.cand[c] & ~Bit(v); o; o &= o - 1) visit(9 * c + Lowest(o) - 1, 0);
                }
            }
            for (int state : queue) {
                if (state % 2 == 0) continue;
                const int n = state / 2;
                const int e = n / 9;
                const int x = n % 9 + 1;
                bool changed = false;
                if (e == s && x == d) {
                    changed = b.Remove(s, static_cast<Mask>(kAll & ~Bit(d)));
                } else if (e == s) {
                    changed = b.Remove(s, static_cast<Mask>(kAll & ~(Bit(d) | Bit(x))));
                } else if (x == d) {
                    for (int c : kPeers[s])
                        if (c != e && Sees(c, e)) changed |= b.Remove(c, Bit(d));
                } else if (Sees(s, e)) {
                    changed = b.Remove(s, Bit(x));
                    changed |= b.Remove(e, Bit(d));
                }
                if (changed) return true;
            }
        }
    }
    return false;
}

// ---- Trial ---------------------------------------------------------------------

// Fills singles until none is left; false when the board runs into a dead end.
bool PropagateSingles(Board& b) {
    for (;;) {
        if (b.Broken()) return false;
        if (!HiddenSingle(b) && !NakedSingle(b)) return true;
    }
}

// Tries each candidate of the cells with the fewest candidates; one that leads
// to a dead end by singles is removed. When no such candidate exists, the cell
// with the fewest candidates gets its digit from the solution, as a guess that
// a person would have to check by going on.
bool Trial(Board& b, const Grid& solution) {
    for (int k = 2; k <= 9; ++k) {
        for (int c = 0; c < 81; ++c) {
            if (Count(b.cand[c]) != k) continue;
            for (unsigned m = b.cand[c]; m; m &= m - 1) {
                const int d = Lowest(m);
                Board copy = b;
                copy.Place(c, d);
                if (!PropagateSingles(copy)) {
                    b.Remove(c, Bit(d));
                    return true;
                }
            }
        }
    }
    int best = -1;
    for (int c = 0; c < 81; ++c)
        if (!b.val[c] && (best < 0 || Count(b.cand[c]) < Count(b.cand[best]))) best = c;
    if (best < 0) return false;
    b.Place(best, solution[best]);
    return true;
}

bool Apply(Technique t, Board& b, const Grid* solution) {
    switch (t) {
        case Technique::HiddenSingle: return HiddenSingle(b);
        case Technique::NakedSingle: return NakedSingle(b);
        case Technique::LockedCandidates: return LockedCandidates(b);
        case Technique::NakedPair: return NakedSubset(b, 2);
        case Technique::HiddenPair: return HiddenSubset(b, 2);
        case Technique::NakedTriple: return NakedSubset(b, 3);
        case Technique::HiddenTriple: return HiddenSubset(b, 3);
        case Technique::NakedQuad: return NakedSubset(b, 4);
        case Technique::HiddenQuad: return HiddenSubset(b, 4);
        case Technique::XWing: return Fish(b, 2);
        case Technique::Swordfish: return Fish(b, 3);
        case Technique::Jellyfish: return Fish(b, 4);
        case Technique::XYWing: return XYWing(b);
        case Technique::XYZWing: return XYZWing(b);
        case Technique::SimpleColouring: return SimpleColouring(b);
        case Technique::XChain: return XChain(b);
        case Technique::XYChain: return XYChain(b);
        case Technique::AlternatingChain: return AlternatingChain(b);
        case Technique::Trial: return solution && Trial(b, *solution);
        case Technique::None: return false;
    }
    return false;
}

}  // namespace

const char* TechniqueName(Technique t) {
    switch (t) {
        case Technique::None: return "none";
        case Technique::HiddenSingle: return "hidden single";
        case Technique::NakedSingle: return "naked single";
        case Technique::LockedCandidates: return "locked candidates";
        case Technique::NakedPair: return "naked pair";
        case Technique::HiddenPair: return "hidden pair";
        case Technique::NakedTriple: return "naked triple";
        case Technique::HiddenTriple: return "hidden triple";
        case Technique::NakedQuad: return "naked quad";
        case Technique::HiddenQuad: return "hidden quad";
        case Technique::XWing: return "X-wing";
        case Technique::Swordfish: return "swordfish";
        case Technique::Jellyfish: return "jellyfish";
        case Technique::XYWing: return "XY-wing";
        case Technique::XYZWing: return "XYZ-wing";
        case Technique::SimpleColouring: return "simple colouring";
        case Technique::XChain: return "X-chain";
        case Technique::XYChain: return "XY-chain";
        case Technique::AlternatingChain: return "alternating inference chain";
        case Technique::Trial: return "trial and error";
    }
    return "?";
}

CandidateBoard CandidateBoard::FromGivens(const Grid& givens) {
    CandidateBoard cb;
    cb.values = givens;
    for (int c = 0; c < 81; ++c) {
        if (givens[c]) continue;
        Mask m = kAll;
        for (int p : kPeers[c])
            if (givens[p] >= 1 && givens[p] <= 9) m &= static_cast<Mask>(~Bit(givens[p]));
        cb.cand[c] = m;
    }
    return cb;
}

bool ApplyTechnique(Technique t, CandidateBoard& board) {
    Board b = FromCandidateBoard(board);
    const bool changed = Apply(t, b, nullptr);
    board.cand = b.cand;
    board.values = b.val;
    return changed;
}

Rating RatePuzzle(const Grid& puzzle) {
    Rating r;
    for (auto v : puzzle) {
        if (v > 9) return r;  // NoSolution: no such digit
    }
    Grid solution{};
    const int n = CountSolutions(puzzle, 2, &solution);
    if (n == 0) {
        r.outcome = RateOutcome::NoSolution;
        return r;
    }
    if (n > 1) {
        r.outcome = RateOutcome::SeveralSolutions;
        return r;
    }
    r.outcome = RateOutcome::Rated;
    r.solution = solution;

    const CandidateBoard start = CandidateBoard::FromGivens(puzzle);
    Board b = FromCandidateBoard(start);
    while (!b.Solved()) {
        bool progressed = false;
        for (int t = 1; t < kTechniqueCount; ++t) {
            const auto tech = static_cast<Technique>(t);
            if (Apply(tech, b, &solution)) {
                ++r.uses[t];
                if (t > static_cast<int>(r.hardest)) r.hardest = tech;
                progressed = true;
                break;
            }
        }
        if (!progressed) break;  // cannot happen: trial always advances
    }
    r.steppedToSolution = b.val == solution;
    return r;
}

int LevelOfTechnique(Technique hardest) {
    switch (hardest) {
        case Technique::None:
        case Technique::HiddenSingle:
        case Technique::NakedSingle: return 0;
        case Technique::LockedCandidates: return 1;
        case Technique::NakedPair:
        case Technique::HiddenPair:
        case Technique::NakedTriple:
        case Technique::HiddenTriple:
        case Technique::NakedQuad:
        case Technique::HiddenQuad: return 2;
        case Technique::XWing:
        case Technique::Swordfish:
        case Technique::Jellyfish:
        case Technique::XYWing:
        case Technique::XYZWing:
        case Technique::SimpleColouring:
        case Technique::XChain:
        case Technique::XYChain:
        case Technique::AlternatingChain: return 3;
        case Technique::Trial: return -1;
    }
    return -1;
}

const char* GradeWord(Technique hardest) {
    const int level = LevelOfTechnique(hardest);
    return level < 0 ? "beyond genius" : kLevels[level].labelName;
}

}  // namespace bankgen
