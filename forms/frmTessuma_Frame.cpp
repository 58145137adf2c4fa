// Window frame, skin, option panel, help, printing.
//
// The window has no system frame: it moves itself when dragged by its bare
// background and has its own buttons for minimise, maximise, restore and
// close. Maximise keeps the window's size and switches the display to
// 640 by 480 instead. The state "maximised" is cmdRestoreDown being visible.

#include "forms/frmTessuma.h"

#include "core/Keys.h"

#include "core/vb.h"
#include "forms/modGetSet.h"
#include "forms/modMain.h"
#include "forms/modScreenRes.h"

using modGetSet::GetData;
using modGetSet::SaveData;

namespace {

constexpr int kPictureSkinned = 101;    // form background, skin on and during help
constexpr int kPicturePlain = 102;      // form background, skin off and on paper
constexpr int kPictureVolume = 103;     // slider track, skin on
constexpr int kPictureHighs = 150;      // high score frame, skin on
constexpr int kPictureFirstPage = 201;  // help pages 201..210
constexpr int kHelpPages = 10;

// A place from the settings, or the centre of the screen as it is now when
// none is stored (the default is written into the store). A stored value
// that is no number gives the centre as well.
std::int32_t PlaceOrCentre(ISettingsStore& store, const char* key, int screenPixels, int twipsPerPixel,
                           int windowTwips) {
    const double centre = (static_cast<double>(screenPixels) * twipsPerPixel - windowTwips) / 2.0;
    std::int32_t v = 0;
    return vb::TryCLng(GetData(store, key, vb::NumText(centre), ""), v) ? v : vb::CLng(centre);
}

}  // namespace

// --------------------------------------------------------------------------
// Dragging. The view calls these for presses on the bare background only.
// X and Y are pixels of the form, Left and Top twips: each move adds the
// pointer's distance in pixels to a place in twips, so the window glides
// after the pointer in steps of a fifteenth, its own motion bringing further
// moves until it has caught up.

void frmTessuma::Form_MouseDown(int Button, int Shift, float X, float Y) {
    if (cmdRestoreDown.Visible) return;
    if (Button == 1 && !DragActive) {
        DragActive = true;
        DragStartX = X;
        DragStartY = Y;
    }
}

void frmTessuma::Form_MouseMove(int Button, int Shift, float X, float Y) {
    if (cmdRestoreDown.Visible) return;
    if (DragActive && (X != DragStartX || Y != DragStartY)) {
        Left = vb::CLng(static_cast<double>(Left) + X - DragStartX);
        Top = vb::CLng(static_cast<double>(Top) + Y - DragStartY);
    }
}

void frmTessuma::Form_MouseUp(int Button, int Shift, float X, float Y) {
    if (cmdRestoreDown.Visible) return;
    if (Button == 1) DragActive = false;
}

// --------------------------------------------------------------------------
// The window buttons.

void frmTessuma::cmdMinimize_Click() {
    HideOverlays();
    WindowState = 1;
    if (ports.window) ports.window->Minimize();
}

// The window to the screen's corner and the display to 640 by 480, so that
// the unchanged window fills it. The mode change may be refused by the
// display; the window counts as maximised all the same.
void frmTessuma::cmdMaximize_Click() {
    HideOverlays();
    SaveData(ports.settings, "ScreenPos/Left", vb::Str(Left));
    SaveData(ports.settings, "ScreenPos/Top", vb::Str(Top));
    Left = 0;
    Top = 0;
    modScreenRes::SetDisplayMode(ports.display, &ports.sysbox, 640, 480);
    cmdRestoreDown.Visible = true;
    SaveData(ports.settings, "ScreenPos/Maximized", "True");
}

// The display back to its mode at start-up and the window to its stored
// place, with no test that the place lies on the screen.
void frmTessuma::cmdRestoreDown_Click() {
    HideOverlays();
    modScreenRes::SetDisplayMode(ports.display, &ports.sysbox, SavedScreenWidth, SavedScreenHeight);
    cmdRestoreDown.Visible = false;
    ISettingsStore& store = ports.settings;
    Left = PlaceOrCentre(store, "ScreenPos/Left", ports.screen.WidthPixels(), ports.screen.TwipsPerPixelX(), Width);
    Top = PlaceOrCentre(store, "ScreenPos/Top", ports.screen.HeightPixels(), ports.screen.TwipsPerPixelY(), Height);
    SaveData(store, "ScreenPos/Maximized", "False");
}

