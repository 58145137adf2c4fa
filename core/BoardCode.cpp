// The board state's codes: kind, digit and colour of a cell, rotation, a wrong digit.
#include "core/BoardCode.h"

#include "core/vb.h"

CellKind KindOfCode(unsigned char c) {
    if (c > 82) return CellKind::Hinted;
    if (c > 73) return CellKind::Entered;
    if (c > 64) return CellKind::Given;
    return CellKind::Empty;
}

char DigitOfCode(unsigned char c) {
    switch (KindOfCode(c)) {
        case CellKind::Hinted: return static_cast<char>(c - 34);
        case CellKind::Entered: return static_cast<char>(c - 25);
        case CellKind::Given: return static_cast<char>(c - 16);
        case CellKind::Empty: break;
    }
    return '\0';
}

std::int32_t ColorOfKind(CellKind kind) {
    switch (kind) {
        case CellKind::Given: return vb::kColorGiven;
        case CellKind::Hinted: return vb::kColorHinted;
        case CellKind::Entered:
        case CellKind::Empty: break;
    }
    return vb::kColorEntered;
}

std::string RotateBoard(std::string_view state) {
    std::string out;
    if (state.size() < 81) return std::string(state);
    out.reserve(81);
    for (int i = 0; i <= 8; ++i)
        for (int j = 8; j >= 0; --j) out += state[static_cast<std::size_t>(j * 9 + i)];
    return out;
}

bool IsWrongDigit(std::string_view boardState, int cell, std::string_view text) {
    if (boardState.size() != 81 || cell < 0 || cell > 80) return false;
    const char s = boardState[static_cast<std::size_t>(cell)];
    if (s == ' ') return false;
    return text != std::string_view(&boardState[static_cast<std::size_t>(cell)], 1);
}
