// Puzzles as text lines: reading and writing the forms the command line takes.
#include "core/PuzzleText.h"

#include <cstdio>

namespace {

std::string ShowChar(char ch) {
    const auto u = static_cast<unsigned char>(ch);
    if (u >= 0x20 && u < 0x7f) return std::string("'") + ch + "'";
    char buf[8];
    std::snprintf(buf, sizeof buf, "0x%02X", u);
    return buf;
}

}  // namespace

bool ParsePuzzleLine(std::string_view line, PuzzleForm form, std::uint8_t (&digits)[81], std::string* error) {
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);

    std::uint8_t out[81];
    int cells = 0;
    std::string firstBad;
    for (std::size_t pos = 0; pos < line.size(); ++pos) {
        const char ch = line[pos];
        if (ch == '|') continue;
        std::uint8_t d = 0;
        if (form == PuzzleForm::Givens) {
            if (ch >= 'A' && ch <= 'I') d = static_cast<std::uint8_t>(ch - 'A' + 1);
        } else if (ch >= '1' && ch <= '9') {
            d = static_cast<std::uint8_t>(ch - '0');
        } else if (ch != '0' && ch != '.' && firstBad.empty()) {
            firstBad = "character " + ShowChar(ch) + " at position " + std::to_string(pos + 1) + " is not a cell";
        }
        if (cells < 81) out[cells] = d;
        ++cells;
    }

    if (!firstBad.empty()) {
        if (error) *error = firstBad;
        return false;
    }
    if (cells != 81) {
        if (error) *error = "has " + std::to_string(cells) + " cells, a puzzle has 81";
        return false;
    }
    for (int i = 0; i < 81; ++i) digits[i] = out[i];
    return true;
}
