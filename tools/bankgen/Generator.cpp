// Generating full grids and puzzles with one solution.
#include "tools/bankgen/Generator.h"

#include <array>
#include <bit>

namespace bankgen {

namespace {

// Depth-first fill of the cell with the fewest open digits, trying the
// digits in a random order.
struct Filler {
    std::uint16_t rows[9] = {}, cols[9] = {}, boxes[9] = {};
    Grid g{};
    Random64& rng;

    explicit Filler(Random64& r) : rng(r) {}

    void Set(int c, int d, bool on) {
        const auto bit = static_cast<std::uint16_t>(1u << (d - 1));
        if (on) {
            rows[RowOf(c)] |= bit;
            cols[ColOf(c)] |= bit;
            boxes[BoxOf(c)] |= bit;
            g[c] = static_cast<std::uint8_t>(d);
        } else {
            rows[RowOf(c)] &= static_cast<std::uint16_t>(~bit);
            cols[ColOf(c)] &= static_cast<std::uint16_t>(~bit);
            boxes[BoxOf(c)] &= static_cast<std::uint16_t>(~bit);
            g[c] = 0;
        }
    }

    bool Fill() {
        int best = -1;
        unsigned bestFree = 0;
        int bestCount = 10;
        for (int c = 0; c < 81; ++c) {
            if (g[c]) continue;
            const unsigned free = ~(rows[RowOf(c)] | cols[ColOf(c)] | boxes[BoxOf(c)]) & 0x1FFu;
            const int n = Count9(free);
            if (n < bestCount) {
                best = c;
                bestFree = free;
                bestCount = n;
            }
        }
        if (best < 0) return true;
        std::array<int, 9> digits{};
        int n = 0;
        for (unsigned m = bestFree; m; m &= m - 1) digits[n++] = std::countr_zero(m) + 1;
        rng.Shuffle(digits.begin(), digits.begin() + n);
        for (int i = 0; i < n; ++i) {
            Set(best, digits[i], true);
            if (Fill()) return true;
            Set(best, digits[i], false);
        }
        return false;
    }
};

}  // namespace

Grid RandomSolution(Random64& rng) {
    Filler f(rng);
    f.Fill();
    return f.g;
}

std::optional<Grid> CarvePuzzle(const Grid& solution, int clues, Random64& rng) {
    std::array<int, 81> order{};
    for (int i = 0; i < 81; ++i) order[i] = i;
    rng.Shuffle(order.begin(), order.end());
    Grid p = solution;
    int left = 81;
    for (int c : order) {
        if (left == clues) break;
        p[c] = 0;
        if (CountSolutions(p, 2) == 1)
            --left;
        else
            p[c] = solution[c];
    }
    if (left != clues) return std::nullopt;
    return p;
}

Grid AddClues(const Grid& puzzle, const Grid& solution, int extra, Random64& rng) {
    std::array<int, 81> empty{};
    int n = 0;
    for (int c = 0; c < 81; ++c)
        if (!puzzle[c]) empty[n++] = c;
    rng.Shuffle(empty.begin(), empty.begin() + n);
    Grid p = puzzle;
    for (int i = 0; i < extra && i < n; ++i) p[empty[i]] = solution[empty[i]];
    return p;
}

}  // namespace bankgen
