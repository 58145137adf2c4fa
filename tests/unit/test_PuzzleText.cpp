// Puzzle text lines: what the command line reads and writes.
#include "core/PuzzleText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

std::string AsText(const std::uint8_t (&d)[81]) {
    std::string s;
    for (std::uint8_t v : d) s += static_cast<char>('0' + v);
    return s;
}

const std::string kDigits = "8.9...........87...35..96...5.......6.139..5...35....2.6.....8..1.753......2..1..";
const std::string kDigitsRead = "809000000000008700035009600050000000601390050003500002060000080010753000000200100";

TEST(PuzzleTextDigits, DotsZerosAndBarsAndLineEnds) {
    std::uint8_t d[81];
    ASSERT_TRUE(ParsePuzzleLine(kDigits, PuzzleForm::Digits, d));
    EXPECT_EQ(AsText(d), kDigitsRead);

    std::string barred;
    for (int r = 0; r < 9; ++r) barred += kDigitsRead.substr(9 * r, 9) + (r < 8 ? "|" : "");
    ASSERT_TRUE(ParsePuzzleLine(barred + "\r\n", PuzzleForm::Digits, d));
    EXPECT_EQ(AsText(d), kDigitsRead);
}

}  // namespace