// --------------------------------------------------------------------------
// The skin: two backgrounds and a few colours. The pause curtain takes its
// picture by the same value only when it is about to show.
void frmTessuma::chkSkin_Click() {
    if (LoadingOptions) return;
    const bool on = chkSkin.Value != 0;
    Picture = on ? kPictureSkinned : kPicturePlain;
    picFrame[4].Picture = on ? kPictureHighs : 0;
    const std::int32_t back = on ? vb::kColorCream : vb::kColorWhite;
    chkClickring.BackColor = back;
    chkSkin.BackColor = back;
    chkSounds.BackColor = back;
    picVolume.Picture = on ? kPictureVolume : 0;
    SendKeys("{tab}");
}

// --------------------------------------------------------------------------
// The option panel at the right edge, folded behind its tab.

void frmTessuma::cmdShowOptions_Click() {
    cmdHideOptions.Visible = true;
    std::int16_t count = 7;
    SetOptionsVisible(true, count);
    OptionsShown = true;
}

void frmTessuma::cmdHideOptions_Click() {
    cmdHideOptions.Visible = false;
    std::int16_t count = 7;
    SetOptionsVisible(false, count);
    OptionsShown = false;
}

// Count 7 folds the options and leaves the clock and "pause" alone; Count 0
// means 8 (the caller sees the 8) and takes the clock and "pause" too. The
// donation label and its underscore are never touched.
void frmTessuma::SetOptionsVisible(bool Visible, std::int16_t& Count) {
    chkClickring.Visible = Visible;
    chkSkin.Visible = Visible;
    chkSounds.Visible = Visible;
    picVolume.Visible = Visible;
    if (Count == 0) Count = 8;
    const int last = Count < 10 ? Count : 10;
    for (int i = 1; i <= last; ++i) {
        lblOption[static_cast<std::size_t>(i)].Visible = Visible;
        if (i == 8) lblUnderscore[4].Visible = Visible;
    }
    for (std::size_t i : {0u, 1u, 2u, 3u, 5u}) lblUnderscore[i].Visible = Visible;
    if (Count != 7) lblTimer.Visible = Visible;
    lblOption[9].Visible = Visible;
}

void frmTessuma::SetFrameButtonsVisible(bool Visible) {
    cmdMinimize.Visible = Visible;
    cmdMaximize.Visible = Visible;
    cmdRestoreDown.Visible = Visible;
    cmdClose.Visible = Visible;
}

void frmTessuma::SetViewPosVisible(bool Visible) {
    for (Label& l : lblViewPos) l.Visible = Visible;
}

// Makes the main window the owner of another form, which the window system
// then keeps above it. It does nothing else, whatever the name says.
std::int32_t frmTessuma::AlwaysOnTop(const std::string& Owned) {
    return ports.window ? ports.window->SetOwner(Owned) : 0;
}

// --------------------------------------------------------------------------
// Frames over the board. Help (2) also brings its page list and monkey, and
// always has the skinned background.

void frmTessuma::ShowFrame(std::int16_t& Index) {
    if (Index < 0 || Index >= static_cast<std::int16_t>(picFrame.size())) return;
    std::int16_t all = 0;
    SetSideNavVisible(false, all);
    if (Index == 2) {
        if (chkSkin.Value == 0) Picture = kPictureSkinned;
        imgHelpMonkey.Visible = true;
        picHelpNav.Visible = true;
        // The frame is still hidden here, so the page cannot take the focus
        // yet; that is done below.
        lblHelpPages_Click(LastHelpPage);
    }
    tmrClock.Enabled = false;
    cmdShowOptions.Visible = false;
    cmdHideOptions.Visible = false;
    picFrame[static_cast<std::size_t>(Index)].Visible = true;
    if (Index == 2) SetFocus({"picFrame", 2});
}

// The way back. A game under way gets its clock again; a solved one keeps
// it stopped. The option panel comes back only if the player had it open.
void frmTessuma::HideFrame(std::int16_t Index) {
    if (Index < 0 || Index >= static_cast<std::int16_t>(picFrame.size())) return;
    std::int16_t all = 0;
    SetSideNavVisible(true, all);
    lblScore.Visible = true;
    lblDifficulty.Visible = true;
    picFrame[static_cast<std::size_t>(Index)].Visible = false;
    if (Index == 2) {
        if (chkSkin.Value == 0) Picture = kPicturePlain;
        imgHelpMonkey.Visible = false;
        picHelpNav.Visible = false;
    }
    if (CountClues()) {
        const bool solved = IsSolved();
        if (!solved) tmrClock.Enabled = true;
        lblOption[8].Visible = true;
        lblOption[1].ForeColor = vb::kColorLive;
        lblOption[1].MousePointer = vb::kPointerCustom;
        if (!solved) lblUnderscore[4].Visible = true;
    }
    if (OptionsShown) {
        std::int16_t count = 0;
        SetOptionsVisible(true, count);
    } else {
        lblTimer.Visible = true;
        lblScore.Visible = true;
    }
    cmdShowOptions.Visible = true;
    cmdHideOptions.Visible = OptionsShown;
}

