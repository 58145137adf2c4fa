// A grid of candidates for the generator and the rater.
#include "tools/bankgen/Grid.h"

#include <bit>

namespace bankgen {

namespace {

std::array<std::array<int, 9>, 27> MakeUnits() {
    std::array<std::array<int, 9>, 27> u{};
    for (int i = 0; i < 9; ++i) {
        for (int j = 0; j < 9; ++j) {
            u[i][j] = i * 9 + j;                                             // row i
            u[9 + i][j] = j * 9 + i;                                         // column i
            u[18 + i][j] = (3 * (i / 3) + j / 3) * 9 + 3 * (i % 3) + j % 3;  // box i
        }
    }
    return u;
}

std::array<std::array<int, 3>, 81> MakeCellUnits() {
    std::array<std::array<int, 3>, 81> cu{};
    for (int c = 0; c < 81; ++c) cu[c] = {RowOf(c), 9 + ColOf(c), 18 + BoxOf(c)};
    return cu;
}

bool SeesSlow(int a, int b) { return a != b && (RowOf(a) == RowOf(b) || ColOf(a) == ColOf(b) || BoxOf(a) == BoxOf(b)); }

std::array<std::array<int, 20>, 81> MakePeers() {
    std::array<std::array<int, 20>, 81> p{};
    for (int c = 0; c < 81; ++c) {
        int k = 0;
        for (int o = 0; o < 81; ++o)
            if (SeesSlow(c, o)) p[c][k++] = o;
    }
    return p;
}

struct SeesTable {
    std::array<std::array<bool, 81>, 81> t{};
    SeesTable() {
        for (int a = 0; a < 81; ++a)
            for (int b = 0; b < 81; ++b) t[a][b] = SeesSlow(a, b);
    }
};
const SeesTable kSees;

// The counter: depth-first search with the used digits of every row, column
// and box kept as bit masks. At each node a digit with a single place in some
// unit is set first; otherwise the search branches on the cell with the
// fewest candidates. A cell or a unit with no room left ends the branch.
struct Counter {
    std::uint16_t rows[9] = {}, cols[9] = {}, boxes[9] = {};
    Grid g{};
    int limit = 2;
    int found = 0;
    Grid* first = nullptr;

    void Set(int c, int d) {
        const auto bit = static_cast<std::uint16_t>(1u << (d - 1));
        rows[RowOf(c)] |= bit;
        cols[ColOf(c)] |= bit;
        boxes[BoxOf(c)] |= bit;
        g[c] = static_cast<std::uint8_t>(d);
    }
    void Clear(int c, int d) {
        const auto bit = static_cast<std::uint16_t>(~(1u << (d - 1)));
        rows[RowOf(c)] &= bit;
        cols[ColOf(c)] &= bit;
        boxes[BoxOf(c)] &= bit;
        g[c] = 0;
    }

    void Search() {
        std::uint16_t cand[81];
        int best = -1;
        int bestCount = 10;
        for (int c = 0; c < 81; ++c) {
            if (g[c]) {
                cand[c] = 0;
                continue;
            }
            cand[c] = static_cast<std::uint16_t>(~(rows[RowOf(c)] | cols[ColOf(c)] | boxes[BoxOf(c)]) & 0x1FFu);
            const int n = Count9(cand[c]);
            if (n == 0) return;
            if (n < bestCount) {
                best = c;
                bestCount = n;
            }
        }
        if (best < 0) {
            if (found == 0 && first) *first = g;
            ++found;
            return;
        }
        if (bestCount > 1) {
            for (const auto& unit : kUnits) {
                unsigned once = 0, twice = 0, used = 0;
                for (int c : unit) {
                    twice |= once & cand[c];
                    once |= cand[c];
                    if (g[c]) used |= 1u << (g[c] - 1);
                }
                if ((once | used) != 0x1FFu) return;  // a digit without a place
                const unsigned single = once & ~twice;
                if (!single) continue;
                const int d = std::countr_zero(single) + 1;
                for (int c : unit) {
                    if (cand[c] & single & (0u - single)) {
                        Set(c, d);
                        Search();
                        Clear(c, d);
                        return;
                    }
                }
            }
        }
        for (unsigned m = cand[best]; m && found < limit; m &= m - 1) {
            const int d = std::countr_zero(m) + 1;
            Set(best, d);
            Search();
            Clear(best, d);
        }
    }
};

}  // namespace

const std::array<std::array<int, 9>, 27> kUnits = MakeUnits();
const std::array<std::array<int, 20>, 81> kPeers = MakePeers();
const std::array<std::array<int, 3>, 81> kCellUnits = MakeCellUnits();

bool Sees(int a, int b) { return kSees.t[a][b]; }

int CountClues(const Grid& g) {
    int n = 0;
    for (auto v : g) n += v != 0;
    return n;
}

bool IsConsistent(const Grid& g) {
    for (const auto& unit : kUnits) {
        unsigned seen = 0;
        for (int c : unit) {
            const int d = g[c];
            if (d == 0) continue;
            if (d > 9 || (seen & (1u << d))) return false;
            seen |= 1u << d;
        }
    }
    return true;
}

bool IsCompleteValid(const Grid& g) { return CountClues(g) == 81 && IsConsistent(g); }

int CountSolutions(const Grid& g, int limit, Grid* first) {
    if (!IsConsistent(g)) return 0;
    Counter k;
    k.limit = limit < 1 ? 1 : limit;
    k.first = first;
    for (int c = 0; c < 81; ++c)
        if (g[c]) k.Set(c, g[c]);
    k.Search();
    return k.found;
}

std::string EncodeEntry(const Grid& puzzle, const Grid& solution) {
    std::string s;
    s.reserve(90);
    for (int c = 0; c < 81; ++c) {
        if (puzzle[c])
            s += static_cast<char>('A' + puzzle[c] - 1);
        else
            s += static_cast<char>('0' + solution[c]);
        if (c % 9 == 8) s += '|';
    }
    return s;
}

bool DecodeEntry(std::string_view entry, Grid& puzzle, Grid& solution) {
    Grid p{}, s{};
    int cells = 0;
    for (char ch : entry) {
        if (ch == '|') continue;
        if (cells >= 81) return false;
        if (ch >= 'A' && ch <= 'I') {
            p[cells] = static_cast<std::uint8_t>(ch - 'A' + 1);
            s[cells] = p[cells];
        } else if (ch >= '1' && ch <= '9') {
            s[cells] = static_cast<std::uint8_t>(ch - '0');
        } else {
            return false;
        }
        ++cells;
    }
    if (cells != 81) return false;
    puzzle = p;
    solution = s;
    return true;
}

std::string ToLine(const Grid& g) {
    std::string s(81, '.');
    for (int c = 0; c < 81; ++c)
        if (g[c]) s[c] = static_cast<char>('0' + g[c]);
    return s;
}

bool FromLine(std::string_view line, Grid& g) {
    if (line.size() != 81) return false;
    Grid out{};
    for (int c = 0; c < 81; ++c) {
        const char ch = line[c];
        if (ch >= '1' && ch <= '9')
            out[c] = static_cast<std::uint8_t>(ch - '0');
        else if (ch != '0' && ch != '.')
            return false;
    }
    g = out;
    return true;
}

}  // namespace bankgen
