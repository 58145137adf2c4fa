#include "forms/frmTessuma.h"

#include <climits>
#include <cmath>

#include "core/BoardCode.h"
#include "core/Levels.h"
#include "core/banks/Banks.h"
#include "core/vb.h"
#include "forms/modMain.h"

// Running game: the level menu and the deal, the clock, the falling score,
// penalties, pause and the moment of being solved.

namespace {

// The clock's highest count; reaching it puts the clock back to 0.
constexpr std::int32_t kClockWrap = INT32_MAX;

// A number with at least two digits, as the format "0#" writes it.
std::string TwoDigits(long long n) {
    std::string s = vb::Str(n < 0 ? -n : n);
    if (s.size() < 2) s.insert(0, "0");
    return n < 0 ? "-" + s : s;
}

// Int() of a quotient: the largest whole number not above it.
long long IntDiv(long long a, long long b) {
    long long q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
    return q;
}

}  // namespace

// A level was chosen in the popup of side button 0.
void frmTessuma::mnuDifficulty_Click(int Index) {
    if (CountClues() && !IsSolved()) {
        ShowMessage("Say goodbye to puzzle now?", "yn");
        if (program.MessageResult == "no") return;
    }
    PickPuzzle(Index);
    // An unknown level has no bank: the puzzle on the board stays as it is.
    if (Index < 0 || Index >= kLevelCount) return;
    lblScore.Caption = vb::Str(BaseScore);
    BoardState = vb::Remove(BoardState, "|");
    const float r = ports.random ? ports.random->Rnd() : 0.0f;
    int turns = static_cast<int>(std::floor(r * 4.0f));
    turns = ((turns % 4) + 4) % 4;
    for (int n = 0; n < turns; ++n) BoardState = RotateBoard(BoardState);
    ShowBoardState();
}

// Takes an entry of the level's bank into BoardState, with the level's
// name and base score.
void frmTessuma::PickPuzzle(int levelIndex) {
    if (levelIndex >= 0 && levelIndex < kLevelCount && ports.random) {
        const LevelInfo& level = kLevels[static_cast<std::size_t>(levelIndex)];
        BoardState = GetPuzzle(levelIndex, *ports.random);
        lblDifficulty.Caption = level.labelName;
        BaseScore = level.baseScore;
    }
    lblDifficulty.Visible = true;
}

// One second of the game clock; penalties call it directly.
void frmTessuma::tmrClock_Timer() {
    // A clock at or past its highest count (only a direct setting can put it
    // there) wraps like one that reaches it.
    if (ClockSeconds >= kClockWrap - 1) ClockSeconds = 0;
    else ++ClockSeconds;

    const long long t = ClockSeconds;
    const long long seconds = t % 60;
    const long long minutes = IntDiv(t % 3600, 60);
    if (t < 3600) {
        lblTimer.Caption = vb::Str(minutes) + ":" + TwoDigits(seconds);
    } else {
        lblTimer.Caption = vb::Str(IntDiv(t, 3600)) + ":" + TwoDigits(minutes) + ":" + TwoDigits(seconds);
    }
    UpdateScore();
}

// The score falls from BaseScore to 0 in an hour. The factor is 0.0002777,
// not 1/3600, so a running game never shows the full base score.
void frmTessuma::UpdateScore() {
    std::int32_t score = 0;
    if (ClockSeconds < 3600) {
        const double left = static_cast<double>(3600LL - static_cast<long long>(ClockSeconds));
        score = vb::CLng(static_cast<double>(BaseScore) * (left * 0.0002777));
    }
    lblScore.Caption = vb::Str(score);
}

// Five minutes of clock: 299 seconds here and the 300th by a direct tick,
// whether the clock runs or not.
void frmTessuma::AddPenalty() {
    const long long later = static_cast<long long>(ClockSeconds) + 299;
    ClockSeconds = later >= kClockWrap - 1 ? kClockWrap - 1 : static_cast<std::int32_t>(later);
    tmrClock_Timer();
}

// Pause and resume: the curtain picFrame(3) covers the board while the
// clock stands.
void frmTessuma::TogglePause() {
    if (IsSolved()) return;
    lblSupport.Visible = false;
    lblWiki.Visible = false;
    if (lblOption[8].Caption == "pause") {
        std::int16_t all = 0, clockAndWord = 7;
        SetSideNavVisible(false, all);
        SetOptionsVisible(false, clockAndWord);
        picFrame[3].Picture = chkSkin.Value != 0 ? 175 : 0;
        picFrame[3].Visible = true;
        cmdShowOptions.Visible = false;
        cmdHideOptions.Visible = false;
        tmrClock.Enabled = false;
        lblOption[8].Caption = "resume";
    } else {
        picFrame[3].Visible = false;
        std::int16_t all = 0;
        SetSideNavVisible(true, all);
        if (OptionsShown) {
            std::int16_t panel = 0;
            SetOptionsVisible(true, panel);
        }
        cmdShowOptions.Visible = true;
        cmdHideOptions.Visible = OptionsShown;
        tmrClock.Enabled = true;
        lblOption[8].Caption = "pause";
    }
}

// Is there a puzzle on the board: at least 17 cells shown and filled.
bool frmTessuma::CountClues() const {
    int filled = 0;
    for (const TextField& cell : txtCell)
        if (cell.Visible && !cell.Text.empty()) ++filled;
    return filled > 16;
}

bool frmTessuma::IsSolved() const { return vb::ContainsNoCase(lblOption[8].Caption, "solved"); }

// The player's digit filled the last empty cell. A full board is solved;
// nothing checks the grid again.
void frmTessuma::CompletePuzzle() {
    PlayEffect(SoundSolved);
    tmrClock.Enabled = false;
    lblOption[1].ForeColor = vb::kColorGreyed;
    lblOption[1].MousePointer = vb::kPointerDefault;
    lblOption[8].Caption = PerfectGame ? "SOLVED!" : "solved";
    lblUnderscore[4].Visible = false;
    if (vb::Val(lblScore.Caption) > 0) EnterHighScore();
}

void frmTessuma::Form_Click() { HideOverlays(); }

void frmTessuma::lblTimer_Click() { HideOverlays(); }

// A click on the pause curtain resumes the game.
void frmTessuma::picFrame_Click(int Index) {
    if (Index == 3) TogglePause();
}
