// The board where the scenarios can't reach it: the places of the cells and
// labels, states too short, cells of an unknown colour, and characters that
// are not digits.

#include <gtest/gtest.h>

#include <string>

#include "StartedGame.h"
#include "core/vb.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "sim/World.h"

namespace {

// An easy puzzle: letters are givens, digits the solution of empty cells.
const std::string kEasy = "8E6217C94B4GI356HA9136DHGE25FD1832G9C2879416E7I1562DC86HICB1547AC547IH2F47B8569A3";

struct BoardTest : StartedGame {
    void SetUp() override {
        StartedGame::SetUp();
        f->CreateBoardFields();
    }
    Label& label(int i) { return f->lblViewPos[static_cast<std::size_t>(i)]; }
    const std::string& possible(int r, int c) {
        return f->Possible[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
    }
    void Show(const std::string& state) {
        f->BoardState = state;
        f->ShowBoardState();
    }
};

TEST_F(BoardTest, CellIndexIsRowMajor) {
    EXPECT_EQ(frmTessuma::CellIndex(0, 0), 0);
    EXPECT_EQ(frmTessuma::CellIndex(0, 8), 8);
    EXPECT_EQ(frmTessuma::CellIndex(1, 0), 9);
    EXPECT_EQ(frmTessuma::CellIndex(4, 5), 41);
    EXPECT_EQ(frmTessuma::CellIndex(8, 8), 80);
}

TEST_F(BoardTest, FieldsArePlacedInBandsAndStacksWithGaps) {
    EXPECT_EQ(cell(0).Left, 120);
    EXPECT_EQ(cell(0).Top, 64);
    EXPECT_EQ(cell(2).Left, 120 + 2 * 41);
    EXPECT_EQ(cell(3).Left, 120 + 8 + 3 * 41);  // the gap between stacks
    EXPECT_EQ(cell(8).Left, 120 + 16 + 8 * 41);
    EXPECT_EQ(cell(27).Top, 64 + 8 + 3 * 41);  // the gap between bands
    EXPECT_EQ(cell(80).Left, 464);
    EXPECT_EQ(cell(80).Top, 408);
    for (int i = 0; i <= 80; ++i) {
        EXPECT_EQ(cell(i).Width, 41);
        EXPECT_EQ(cell(i).Height, 41);
        EXPECT_EQ(cell(i).MaxLength, 1);
        EXPECT_FALSE(cell(i).Visible) << i;
        EXPECT_EQ(cell(i).Text, "") << i;
        for (int k = 0; k <= 2; ++k) {
            const Label& l = label(3 * i + k);
            EXPECT_EQ(l.Left, cell(i).Left + 1);
            EXPECT_EQ(l.Top, cell(i).Top + 1 + 13 * k);
            EXPECT_EQ(l.Width, 40);
            EXPECT_EQ(l.Height, 13);
            EXPECT_EQ(l.Caption, k == 0 ? "123" : k == 1 ? "456" : "789");
            EXPECT_FALSE(l.Visible);
            EXPECT_EQ(l.ForeColor, vb::kColorHinted);
        }
    }
}

TEST_F(BoardTest, ReadingResetsCellsMarksAndMenus) {
    // Leftovers of an earlier game must not survive a new reading.
    Show("S" + std::string(80, 'J'));
    cell(5).Text = "";
    cell(5).Visible = true;
    label(10).Caption = "1 3";
    Show(kEasy);
    EXPECT_FALSE(f->mnuClearSolvedSquares.Enabled);  // no hinted cell this time
    EXPECT_EQ(cell(0).Text, "");
    EXPECT_FALSE(cell(0).Visible);
    EXPECT_EQ(cell(1).Text, "5");
    EXPECT_TRUE(cell(1).Locked);
    EXPECT_EQ(f->GetViewPosText(), std::string(729, ' '));
    for (const Label& l : f->lblViewPos) EXPECT_TRUE(l.Visible);
}

TEST_F(BoardTest, ShortStatesReadAsEmptyCells) {
    Show("ABC");
    EXPECT_EQ(cell(0).Text, "1");
    EXPECT_EQ(cell(2).Text, "3");
    for (int i = 3; i <= 80; ++i) {
        EXPECT_EQ(cell(i).Text, "") << i;
        EXPECT_FALSE(cell(i).Visible) << i;
    }
    // Writing it back pads the missing cells with blanks.
    EXPECT_EQ(f->BuildBoardState(), "ABC" + std::string(78, ' '));
    Show("");
    for (int i = 0; i <= 80; ++i) EXPECT_EQ(cell(i).Text, "") << i;
    EXPECT_EQ(f->BuildBoardState(), std::string(81, ' '));
}

TEST_F(BoardTest, WritingSkipsCellsOfAnUnknownColour) {
    Show(kEasy);
    cell(1).ForeColor = 0x123456;
    const std::string written = f->BuildBoardState();
    EXPECT_EQ(written.size(), 80u);
    EXPECT_EQ(written, kEasy.substr(0, 1) + kEasy.substr(2));
}

TEST_F(BoardTest, WritingWithoutStateUsesBlanks) {
    // Own-puzzle entry: no state yet, typed cells are entered digits.
    cell(0).Text = "4";
    cell(0).ForeColor = vb::kColorGiven;
    cell(80).Text = "9";
    cell(80).ForeColor = vb::kColorEntered;
    f->BoardState.clear();
    EXPECT_EQ(f->BuildBoardState(), "D" + std::string(79, ' ') + "R");
}

TEST_F(BoardTest, PossibleIgnoresCharactersThatAreNotDigits) {
    // Own-puzzle entry keeps any character in a cell.
    cell(40).Text = "x";
    cell(41).Text = "3";
    f->RecalcPossible();
    EXPECT_EQ(possible(4, 0), "12456789");
    EXPECT_EQ(possible(4, 4), "");
}

}  // namespace
