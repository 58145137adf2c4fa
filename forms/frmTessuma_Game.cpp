// Running game: the level menu and the deal, the clock, the falling score,
// penalties, pause and the moment of being solved.

#include "forms/frmTessuma.h"

#include "core/BoardCode.h"
#include "core/Clock.h"
#include "core/Levels.h"
#include "core/banks/Banks.h"
#include "core/vb.h"
#include "forms/modMain.h"

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
    const int turns = gameclock::DealTurns(ports.random.Rnd());
    for (int n = 0; n < turns; ++n) BoardState = RotateBoard(BoardState);
    ShowBoardState();
}

// Takes an entry of the level's bank into BoardState, with the level's
// name and base score.
void frmTessuma::PickPuzzle(int levelIndex) {
    if (levelIndex >= 0 && levelIndex < kLevelCount) {
        const LevelInfo& level = kLevels[static_cast<std::size_t>(levelIndex)];
        BoardState = GetPuzzle(levelIndex, ports.random);
        lblDifficulty.Caption = level.labelName;
        BaseScore = level.baseScore;
    }
    lblDifficulty.Visible = true;
}

// One second of the game clock; penalties call it directly.
void frmTessuma::tmrClock_Timer() {
    ClockSeconds = gameclock::Tick(ClockSeconds);
    lblTimer.Caption = gameclock::Text(ClockSeconds);
    UpdateScore();
}

void frmTessuma::UpdateScore() { lblScore.Caption = vb::Str(gameclock::ScoreAt(BaseScore, ClockSeconds)); }

// Five minutes of clock, whether the clock runs or not.
void frmTessuma::AddPenalty() {
    ClockSeconds = gameclock::AfterPenalty(ClockSeconds);
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
