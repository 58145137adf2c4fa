// Side navigation, option labels, Alt keys.

#include "forms/frmTessuma.h"

#include <cctype>

#include "BuildConfig.h"
#include "core/vb.h"

// The one entry point of the nine side buttons; also reached by the hidden
// key buttons and by the close flow. Commands that need a puzzle ask
// CountClues and refuse with a notice.
void frmTessuma::cmdSideNav_Click(int Index) {
    HideOverlays();
    // The high score page goes first, for every button but its own.
    if (picFrame[4].Visible && Index != 5) HideHighs();

    switch (Index) {
        case 0:
            PlayEffect(SoundPopupOpen);
            PopupMenu("mnuPopupDifficulty");
            break;
        case 1:
            PlayEffect(SoundNavClick);
            OpenGame();
            break;
        case 2:
            if (CountClues()) {
                PlayEffect(SoundNavClick);
                SaveGame();
            } else {
                ShowMessage("How to save when\r\nno puzzle exist?", "");
            }
            break;
        case 3:
            if (CountClues()) {
                PlayEffect(SoundNavClick);
                PrintBoard();
            } else {
                ShowMessage("Why to print with no puzzle?", "");
            }
            break;
        case 4:
            // A solved game is asked first, so hints on it are silent.
            if (IsSolved()) break;
            if (CountClues()) {
                PlayEffect(SoundPopupOpen);
                PopupMenu("mnuPopupHint");
            } else {
                ShowMessage("How to solve with no puzzle?", "");
            }
            break;
        case 5:
            PlayEffect(SoundNavClick);
            if (picFrame[4].Visible)
                HideHighs();
            else
                ShowHighs();
            break;
        case 6: {
            PlayEffect(SoundNavClick);
            std::int16_t help = 2;
            ShowFrame(help);
            break;
        }
        case 7:
            // The finish makes its own sounds.
            FinishOwnPuzzle();
            break;
        case 8:
            PlayEffect(SoundNavClick);
            CancelOwnPuzzle();
            break;
        default: break;
    }
}

// Buttons 0 to Count take Visible, the others its opposite; a Count of 0
// means all nine, and the caller sees the 9. Buttons 7 and 8 lie under 0 and
// 1, so (false, 6) leaves just Finish and Cancel.
void frmTessuma::SetSideNavVisible(bool Visible, std::int16_t& Count) {
    if (Count == 0) Count = 9;
    for (int i = 0; i <= 8; ++i) cmdSideNav[static_cast<std::size_t>(i)].Visible = i <= Count ? Visible : !Visible;
}

// The option labels that act as commands: 1 auto-mark, 7 update, 8 pause,
// 10 donation. Every click clears the overlays first.
void frmTessuma::lblOption_Click(int Index) {
    HideOverlays();
    switch (Index) {
        case 1:
            // No guard: greyed, paused or solved, it still charges the clock.
            UpdateViewPossible();
            AddPenalty();
            break;
        case 7: CheckForUpdate(); break;
        case 8: TogglePause(); break;
        case 10:
            // A failure to open the page is not reported.
            ports.shell.Open(TESSUMA_DONATE_URL, "C:\\");
            break;
        default: break;
    }
}

// The hidden key buttons. A key that clicks a control calls its handler
// directly, and only where the mouse could click it: the visibility of the
// side buttons is the mode.

void frmTessuma::cmdHiddenCreate_Click() {
    if (cmdSideNav[0].Visible)
        cmdSideNav_Click(0);
    else if (cmdSideNav[8].Visible)
        cmdSideNav_Click(8);
}

// In normal play button 7 counts as visible under button 0; it is only
// reachable while 0 is hidden.
void frmTessuma::cmdHiddenFinish_Click() {
    if (cmdSideNav[7].Visible && !cmdSideNav[0].Visible) cmdSideNav_Click(7);
}

void frmTessuma::cmdHiddenLoad_Click() {
    if (cmdSideNav[1].Visible) cmdSideNav_Click(1);
}

void frmTessuma::cmdHiddenSave_Click() {
    if (cmdSideNav[2].Visible) cmdSideNav_Click(2);
}

void frmTessuma::cmdHiddenPrint_Click() {
    if (cmdSideNav[3].Visible) cmdSideNav_Click(3);
}

