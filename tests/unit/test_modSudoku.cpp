// The solver must reach the same digits after the same number of SearchCell
// calls as every other build of the game, so these tests pin whole outcomes:
// any change in an order of trial (digits high to low, the two cell scans,
// the phases of single places, the peer order) shows up as other digits or
// another count.

#include "core/modSudoku.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using Digits = std::vector<std::uint8_t>;

struct Outcome {
    bool loaded;
    int unsolvedAfterLoad;
    bool solved;
    long calls;
    std::string digits;  // 81 characters '0'..'9'
};

// 81 characters, '0' or '.' empty.
Outcome Solve(const std::string& board) {
    modSudoku::Board b{};
    for (int c = 0; c < 81; ++c) b[c] = board.at(c) == '.' ? 0 : static_cast<std::uint8_t>(board[c] - '0');
    Outcome o;
    o.loaded = modSudoku::LoadBoard(b);
    o.unsolvedAfterLoad = modSudoku::Unsolved();
    o.solved = modSudoku::SolveBoard();
    o.calls = modSudoku::SearchCalls();
    modSudoku::Board out{};
    modSudoku::GetSolution(out);
    for (int c = 0; c < 81; ++c) o.digits += static_cast<char>('0' + out[c]);
    return o;
}

std::string Empty() { return std::string(81, '0'); }

std::string WithDigit(std::string board, int cell, char digit) {
    board[cell] = digit;
    return board;
}

// The completion the game gives the empty board.
const std::string kEmptyBoardSolution =
    "943516278175832694286974531321748956467295813598361742612457389734689125859123467";

TEST(SolverTrial, EmptyBoardTriesCellZeroFromNineDown) {
    const Outcome o = Solve(Empty());
    EXPECT_TRUE(o.loaded);
    EXPECT_EQ(o.unsolvedAfterLoad, 81);
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 43);
    EXPECT_EQ(o.digits, kEmptyBoardSolution);
}

TEST(SolverTrial, OneGivenDigit) {
    const Outcome o = Solve(WithDigit(Empty(), 0, '1'));
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 42);
    EXPECT_EQ(o.digits.substr(0, 27), "192635748345278961678914523");
    EXPECT_EQ(o.digits, "192635748345278961678914523231756894456891372987342615513467289724589136869123457");
}

TEST(SolverTrial, TwoFivesInARowExhaustTheTrial) {
    // No test for doubled givens is made: the trial has to run out.
    const Outcome o = Solve(WithDigit(WithDigit(Empty(), 0, '5'), 1, '5'));
    EXPECT_TRUE(o.loaded);
    EXPECT_FALSE(o.solved);
    EXPECT_EQ(o.calls, 8801);
    // The state of the last trial is not rolled back.
    EXPECT_EQ(o.digits, "551000000976000000432000000000000000000000000000000000000000000000000000000000000");
}

// The column phase of single places walks each column only to cell 72 and
// commits only when the walk ran past cell 80, so it commits in column 0
// alone. With the one given 8 in cell 17, the 15th SearchCell call reaches a
// state where 3 has a single place left in column 8 (cell 62); a column phase
// that committed there would decide it at once and end on another completion
// after 42 calls. The game leaves it to the box phase and the trial.
TEST(SolverTrial, ColumnPhaseCommitsInColumnZeroOnly) {
    const Outcome o = Solve(WithDigit(Empty(), 17, '8'));
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 44);
    EXPECT_EQ(o.digits, "736548912295671348814923567678395421941862735352714896467289153589136274123457689");
}

struct Golden {
    const char* board;
    const char* digits;
    bool solved;
    long calls;
};

