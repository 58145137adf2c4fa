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

TEST(PuzzleTextDigits, RejectsWrongLengthAndStrangeCharacters) {
    std::uint8_t d[81] = {};
    std::string why;
    EXPECT_FALSE(ParsePuzzleLine(kDigits.substr(1), PuzzleForm::Digits, d, &why));
    EXPECT_NE(why.find("80 cells"), std::string::npos) << why;
    EXPECT_FALSE(ParsePuzzleLine(kDigits + "1", PuzzleForm::Digits, d, &why));
    EXPECT_NE(why.find("82 cells"), std::string::npos) << why;
    EXPECT_FALSE(ParsePuzzleLine("", PuzzleForm::Digits, d, &why));

    std::string bad = kDigits;
    bad[4] = 'x';
    EXPECT_FALSE(ParsePuzzleLine(bad, PuzzleForm::Digits, d, &why));
    EXPECT_NE(why.find("'x' at position 5"), std::string::npos) << why;
    bad[4] = ' ';
    EXPECT_FALSE(ParsePuzzleLine(bad, PuzzleForm::Digits, d, &why));
    bad[4] = '\t';
    EXPECT_FALSE(ParsePuzzleLine(bad, PuzzleForm::Digits, d, &why));
    EXPECT_NE(why.find("0x09"), std::string::npos) << why;

    // A refused line leaves the digits as they were.
    EXPECT_EQ(AsText(d), std::string(81, '0'));
}

TEST(PuzzleTextGivens, OnlyGivenLettersAreDigits) {
    // A board code: givens 'A'..'I', entered 'J'..'R', hinted 'S'..'[',
    // solution digits and blanks for empty cells.
    std::string code(81, '5');
    code[0] = 'A';
    code[1] = 'I';
    code[2] = 'J';  // entered 1: not a given
    code[3] = 'S';  // hinted 1: not a given
    code[4] = ' ';
    code[80] = 'E';
    std::uint8_t d[81];
    ASSERT_TRUE(ParsePuzzleLine(code.substr(0, 27) + "|" + code.substr(27, 27) + "|" + code.substr(54) + "\n",
                                PuzzleForm::Givens, d));
    std::string expected(81, '0');
    expected[0] = '1';
    expected[1] = '9';
    expected[80] = '5';
    EXPECT_EQ(AsText(d), expected);

    std::string why;
    EXPECT_FALSE(ParsePuzzleLine(code.substr(0, 80), PuzzleForm::Givens, d, &why));
    EXPECT_NE(why.find("80 cells"), std::string::npos) << why;
}

}  // namespace
