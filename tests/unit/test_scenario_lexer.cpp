// The tokenizer of scenario lines and the number forms of the commands.
#include <gtest/gtest.h>

#include "scenario/Lexer.h"

using scenario::ParseDecimal;
using scenario::ParseInt;
using scenario::SplitLines;
using scenario::Token;
using scenario::Tokenize;

namespace {

std::vector<Token> Words(const std::string& line) {
    std::vector<Token> w;
    std::string error;
    EXPECT_TRUE(Tokenize(line, w, error)) << line << ": " << error;
    return w;
}

std::string ErrorOf(const std::string& line) {
    std::vector<Token> w;
    std::string error;
    EXPECT_FALSE(Tokenize(line, w, error)) << line;
    return error;
}

}  // namespace

TEST(ScenarioLexer, SplitsLinesAtLineFeedsAndDropsTheCarriageReturnBeforeThem) {
    EXPECT_EQ(SplitLines("a\r\nb\nc"), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(SplitLines("a\n\nb\n"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_TRUE(SplitLines("").empty());
    // A carriage return inside a line is part of it.
    EXPECT_EQ(SplitLines("a\rb\r\n"), (std::vector<std::string>{"a\rb"}));
}

TEST(ScenarioLexer, PlainWordsAreSeparatedByBlanksAndTabs) {
    const auto w = Words("  call \t txtCell_KeyDown 80 39   -1  ");
    ASSERT_EQ(w.size(), 5u);
    EXPECT_EQ(w[0].text, "call");
    EXPECT_EQ(w[1].text, "txtCell_KeyDown");
    EXPECT_EQ(w[4].text, "-1");
    for (const auto& t : w) EXPECT_FALSE(t.quoted);
}

TEST(ScenarioLexer, CommentsAndBlankLinesGiveNoWords) {
    EXPECT_TRUE(Words("# a comment \"with an open quote").empty());
    EXPECT_TRUE(Words("   \t# indented comment").empty());
    EXPECT_TRUE(Words("").empty());
    EXPECT_TRUE(Words(" \t ").empty());
    // Only the first non-blank character makes a comment.
    const auto w = Words("print Setting(#1)");
    ASSERT_EQ(w.size(), 2u);
    EXPECT_EQ(w[1].text, "Setting(#1)");
}

TEST(ScenarioLexer, QuotedWordsHoldBlanksAndTheFiveEscapes) {
    const auto w = Words(R"(file a.tsm "x y\r\n\t\"q\" \\end")");
    ASSERT_EQ(w.size(), 3u);
    EXPECT_TRUE(w[2].quoted);
    EXPECT_EQ(w[2].text, "x y\r\n\t\"q\" \\end");
}

TEST(ScenarioLexer, QuotingTellsATextFromAKeyword) {
    const auto plain = Words("dialog cancel");
    const auto quoted = Words("dialog \"cancel\"");
    ASSERT_EQ(plain.size(), 2u);
    ASSERT_EQ(quoted.size(), 2u);
    EXPECT_EQ(plain[1].text, quoted[1].text);
    EXPECT_FALSE(plain[1].quoted);
    EXPECT_TRUE(quoted[1].quoted);
}

TEST(ScenarioLexer, EmptyQuotesAreAnEmptyWord) {
    const auto w = Words(R"(set SongPath "" x)");
    ASSERT_EQ(w.size(), 4u);
    EXPECT_EQ(w[2].text, "");
    EXPECT_TRUE(w[2].quoted);
}

TEST(ScenarioLexer, MalformedQuotingIsRefusedWithAReason) {
    EXPECT_NE(ErrorOf(R"(print "abc)").find("not closed"), std::string::npos);
    EXPECT_NE(ErrorOf(R"(print "a\qb")").find("unknown escape \\q"), std::string::npos);
    EXPECT_NE(ErrorOf(R"(print "ab\)").find("backslash"), std::string::npos);
    EXPECT_NE(ErrorOf(R"(print a"b")").find("inside a word"), std::string::npos);
    EXPECT_NE(ErrorOf(R"(print "a"b)").find("closing quote"), std::string::npos);
    // A backslash in a plain word is an ordinary character.
    const auto w = Words(R"(dialog C:\games\a.tsm)");
    EXPECT_EQ(w[1].text, R"(C:\games\a.tsm)");
}

TEST(ScenarioLexer, WholeNumbersAreDecimalAndMayBeNegative) {
    long long v = 0;
    EXPECT_TRUE(ParseInt("3599", v));
    EXPECT_EQ(v, 3599);
    EXPECT_TRUE(ParseInt("-1", v));
    EXPECT_EQ(v, -1);
    EXPECT_TRUE(ParseInt("007", v));
    EXPECT_EQ(v, 7);
    for (const char* bad : {"", "-", "+1", "1.0", " 1", "1 ", "0x10", "1e3", "99999999999999999999"})
        EXPECT_FALSE(ParseInt(bad, v)) << bad;
}

TEST(ScenarioLexer, DecimalsTakeAnOptionalFractionAndNoExponent) {
    double d = 0;
    EXPECT_TRUE(ParseDecimal("75", d));
    EXPECT_EQ(d, 75.0);
    EXPECT_TRUE(ParseDecimal("-3.5", d));
    EXPECT_EQ(d, -3.5);
    EXPECT_TRUE(ParseDecimal(".25", d));
    EXPECT_EQ(d, 0.25);
    EXPECT_TRUE(ParseDecimal("0.999", d));
    for (const char* bad : {"", "-", ".", "1.2.3", "1e3", "+2", "nan", "inf", "1,5"})
        EXPECT_FALSE(ParseDecimal(bad, d)) << bad;
}
