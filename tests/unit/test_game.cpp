// What the scenarios can't reach: bank draws against the bank tables, an
// unknown level, the clock at its limits, the cell count behind CountClues,
// and the arrow walk over the whole board.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "core/BoardCode.h"
#include "core/banks/Banks.h"
#include "core/vb.h"
#include "StartedGame.h"
#include "fakes/World.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"

namespace {

const std::string kEasy =
    "8E6217C94B4GI356HA9136DHGE25FD1832G9C2879416E7I1562DC86HICB1547AC547IH2F47B8569A3";

constexpr int kLeft = 37, kUp = 38, kRight = 39, kDown = 40;

struct GameTest : StartedGame {

    void SetUp() override {
        StartedGame::SetUp();
        f->CreateBoardFields();
    }
    Label& option(int i) { return f->lblOption[static_cast<std::size_t>(i)]; }
    void Start(const std::string& state) {
        f->BoardState = state;
        f->BaseScore = 25000;
        f->ShowBoardState();
    }
    void Deal(int level, std::vector<float> draws) {
        for (float d : draws) w.random.queued.push_back(d);
        f->mnuDifficulty_Click(level);
    }
};

std::string Stripped(int level, int batch, int entry) { return vb::Remove(BankEntry(level, batch, entry), "|"); }

TEST_F(GameTest, DealDrawsBatchEntryAndQuarterTurns) {
    struct Case {
        int level;
        float batchDraw, entryDraw, turnDraw;
        int batch, entry, turns;
        const char* label;
        int base;
    };
    const Case cases[] = {
        {0, 0.0f, 0.0f, 0.2499f, 1, 0, 0, "beginner", 25000},
        {1, 0.5f, 0.37f, 0.25f, 7, 37, 1, "intermediate", 50000},
        {2, 0.1f, 0.99f, 0.5f, 2, 99, 2, "advanced", 100000},
        {3, 0.9999999f, 0.9999999f, 0.9999999f, 12, 99, 3, "genius", 200000},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.level);
        Deal(c.level, {c.batchDraw, c.entryDraw, c.turnDraw});
        std::string want = Stripped(c.level, c.batch, c.entry);
        ASSERT_EQ(want.size(), 81u);
        for (int n = 0; n < c.turns; ++n) want = RotateBoard(want);
        EXPECT_EQ(f->BoardState, want);
        EXPECT_EQ(f->lblDifficulty.Caption, c.label);
        EXPECT_EQ(f->BaseScore, c.base);
        EXPECT_EQ(f->lblScore.Caption, std::to_string(c.base));
        // Solve the board so that the next level is dealt without a question.
        option(8).Caption = "solved";
    }
    EXPECT_EQ(w.messages.count, 0);
}

TEST_F(GameTest, BatchWithoutLastSeparatorIsDealtAlike) {
    Deal(0, {0.1f, 0.0f, 0.0f});  // batch 2 of the first level lacks the last "|"
    EXPECT_EQ(f->BoardState.size(), 81u);
    EXPECT_EQ(f->BoardState.find('|'), std::string::npos);
}

TEST_F(GameTest, UnknownLevelChangesOnlyTheVisibility) {
    Start(kEasy);
    f->lblDifficulty.Caption = "beginner";
    f->lblDifficulty.Visible = false;
    f->ClockSeconds = 42;
    f->lblScore.Caption = "1234";
    option(8).Caption = "solved";  // no question
    f->mnuDifficulty_Click(4);
    f->mnuDifficulty_Click(-1);
    EXPECT_TRUE(f->lblDifficulty.Visible);
    EXPECT_EQ(f->lblDifficulty.Caption, "beginner");
    EXPECT_EQ(f->BoardState, kEasy);
    EXPECT_EQ(f->ClockSeconds, 42);
    EXPECT_EQ(f->lblScore.Caption, "1234");
    EXPECT_EQ(f->BaseScore, 25000);
}

TEST_F(GameTest, ClockWrapsToZeroAndTheFullScore) {
    Start(kEasy);
    f->ClockSeconds = 2147483646;
    f->tmrClock_Timer();
    EXPECT_EQ(f->ClockSeconds, 0);
    EXPECT_EQ(f->lblTimer.Caption, "0:00");
    EXPECT_EQ(f->lblScore.Caption, "24993");
    // A clock set past the wrap by hand does not overflow either.
    f->ClockSeconds = 2147483647;
    f->tmrClock_Timer();
    EXPECT_EQ(f->ClockSeconds, 0);
}

TEST_F(GameTest, CountCluesNeedsSeventeenShownDigits) {
    for (int i = 0; i < 16; ++i) {
        cell(i).Text = "1";
        cell(i).Visible = true;
    }
    EXPECT_FALSE(f->CountClues());
    cell(16).Text = "1";
    EXPECT_FALSE(f->CountClues());  // filled but hidden does not count
    cell(16).Visible = true;
    EXPECT_TRUE(f->CountClues());
    cell(3).Text = "";  // shown but empty does not count
    EXPECT_FALSE(f->CountClues());
}

// The arrow walk over a blank board.
struct WalkTest : GameTest {
    void SetUp() override {
        GameTest::SetUp();
        Start(std::string(81, ' '));  // every cell hidden and empty
    }
    int Press(int from, int key) {
        cell(from).Visible = true;
        f->SetFocus({"txtCell", from});
        f->txtCell_KeyDown(from, key, 0);
        return f->Focus.name == "txtCell" ? f->Focus.index : -1;
    }
};

TEST_F(WalkTest, EachArrowAloneVisitsEveryCell) {
    for (int key : {kUp, kDown, kLeft, kRight}) {
        std::set<int> seen;
        int at = 0;
        for (int n = 0; n < 81; ++n) {
            at = Press(at, key);
            ASSERT_GE(at, 0);
            seen.insert(at);
        }
        EXPECT_EQ(seen.size(), 81u) << key;
        EXPECT_EQ(at, 0) << key;
    }
}

TEST_F(WalkTest, WalkOnAFullBoardStopsAndKeepsTheFocus) {
    for (int i = 0; i <= 80; ++i) {
        cell(i).Text = "1";
        cell(i).Visible = true;
    }
    for (int key : {kLeft, kUp, kRight, kDown}) {
        EXPECT_EQ(Press(17, key), 17);
        for (int i = 0; i <= 80; ++i) ASSERT_TRUE(cell(i).Visible);
    }
    // With only the starting cell empty, the walk comes round to it.
    cell(17).Text = "";
    EXPECT_EQ(Press(17, kRight), 17);
    EXPECT_TRUE(cell(17).Visible);
}

}  // namespace