// Solve in play, OK in help.
void frmTessuma::cmdHiddenSolveOK_Click() {
    if (cmdSideNav[4].Visible)
        cmdSideNav_Click(4);
    else if (picHelpNav.Visible)
        cmdOK_Click();
}

void frmTessuma::cmdHiddenHighs_Click() {
    if (cmdSideNav[5].Visible) cmdSideNav_Click(5);
}

void frmTessuma::cmdHiddenHelp_Click() {
    if (cmdSideNav[6].Visible) cmdSideNav_Click(6);
}

void frmTessuma::cmdHiddenPause_Click() {
    if (lblOption[8].Visible && !IsSolved()) TogglePause();
}

void frmTessuma::cmdHiddenSkin_Click() { SetSkinValue(1 - chkSkin.Value); }

void frmTessuma::cmdHiddenSounds_Click() { SetSoundsValue(1 - chkSounds.Value); }

void frmTessuma::cmdHiddenUpdate_Click() {
    if (lblOption[7].Visible) lblOption_Click(7);
}

// Works with the label hidden too, as during pause or help.
void frmTessuma::cmdHiddenDonate_Click() { lblOption_Click(10); }

void frmTessuma::cmdHiddenShow_Click() {
    if (BoardUncovered() && !cmdHideOptions.Visible) cmdShowOptions_Click();
}

void frmTessuma::cmdHiddenHide_Click() {
    if (BoardUncovered() && cmdHideOptions.Visible) cmdHideOptions_Click();
}

namespace {

// The access key of a caption: the character after a lone "&" ("&&" is a
// literal ampersand), lower-cased; '\0' when there is none.
char AccessKey(const std::string& caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] == '&') {
            ++i;
            continue;
        }
        return static_cast<char>(std::tolower(static_cast<unsigned char>(caption[i + 1])));
    }
    return '\0';
}

}  // namespace

// Alt+KEY: the hidden button whose caption carries KEY as its access key is
// clicked, as the platform would do it: only while the button is visible and
// enabled. Letters are matched without regard to case.
bool frmTessuma::PressAltKey(char key) {
    struct Hidden {
        const CommandButton* button;
        void (frmTessuma::*click)();
    };
    const Hidden hidden[] = {
        {&cmdHiddenCreate, &frmTessuma::cmdHiddenCreate_Click},
        {&cmdHiddenFinish, &frmTessuma::cmdHiddenFinish_Click},
        {&cmdHiddenLoad, &frmTessuma::cmdHiddenLoad_Click},
        {&cmdHiddenSave, &frmTessuma::cmdHiddenSave_Click},
        {&cmdHiddenPrint, &frmTessuma::cmdHiddenPrint_Click},
        {&cmdHiddenSolveOK, &frmTessuma::cmdHiddenSolveOK_Click},
        {&cmdHiddenHighs, &frmTessuma::cmdHiddenHighs_Click},
        {&cmdHiddenHelp, &frmTessuma::cmdHiddenHelp_Click},
        {&cmdHiddenPause, &frmTessuma::cmdHiddenPause_Click},
        {&cmdMark, &frmTessuma::cmdMark_Click},
        {&cmdHiddenClickRing, &frmTessuma::cmdHiddenClickRing_Click},
        {&cmdHiddenSkin, &frmTessuma::cmdHiddenSkin_Click},
        {&cmdHiddenSounds, &frmTessuma::cmdHiddenSounds_Click},
        {&cmdHiddenMinus, &frmTessuma::cmdHiddenMinus_Click},
        {&cmdHiddenPlus, &frmTessuma::cmdHiddenPlus_Click},
        {&cmdHiddenUpdate, &frmTessuma::cmdHiddenUpdate_Click},
        {&cmdHiddenDonate, &frmTessuma::cmdHiddenDonate_Click},
        {&cmdHiddenFirstCell, &frmTessuma::cmdHiddenFirstCell_Click},
        {&cmdHiddenShow, &frmTessuma::cmdHiddenShow_Click},
        {&cmdHiddenHide, &frmTessuma::cmdHiddenHide_Click},
    };
    const char wanted = static_cast<char>(std::tolower(static_cast<unsigned char>(key)));
    if (wanted == '\0') return false;
    for (const auto& h : hidden) {
        if (AccessKey(h.button->Caption) != wanted) continue;
        if (h.button->Visible && h.button->Enabled) (this->*h.click)();
        return true;
    }
    return false;
}
