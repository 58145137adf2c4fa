// The rules of the game as values: clock and score, saved games, high
// scores, the version file, the hint pick, the arrow walk, the volume and
// profile text.

#include <gtest/gtest.h>

#include <climits>

#include "core/Clock.h"
#include "core/HighScores.h"
#include "core/Hint.h"
#include "core/Ini.h"
#include "core/Keys.h"
#include "core/SavedGame.h"
#include "core/VersionFile.h"
#include "core/Volume.h"

TEST(Rules, ClockTextScoreAndPenalty) {
    EXPECT_EQ(gameclock::Text(0), "0:00");
    EXPECT_EQ(gameclock::Text(65), "1:05");
    EXPECT_EQ(gameclock::Text(3599), "59:59");
    EXPECT_EQ(gameclock::Text(3600), "1:00:00");
    EXPECT_EQ(gameclock::Text(3661), "1:01:01");
    EXPECT_EQ(gameclock::Tick(INT32_MAX - 1), 0);
    EXPECT_EQ(gameclock::AfterPenalty(10), 309);
    EXPECT_EQ(gameclock::AfterPenalty(INT32_MAX - 100), INT32_MAX - 1);
    // Never the full base while running: 0.0002777, not 1/3600.
    EXPECT_EQ(gameclock::ScoreAt(25000, 0), 24993);
    EXPECT_EQ(gameclock::ScoreAt(25000, 1800), 12496);
    EXPECT_EQ(gameclock::ScoreAt(25000, 3599), 7);
    EXPECT_EQ(gameclock::ScoreAt(25000, 3600), 0);
    EXPECT_EQ(gameclock::DealTurns(0.0f), 0);
    EXPECT_EQ(gameclock::DealTurns(0.74f), 2);
    EXPECT_EQ(gameclock::DealTurns(0.99f), 3);
}

TEST(Rules, SavedGameReadsForgivinglyAndWritesFiveLines) {
    const std::string board(81, 'A');
    const auto g = ParseSavedGame(board + "\n12|3\r\nGenius\r\n2.5\r\n" + std::string(729, ' '));
    ASSERT_TRUE(g);
    EXPECT_EQ(g->score, "123");
    EXPECT_EQ(g->level, "Genius");
    EXPECT_EQ(g->clock, 2);  // halves to even
    EXPECT_EQ(g->marks.size(), 729u);
    EXPECT_FALSE(ParseSavedGame(std::string(80, 'A') + "\r\n"));
    EXPECT_FALSE(ParseSavedGame(""));
    const auto bare = ParseSavedGame(board);
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->clock, 0);
    EXPECT_EQ(FormatSavedGame({board, "9", "genius", 61, "m"}), board + "\r\n9\r\ngenius\r\n61\r\nm\r\n");
    EXPECT_EQ(WithGameExtension("a"), "a.tsm");
    EXPECT_EQ(WithGameExtension("a.TSM"), "a.TSM");
    EXPECT_EQ(WithGameExtension(".tsm"), ".tsm");
}

TEST(Rules, HighScoresRankByPaddedScore) {
    HighTable t{"1250,bombastic", "12000,funkalicious", "0,zero", "x,odd", "12345678,late"};
    t[13] = "500,new";
    RankHighScores(t);  // highest first; an unpadded long score sorts above all
    EXPECT_EQ(t[0], "12345678,late");
    EXPECT_EQ(t[1], "012000,funkalicious");
    EXPECT_EQ(t[3], "000500,new");
    EXPECT_EQ(t[4], "00000x,odd");
    const auto top = HighRowOf(t[1]);
    ASSERT_TRUE(top);
    EXPECT_EQ(top->score, "12000");
    EXPECT_EQ(top->name, "funkalicious");
    EXPECT_EQ(HighRowOf("000000,zero")->score, "");
    EXPECT_EQ(HighRowOf("00000x,odd")->score, "00000x");
    EXPECT_FALSE(HighRowOf("12345678,late"));
    EXPECT_FALSE(HighRowOf("nocomma"));
}