// Sparse boards, boards with a wrong digit and boards without completion,
// each taking a path of some length through the trial.
const Golden kGolden[] = {
    {"400000000030000000050000000000000000000000000000000700080000000000400060000000000",
     "472956318136874592859123674513798246724635981968241735281367459395412867647589123", true, 40},
    {"940000008000000000000000030000008050000090000000000000012000300700600000800000067",
     "941235678385976412276814935429368751568791243137542896612457389753689124894123567", true, 30},
    {"040000070070000000080070000300000056400000000000300000000050300004080020000000007",
     "543826971671934285982175463398247156416598732725361894267459318154783629839612547", true, 23},
    {"000000001000000000007000000000000100000000000000000000000005002000000000000000000",
     "982763451651492873437581269826357194794816325513924786348675912269148537175239648", true, 39},
    {"000000008600800090000004001300000000000290003508001002610057300700009000050000007",
     "200000008600800094800004001320000006100290003508001002612457389783009005954000007", false, 46},
    {"000010070070830000000900030020040056000000000508000000002060080000000000009000000",
     "893612574674835912215974638927148356431526897568397241352461789186759423749283165", true, 24},
    {"000100200000000000000001000000000000000000003000000001000000000002500099000006000",
     "000100200000000000000001000000000000000000003000000001000000000002513099000006000", false, 497},
    {"004000000000000006400000000500000000600004900000000066000000900005000000000000000",
     "004000000000000006400000000598000000612004900743000066000000900005000000000000000", false, 826},
    // Boards with a wrong or doubled digit, where single places and propagation
    // run into each other. Each one tells a rule of single places or
    // propagation from a build without it:
    // the box phase tests RowDone
    {"000001002057000138000350040000700000000907004030010009009870000048000050000094815",
     "396481572457269138281359646922746381165927384734516289519872463648133957273694815", true, 0},
    // the box phase tests ColDone
    {"184570690090200010020000000460902103030605770500037000370859400040020000000764000",
     "184573692793246818625198345467982153832615774519437286376859421948321567251764939", true, 0},
    // the row phase tests BoxDone
    {"000000400908500002406010000040100006261000000000009004700200750000640048500900000",
     "125896437978534612436712989849125376261478595857369214794281751392647148512983663", true, 0},
    // the row phase ends the pass when it decided a cell
    {"081360090693400000002098010106980001029000400300120000205839000900000600037050000",
     "781362594693415782542798316176984231829573468354126979265839147918247653437651882", true, 0},
    // so does the column phase
    {"604008300000003065000000009030007000001000004207080000003501400100676030006000501",
     "654958317819723265352764819438117692561239784297485153723591426145676938986342571", true, 0},
    // column 0 does commit
    {"000800000008100007004030009200001080048500000000000375000700000020010000086000003",
     "002800000008100007004230809200001080048500000000000375000700000020010000086000003", false, 1},
    // a holder with one candidate is never committed
    {"000760415017504209400009036006005072001407560700023090000001308100208600008000000",
     "893762415617534289452819736346195872921487563785623194564971328139248657278356941", true, 2},
    // propagation leaves decided peers alone
    {"000008341006090000318200796900450070080000069020086400800070912005002637000609080",
     "259768341746191825318245796931453278584327169727986453863574912495812637172639584", true, 0},
    // cells decided by one propagation step join the queue box first, then
    // column, then row
    {"906200900300000706980107000000005067010032509500600004000910071009000200000024890",
     "976253918321849756985167432838495167614732589597681324242918671159376243763524895", true, 0},
    // the last digit of the only trial fails, and its propagation runs to the
    // end: that is the state left behind
    {"860700000000000608002638050086574100457001800090803045009306574145120386038450090",
     "863745912574912638912638457386574129457291863291863745229386574145129386638457291", false, 1},
};

TEST(SolverTrial, KnownBoardsGiveKnownDigitsAndCounts) {
    for (const Golden& g : kGolden) {
        SCOPED_TRACE(g.board);
        const Outcome o = Solve(g.board);
        EXPECT_TRUE(o.loaded);
        EXPECT_EQ(o.solved, g.solved);
        EXPECT_EQ(o.calls, g.calls);
        EXPECT_EQ(o.digits, g.digits);
    }
}

TEST(SolverTrial, PuzzleWithOneSolution) {
    const Outcome o = Solve(".5..4.....47.12....8....3..6....5.1....2.79.6.........3........5....4..9.79...52.");
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 6);
    EXPECT_EQ(o.digits, "153846297947312865286579341692485713814237956735691482321958674568724139479163528");
}

