// The solve command, the vetting of a typed puzzle, own-puzzle entry and the
// hints, driven through the main form in the simulated world.

#include <gtest/gtest.h>

#include <string>

#include "StartedGame.h"
#include "core/vb.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "sim/World.h"

namespace {

// A classic puzzle (0 empty) and its only solution.
const std::string kPuzzle = "530070000600195000098000060800060003400803001700020006060000280000419005000080079";
const std::string kSolution = "534678912672195348198342567859761423426853791713924856961537284287419635345286179";
// kPuzzle as the game stores it: letters for givens, the solution elsewhere.
const std::string kPuzzleState = "EC46G8912F72AIE3481IH3425F7H597F142CD26H5C79AG139B485F9F1537BH4287DAI63E3452H61GI";

const char* const kNeed17 = "Proper Sudoku need 17 box.";
const char* const kNoSolve = "Puzzle no good - no can solve!";

struct SolveTest : StartedGame {
    void SetUp() override {
        StartedGame::SetUp();
        Listen();
    }
    void Answer(MessageAnswer::Kind kind) {
        MessageAnswer a;
        a.kind = kind;
        w.messages.answers.push_back(a);
    }

    // Puts a grid on the board as own-puzzle entry leaves typed digits:
    // shown, red, unlocked. '0' and '.' leave a cell as it is.
    void Type(const std::string& grid) {
        for (int i = 0; i < 81; ++i) {
            const char ch = grid[static_cast<std::size_t>(i)];
            if (ch == '0' || ch == '.') continue;
            cell(i).Text = std::string(1, ch);
            cell(i).Visible = true;
            cell(i).ForeColor = vb::kColorGiven;
        }
    }
    void Deal(const std::string& state) {
        f->BoardState = state;
        f->ShowBoardState();
        w.sounds.played.clear();
    }
};

// ---------------------------------------------------------------------------
// FindDuplicate

TEST_F(SolveTest, DuplicatesAreToldRowsFirstThenColumnsThenBoxes) {
    struct Case {
        std::vector<std::pair<int, char>> cells;
        const char* digit;
        const char* unit;
    };
    const Case cases[] = {
        // 3 twice in the second row, 2 twice in the fifth: the earlier row.
        {{{9, '3'}, {12, '3'}, {36, '2'}, {40, '2'}}, "3", "second row"},
        // 7 and 4 both doubled in one row: the lower digit.
        {{{0, '7'}, {1, '7'}, {5, '4'}, {8, '4'}}, "4", "first row"},
        // Doubled in a box and in a row at once: told as the row.
        {{{0, '6'}, {1, '6'}}, "6", "first row"},
        // A column comes before any box, also a later column.
        {{{30, '5'}, {40, '5'}, {8, '9'}, {80, '9'}}, "9", "ninth column"},
        {{{2, '1'}, {74, '1'}}, "1", "third column"},
        // Boxes: the first is top left, the third top right, the ninth
        // bottom right, the fifth in the middle.
        {{{30, '5'}, {40, '5'}}, "5", "fifth box"},
        {{{6, '8'}, {16, '8'}}, "8", "third box"},
        {{{27, '2'}, {46, '2'}}, "2", "fourth box"},
        {{{60, '7'}, {80, '7'}}, "7", "ninth box"},
        {{{54, '3'}, {74, '3'}}, "3", "seventh box"},
    };
    for (const auto& c : cases) {
        for (int i = 0; i < 81; ++i) cell(i).Text.clear();
        for (const auto& [i, d] : c.cells) cell(i).Text = std::string(1, d);
        bool found = false;
        f->FindDuplicate(found);
        EXPECT_TRUE(found) << c.unit;
        EXPECT_EQ(f->DuplicateDigit, c.digit) << c.unit;
        EXPECT_EQ(f->DuplicateUnit, c.unit);
    }
}

TEST_F(SolveTest, NoDuplicateInAValidGridOrAmongLetters) {
    Type(kSolution);
    bool found = true;
    f->FindDuplicate(found);
    EXPECT_FALSE(found);

    // Letters are no digits; a doubled letter is not a doubled number.
    for (int i = 0; i < 81; ++i) cell(i).Text.clear();
    cell(0).Text = "x";
    cell(1).Text = "x";
    f->FindDuplicate(found);
    EXPECT_FALSE(found);
}

// ---------------------------------------------------------------------------
// Vetting a typed puzzle

TEST_F(SolveTest, RefusalsComeInTheOrderSolverCountDuplicates) {
    struct Case {
        const char* name;
        std::string grid;
        std::string message;
    };
    const Case cases[] = {
        // Ten cells the solver cannot complete: its verdict comes before
        // the count.
        {"unsolvable", "123456780000000009" + std::string(63, '0'), kNoSolve},
        {"empty", std::string(81, '0'), kNeed17},
        {"sixteen", kPuzzle.substr(0, 44) + std::string(37, '0'), kNeed17},
        // A doubled digit with fewer than 17 cells: the solver's verdict,
        // else the count, comes first.
        {"doubled, unsolvable", "55" + std::string(79, '0'), kNoSolve},
        {"full row doubled, few", "123456785" + std::string(72, '0'), kNeed17},
        // A full row with a doubled digit: the solver answers true, so
        // with 18 cells the doubled digit is told.
        {"full row doubled", "123456785" + std::string(27, '0') + "912345678" + std::string(36, '0'),
         "Puzzle have more than one\r\nnumber 5 in first row."},
        // A second 3 in the last column that the solver completes all the
        // same, by propagation.
        {"hidden conflict", kPuzzle.substr(0, 17) + "3" + kPuzzle.substr(18),
         "Puzzle have more than one\r\nnumber 3 in ninth column."},
    };
    for (const auto& c : cases) {
        for (int i = 0; i < 81; ++i) cell(i) = TextField{};
        Type(c.grid);
        f->BoardState = kPuzzleState;
        f->SuppressChange = false;
        w.window.pointerHistory.clear();
        const int before = w.messages.count;

        f->SolveOrCheck(true);

        EXPECT_EQ(w.messages.count, before + 1) << c.name;
        EXPECT_EQ(w.messages.lastText, c.message) << c.name;
        EXPECT_EQ(w.messages.lastKind, "") << c.name;
        EXPECT_FALSE(f->PuzzleAccepted) << c.name;
        EXPECT_EQ(f->BoardState, "") << c.name;
        // The refusal leaves the change handling off on purpose.
        EXPECT_TRUE(f->SuppressChange) << c.name;
        EXPECT_EQ(w.window.pointerHistory, (std::vector<int>{11, 0})) << c.name;
        // Nothing of the grid was touched.
        for (int i = 0; i < 81; ++i) {
            const char want = c.grid[static_cast<std::size_t>(i)];
            EXPECT_EQ(cell(i).Text, want == '0' ? "" : std::string(1, want)) << c.name << " cell " << i;
        }
    }
}

TEST_F(SolveTest, AcceptedGridBecomesBoardStateAndTheFinishedLook) {
    Type(kPuzzle);
    cell(80).Text = "x";  // a letter is a filled cell: 'x' + 16 goes in, 0 to the solver
    f->PuzzleDirty = true;
    f->tmrClock.Enabled = true;
    f->lblOption[8].Caption = "pause";
    f->lblUnderscore[4].Visible = true;
    f->lblOption[1].ForeColor = vb::kColorLive;
    f->lblOption[1].MousePointer = vb::kPointerCustom;

    f->SolveOrCheck(true);

    std::string want = kPuzzleState;
    want[80] = static_cast<char>('x' + 16);
    EXPECT_EQ(f->BoardState, want);
    EXPECT_TRUE(f->PuzzleAccepted);
    EXPECT_TRUE(f->SolverResult);
    EXPECT_FALSE(f->PuzzleDirty);
    EXPECT_FALSE(f->SuppressChange);
    EXPECT_EQ(w.messages.count, 0);
    // The vetting leaves the cells alone.
    EXPECT_EQ(cell(2).Text, "");
    EXPECT_FALSE(cell(2).Visible);
    // The same finished look as the solve command.
    EXPECT_FALSE(f->tmrClock.Enabled);
    EXPECT_EQ(f->lblOption[8].Caption, "solved");
    EXPECT_EQ(f->lblScore.Caption, "0");
    EXPECT_FALSE(f->lblUnderscore[4].Visible);
    EXPECT_EQ(f->lblOption[1].ForeColor, vb::kColorGreyed);
    EXPECT_EQ(f->lblOption[1].MousePointer, vb::kPointerDefault);
    EXPECT_EQ(f->MousePointer, vb::kPointerDefault);
}

// ---------------------------------------------------------------------------
// Own-puzzle entry

TEST_F(SolveTest, EnterOpensAnEmptyRedGridWithTheCaretInCellZero) {
    Deal(kPuzzleState);
    Answer(MessageAnswer::Yes);

    f->mnuEnterPuzzle_Click();

    EXPECT_EQ(w.messages.lastText, "Say goodbye to puzzle now?");
    EXPECT_EQ(w.messages.lastKind, "yn");
    EXPECT_EQ(f->BoardState, "");
    for (int i = 0; i <= 8; ++i) EXPECT_EQ(f->cmdSideNav[static_cast<std::size_t>(i)].Visible, i >= 7) << i;
    EXPECT_FALSE(f->tmrClock.Enabled);
    EXPECT_FALSE(f->lblScore.Visible);
    EXPECT_FALSE(f->lblDifficulty.Visible);
    EXPECT_FALSE(f->cmdShowOptions.Visible);
    EXPECT_FALSE(f->cmdHideOptions.Visible);
    for (int i = 1; i < 81; ++i) {
        EXPECT_EQ(cell(i).Text, "") << i;
        EXPECT_FALSE(cell(i).Visible) << i;
        EXPECT_FALSE(cell(i).Locked) << i;
        EXPECT_FALSE(cell(i).TabStop) << i;
        EXPECT_EQ(cell(i).ForeColor, vb::kColorGiven) << i;
    }
    for (std::size_t k = 0; k < 243; ++k) {
        EXPECT_EQ(f->lblViewPos[k].Caption, "   ") << k;
        EXPECT_TRUE(f->lblViewPos[k].Visible) << k;
    }
    // The blank in cell 0 waits for the queued {DEL}.
    EXPECT_EQ(cell(0).Text, " ");
    EXPECT_TRUE(cell(0).Visible);
    EXPECT_EQ(f->FocusedControl().ToString(), "txtCell(0)");
    EXPECT_FALSE(f->SuppressChange);
    EXPECT_EQ(f->DeliverQueuedKeys(), 1);
    EXPECT_EQ(cell(0).Text, "");
    EXPECT_TRUE(cell(0).Visible);
    EXPECT_EQ(f->FocusedControl().ToString(), "txtCell(0)");

    // The first digit goes straight into cell 0.
    f->PlayerTypes(0, "5");
    EXPECT_EQ(cell(0).Text, "5");
}

// ---------------------------------------------------------------------------
// Hints

TEST_F(SolveTest, HintNeverPicksTheLastEmptyCellWhileOthersRemain) {
    // Three open cells: 2, 3 and 80. k = Int(r * 2) reaches 0 and 1 only.
    std::string state = kSolution;
    for (std::size_t i = 0; i < 81; ++i)
        if (i != 2 && i != 3 && i != 80) state[i] = static_cast<char>(state[i] + 16);
    const struct {
        float r;
        int cell;
    } draws[] = {{0.0f, 2}, {0.49f, 2}, {0.5f, 3}, {0.99999994f, 3}};
    for (const auto& d : draws) {
        Deal(state);
        w.random.queued.push_back(d.r);
        f->mnuFillRandomSquare_Click();
        EXPECT_EQ(cell(d.cell).Text, std::string(1, kSolution[static_cast<std::size_t>(d.cell)])) << d.r;
        EXPECT_EQ(cell(80).Text, "") << d.r;
    }
}

}  // namespace