TEST(Rules, VersionFileFieldsAndComparison) {
    auto v = ParseVersionFile("\xEF\xBB\xBF 21 ,\"http://x/a,b\" junk\r\nmore");
    ASSERT_TRUE(v);
    EXPECT_EQ(v->newest, "21");
    EXPECT_EQ(v->address, "http://x/a,b");
    EXPECT_FALSE(ParseVersionFile("21"));
    EXPECT_FALSE(ParseVersionFile(std::string(kMaxVersionFileBytes + 1, ' ')));
    EXPECT_TRUE(IsNewerVersion("21", 2, 0));
    EXPECT_FALSE(IsNewerVersion("20", 2, 0));
    EXPECT_FALSE(IsNewerVersion("abc", 2, 0));
}

TEST(Rules, HintNeverPicksTheLastEmptyCellWhileAnotherIsLeft) {
    EXPECT_EQ(HintPick(0.5, 0), -1);
    EXPECT_EQ(HintPick(0.99, 1), 0);
    EXPECT_EQ(HintPick(0.999999, 10), 8);
    EXPECT_EQ(HintPick(0.5, 10), 4);
    EXPECT_EQ(HintPick(7.0, 10), 0);
    std::array<std::string, 81> cells;
    cells[0] = "5";
    cells[27] = "5";  // first column, rows 0 and 3
    auto d = FindDuplicate(cells);
    ASSERT_TRUE(d);
    EXPECT_EQ(d->unit, "first column");
    cells[27].clear();
    cells[40] = "7";
    cells[50] = "7";  // middle box
    d = FindDuplicate(cells);
    ASSERT_TRUE(d);
    EXPECT_EQ(d->digit, "7");
    EXPECT_EQ(d->unit, "fifth box");
}

TEST(Rules, ArrowsWalkTheBoardAsOneLine) {
    using namespace keys;
    EXPECT_EQ(NextCell(0, kLeft), 80);
    EXPECT_EQ(NextCell(80, kRight), 0);
    EXPECT_EQ(NextCell(4, kUp), 75);  // one column to the left at the bottom
    EXPECT_EQ(NextCell(0, kUp), 80);
    EXPECT_EQ(NextCell(76, kDown), 5);  // one column to the right at the top
    EXPECT_EQ(NextCell(80, kDown), 0);
    EXPECT_EQ(AccessChar('L'), 'l');
    EXPECT_EQ(AccessChar(kOemMinus), '-');
    EXPECT_EQ(AccessChar(13), '\0');
}

TEST(Rules, VolumeThumbAndDevice) {
    EXPECT_EQ(volume::Step(37.0f, 5), 40.0f);
    EXPECT_EQ(volume::Step(37.0f, -5), 30.0f);
    EXPECT_EQ(volume::Step(74.0f, 5), 75.0f);
    EXPECT_EQ(volume::DeviceVolume(75.0f), 100);
    EXPECT_EQ(volume::DeviceVolume(37.0f), 49);
    EXPECT_EQ(volume::StoredThumb(80), 75.0f);
    EXPECT_EQ(volume::StoredThumb(-3), 0.0f);
}

TEST(Rules, ProfileTextIsCaseBlindAndKeepsOtherLines) {
    IniText ini("; mine\r\n[Other]\r\nKey=x\r\n[dialogs]\r\n  lastopendir = \"a b\" \r\nMine=kept\r\n");
    EXPECT_EQ(ini.Get("DIALOGS", "LastOpenDir").value_or("-"), "a b");
    EXPECT_FALSE(ini.Get("DIALOGS", "Key"));
    ini.Set("DIALOGS", "LastOpenDir", "c\nd");
    ini.Set("DIALOGS", "New", "1");
    ini.Set("Fresh", "K", "v");
    EXPECT_EQ(ini.Text(), "; mine\n[Other]\nKey=x\n[dialogs]\nLastOpenDir=c d\nMine=kept\nNew=1\n[Fresh]\nK=v\n");
    EXPECT_EQ(ProfileInt("12ab"), 12);
    EXPECT_EQ(ProfileInt("-4"), 0);
}