// Shows a help page. A page whose picture does not exist leaves the old
// picture; the other steps run all the same.
void frmTessuma::lblHelpPages_Click(int Index) {
    if (Index >= 0 && Index < kHelpPages) picFrame[2].Picture = kPictureFirstPage + Index;
    LastHelpPage = static_cast<std::int16_t>(Index);
    for (int i = 0; i <= HelpPageMax && i < kHelpPages; ++i)
        lblHelpPages[static_cast<std::size_t>(i)].ForeColor = i == Index ? vb::kColorLive : vb::kColorHinted;
    const bool lastPage = Index == HelpPageMax;
    lblSupport.Visible = lastPage;
    lblWiki.Visible = lastPage;
    if (picFrame[2].Visible) SetFocus({"picFrame", 2});
}

// The arrow keys turn the pages of help, on release, around the ends.
void frmTessuma::picFrame_KeyUp(int Index, int KeyCode, int Shift) {
    if (Index != 2) return;
    if (KeyCode == keys::kLeft || KeyCode == keys::kUp)
        TurnHelpPage(false);
    else if (KeyCode == keys::kRight || KeyCode == keys::kDown)
        TurnHelpPage(true);
}

// The arrows that the help draws under its page list turn the pages as the
// arrow keys do.
void frmTessuma::imgHelpTurn_Click(int Index) {
    if (picHelpNav.Visible && (Index == 0 || Index == 1)) TurnHelpPage(Index == 1);
}

// One page on or back, round from the last page to the first.
void frmTessuma::TurnHelpPage(bool forward) {
    int page = LastHelpPage;
    if (!forward)
        page = page - 1 < 0 ? HelpPageMax : page - 1;
    else
        page = page + 1 > HelpPageMax ? 0 : page + 1;
    lblHelpPages_Click(page);
}

// Help's OK. The page is stored, though the next start does not take it.
void frmTessuma::cmdOK_Click() {
    PlayEffect(SoundNavClick);
    HideFrame(2);
    SaveData(ports.settings, "LastHelpPage", vb::Trim(vb::Str(LastHelpPage)));
}

// --------------------------------------------------------------------------
// Printing: the form stripped to the board and its digits on the plain
// background, printed as it stands, then put back. The putting back does
// not remember what was shown before: the options open, every mark label
// shows, and the window buttons all show.
void frmTessuma::PrintBoard() {
    // The frame buttons come back as they were: showing all four would put
    // the restore face on a window that is not maximised, stop its dragging,
    // and store it as maximised at the close.
    const bool frameShown[4] = {cmdMinimize.Visible, cmdMaximize.Visible, cmdRestoreDown.Visible, cmdClose.Visible};
    std::int16_t all = 0;
    SetSideNavVisible(false, all);
    all = 0;
    SetOptionsVisible(false, all);
    SetFrameButtonsVisible(false);
    SetViewPosVisible(false);
    cmdHideOptions.Visible = false;
    cmdShowOptions.Visible = false;
    lblScore.Visible = false;
    lblDifficulty.Visible = false;
    Picture = kPicturePlain;

    const PrintResult printed = ports.printer ? ports.printer->PrintForm() : PrintResult{};

    chkSkin_Click();
    all = 0;
    SetSideNavVisible(true, all);
    all = 0;
    SetOptionsVisible(true, all);
    cmdMinimize.Visible = frameShown[0];
    cmdMaximize.Visible = frameShown[1];
    cmdRestoreDown.Visible = frameShown[2];
    cmdClose.Visible = frameShown[3];
    SetViewPosVisible(true);
    cmdHideOptions.Visible = OptionsShown;
    cmdShowOptions.Visible = true;
    lblScore.Visible = true;
    lblDifficulty.Visible = true;

    // The player hears of a page that did not reach a printer, and only what
    // is true of it.
    switch (printed.kind) {
        case PrintResult::Printed: break;
        case PrintResult::ToFile: ShowMessage("No printer here.\r\nPuzzle go to file:\r\n" + printed.path, ""); break;
        case PrintResult::FileFailed:
            ShowMessage("No printer here,\r\nand file no can write.\r\nPuzzle not printed.", "");
            break;
        case PrintResult::PrinterFailed: ShowMessage("Printer say no.\r\nPuzzle not printed.", ""); break;
    }
}
