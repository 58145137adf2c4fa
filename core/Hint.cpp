// The hint pick and the doubled-digit search.
#include "core/Hint.h"

#include <algorithm>
#include <cmath>

#include "core/vb.h"

namespace {

// The units as FindDuplicate names them, by unit index 0 to 8.
const char* const kOrdinal[9] = {"first ", "second ",  "third ",  "fourth ", "fifth ",
                                 "sixth ", "seventh ", "eighth ", "ninth "};

// Offsets of the nine cells of a box from its top left cell.
constexpr int kBoxOffset[9] = {0, 1, 2, 9, 10, 11, 18, 19, 20};

// Top left cell of box b (0 top left, 2 top right, 8 bottom right).
int BoxStart(int b) {
    if (b <= 2) return 3 * b;
    if (b <= 5) return 3 * b + 18;
    return 3 * b + 36;
}

// The lowest digit that stands more than once in the joined texts of a unit,
// or '\0' when none does.
char DoubledDigit(const std::string& joined) {
    for (char d = '1'; d <= '9'; ++d) {
        const std::size_t without = vb::Remove(joined, std::string(1, d)).size();
        if (joined.size() - without > 1) return d;
    }
    return '\0';
}

}  // namespace

int HintPick(double r, int emptyCells) {
    const int last = emptyCells - 1;
    if (last < 0) return -1;
    if (!(r >= 0.0 && r < 1.0)) r = 0.0;
    // Worked in double so that a draw just under 1 cannot round up to last.
    return std::clamp(static_cast<int>(std::floor(r * last)), 0, std::max(last - 1, 0));
}

std::optional<Duplicate> FindDuplicate(const std::array<std::string, 81>& cellTexts) {
    int cells[9];
    auto check = [&](int unit, const char* word) -> std::optional<Duplicate> {
        std::string joined;
        for (int cell : cells) joined += cellTexts[static_cast<std::size_t>(cell)];
        const char d = DoubledDigit(joined);
        if (d == '\0') return std::nullopt;
        return Duplicate{std::string(1, d), std::string(kOrdinal[unit]) + word};
    };
    for (int row = 0; row < 9; ++row) {
        for (int k = 0; k < 9; ++k) cells[k] = row * 9 + k;
        if (auto d = check(row, "row")) return d;
    }
    for (int col = 0; col < 9; ++col) {
        for (int k = 0; k < 9; ++k) cells[k] = col + 9 * k;
        if (auto d = check(col, "column")) return d;
    }
    for (int box = 0; box < 9; ++box) {
        for (int k = 0; k < 9; ++k) cells[k] = BoxStart(box) + kBoxOffset[k];
        if (auto d = check(box, "box")) return d;
    }
    return std::nullopt;
}