TEST(SolverState, EachSolveStartsAfresh) {
    // A solve that ended in a trial, one that ran out, one that failed to
    // load: none of them may leak into the next.
    Solve(Empty());
    Solve(WithDigit(WithDigit(Empty(), 0, '5'), 1, '5'));
    Solve(std::string("123456788") + std::string(72, '0'));
    const Outcome o = Solve(WithDigit(Empty(), 0, '1'));
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 42);
    EXPECT_EQ(o.digits.substr(0, 9), "192635748");
    const Outcome again = Solve(Empty());
    EXPECT_EQ(again.calls, 43);
    EXPECT_EQ(again.digits, kEmptyBoardSolution);
}

TEST(SolverLoad, FullRowMissingADigitForcesSolved) {
    const std::string board = std::string("123456788") + std::string(72, '0');
    const Outcome o = Solve(board);
    EXPECT_FALSE(o.loaded);
    EXPECT_EQ(o.unsolvedAfterLoad, 0);
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 0);
    EXPECT_EQ(o.digits, board);
}

TEST(SolverLoad, FullValidBoardComesBackAsItIs) {
    const Outcome o = Solve(kEmptyBoardSolution);
    EXPECT_TRUE(o.loaded);
    EXPECT_EQ(o.unsolvedAfterLoad, 0);
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 0);
    EXPECT_EQ(o.digits, kEmptyBoardSolution);
}

TEST(SolverLoad, FullBoardWithConflictFailsToLoadYetSolves) {
    std::string board = kEmptyBoardSolution;
    board[40] = board[41];  // 5 twice in row 4; 9 gone from its row, column and box
    const Outcome o = Solve(board);
    EXPECT_FALSE(o.loaded);
    EXPECT_EQ(o.unsolvedAfterLoad, 0);
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.digits, board);
}

TEST(SolverLoad, PropagationAloneIsTakenWithoutProof) {
    // A wrong 3 in cell 77 (the 2 belongs there). Propagation fills the five
    // empty cells, the last row ends with 3 twice, and no unit check is made.
    const Outcome o = Solve("943516278175832690286974531321708956467295813598361740612457309730689135859123467");
    EXPECT_TRUE(o.loaded);
    EXPECT_TRUE(o.solved);
    EXPECT_EQ(o.calls, 0);
    EXPECT_EQ(o.digits, "943516278175832694286974531321748956467295813598361742612457389734689135859123467");
}

TEST(SolverLoad, ValuesAboveNineAreEmptyCells) {
    modSudoku::Board b{};
    for (int c = 0; c < 81; ++c) b[c] = static_cast<std::uint8_t>(10 + 3 * c);  // 10..250
    EXPECT_TRUE(modSudoku::LoadBoard(b));
    EXPECT_EQ(modSudoku::Unsolved(), 81);
    EXPECT_TRUE(modSudoku::SolveBoard());
    EXPECT_EQ(modSudoku::SearchCalls(), 43);
    modSudoku::GetSolution(b);
    for (int c = 0; c < 81; ++c) EXPECT_EQ(b[c], kEmptyBoardSolution[c] - '0') << "cell " << c;
}

TEST(SolverTables, PeerOrderIsBoxThenColumnThenRow) {
    auto peers = [](int cell) {
        const std::int32_t* p = modSudoku::CellPeers(cell);
        return std::vector<int>(p, p + 20);
    };
    EXPECT_EQ(peers(0), (std::vector<int>{1, 2, 9, 10, 11, 18, 19, 20, 27, 36, 45, 54, 63, 72, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(peers(40),
              (std::vector<int>{30, 31, 32, 39, 41, 48, 49, 50, 4, 13, 22, 58, 67, 76, 36, 37, 38, 42, 43, 44}));
    EXPECT_EQ(modSudoku::CellPeers(81), nullptr);
    EXPECT_EQ(modSudoku::CellPeers(-1), nullptr);
}

}  // namespace
