// Start-up, options, closing, the message box and sounds.
#include "forms/frmTessuma.h"

#include <cstdlib>

#include "BuildConfig.h"
#include "core/Volume.h"
#include "core/vb.h"
#include "forms/frmMessage.h"
#include "forms/modGetSet.h"
#include "forms/modMain.h"
#include "forms/modMusic.h"
#include "forms/modScreenRes.h"

using modGetSet::GetData;
using modGetSet::SaveData;

namespace {

// Reads a check box value; a stored value that is not 0 or 1 gives the
// default, so that a damaged store still starts the game.
int CheckValue(ISettingsStore& store, const char* key, const char* def) {
    std::int32_t v = 0;
    if (vb::TryCLng(GetData(store, key, def, ""), v) && (v == 0 || v == 1)) return v;
    return std::atoi(def);
}

}  // namespace

// The window's place from the settings, centred by default. A stored value
// that is not a number gives the centred place.
static void PlaceFromSettings(frmTessuma& f) {
    ISettingsStore& store = f.ports.settings;
    const int twX = f.ports.screen.TwipsPerPixelX(), twY = f.ports.screen.TwipsPerPixelY();
    const double defLeft = (static_cast<double>(f.ports.screen.WidthPixels()) * twX - f.Width) / 2.0;
    const double defTop = (static_cast<double>(f.ports.screen.HeightPixels()) * twY - f.Height) / 2.0;
    std::int32_t v = 0;
    f.Left = vb::TryCLng(GetData(store, "ScreenPos/Left", vb::NumText(defLeft), ""), v) ? v : vb::CLng(defLeft);
    f.Top = vb::TryCLng(GetData(store, "ScreenPos/Top", vb::NumText(defTop), ""), v) ? v : vb::CLng(defTop);
    // A place off every screen (a monitor unplugged since, a hand-edited
    // file) would open the borderless window where it can't be dragged back:
    // centred on the primary screen instead.
    const std::vector<place::PixelRect> screens = f.ports.screen.Screens();
    if (!screens.empty() && !place::GripOnScreen(f.Left / twX, f.Top / twY, f.Width / twX, screens)) {
        const place::PixelRect& primary = screens.front();
        f.Left = (primary.x * 2 + primary.w) * twX / 2 - f.Width / 2;
        f.Top = (primary.y * 2 + primary.h) * twY / 2 - f.Height / 2;
    }
}

// Start-up, options, closing, message box, sounds.

void frmTessuma::Form_Load() {
    ISettingsStore& store = ports.settings;
    // 1. 640 by 480 pixels in the window system's units.
    Width = 640 * ports.screen.TwipsPerPixelX();
    Height = 480 * ports.screen.TwipsPerPixelY();
    // 3. The one seeding of the random generator.
    ports.random.Randomize(ports.clock.SecondsSinceMidnight());
    // 4, 5. The board, hidden and empty.
    SuppressChange = true;
    txtCell[0].Text.clear();
    txtCell[0].Visible = false;
    CreateBoardFields();
    // 6. Options.
    LoadingOptions = true;
    LoadOptions();
    // 7. The option panel.
    if (GetData(store, "ShowOptions", "True", "") != "true") {
        cmdHideOptions.Visible = false;
        std::int16_t count = 7;
        SetOptionsVisible(false, count);
    } else {
        OptionsShown = true;
    }
    // 8. Maximise and restore share one place.
    cmdMaximize.Left = cmdRestoreDown.Left;
    // 9. The version.
    lblOption[6].Caption = "v" + std::to_string(TESSUMA_VERSION_MAJOR) + "." + std::to_string(TESSUMA_VERSION_MINOR);
    // 10. Frames over the board, the help navigation.
    for (std::size_t i = 2; i <= 4; ++i) {
        picFrame[i].Left = txtCell[0].Left;
        picFrame[i].Top = txtCell[0].Top;
        picFrame[i].Visible = false;
    }
    picHelpNav.Left = 512;
    picHelpNav.Top = 101;
    // 11. The stored help page, tested before its bound is set (so it is 0).
    LastHelpPage = static_cast<std::int16_t>(vb::CLng(vb::Val(GetData(store, "LastHelpPage", "0", ""))));
    if (LastHelpPage < 0 || LastHelpPage > HelpPageMax) LastHelpPage = 0;
    // 12.
    SongLast = 2;
    HelpPageMax = 9;
    SongIndex = -1;
    // 13. The window's place; a first start centres it and stores that.
    PlaceFromSettings(*this);
    // 14. The banner.
    lblLoading.Visible = true;
    picFrame[3].Picture = chkSkin.Value != 0 ? 175 : 0;
    picFrame[4].Picture = chkSkin.Value != 0 ? 150 : 0;
    picFrame[3].Visible = true;
    // 15. Show the window, then take the banner away.
    Visible = true;
    if (ports.window) ports.window->Show();
    picFrame[3].Visible = false;
    lblLoading.Visible = false;
    // 16. The display mode to go back to.
    SavedScreenWidth = ports.screen.WidthPixels();
    SavedScreenHeight = ports.screen.HeightPixels();
    // 17. Maximised last time?
    if (GetData(store, "ScreenPos/Maximized", "False", "") == "true") {
        modScreenRes::SetDisplayMode(ports.display, &ports.sysbox, 640, 480);
        Left = 0;
        Top = 0;
    } else {
        cmdRestoreDown.Visible = false;
        PlaceFromSettings(*this);
    }
    // 18, 19. Sound and music.
    PlayEffect(SoundPuzzleStart);
    NextSong();
    tmrSongCheck.Enabled = true;
    // 20. A saved game named on the command line.
    if (!ports.commandLine.empty()) LoadGameFile(vb::Remove(ports.commandLine, "\""));
}
void frmTessuma::cmdClose_Click() {
    HideOverlays();
    tmrClock.Enabled = false;
    const std::string& word = lblOption[8].Caption;
    if (PuzzleDirty && lblOption[8].Visible && (word == "resume" || word == "pause")) {
        ShowMessage("Save puzzle before exit?", "yn");
        if (program.MessageResult == "yes") {
            // Save and stay: the player has to close again.
            cmdSideNav_Click(2);
            return;
        }
    }
    SaveOptions();
    if (ports.screen.WidthPixels() > 640) {
        SaveData(ports.settings, "ScreenPos/Left", vb::Str(Left));
        SaveData(ports.settings, "ScreenPos/Top", vb::Str(Top));
    }
    picFrame[3].Picture = chkSkin.Value != 0 ? 175 : 0;
    picFrame[3].Visible = true;
    picFrame[4].Visible = false;
    lblLoading.Visible = true;
    Form_Unload();
    Visible = false;
    if (ports.window) ports.window->Unload();
    program.End();
}
void frmTessuma::Form_Unload() {
    modMusic::MusicStop(ports.music, "MusicFile");
    modMusic::MusicClose(ports.music, "MusicFile");
    SaveData(ports.settings, "ScreenPos/Maximized", cmdRestoreDown.Visible ? "True" : "False");
    if (SavedScreenWidth != ports.screen.WidthPixels())
        modScreenRes::SetDisplayMode(ports.display, &ports.sysbox, SavedScreenWidth, SavedScreenHeight);
    SaveData(ports.settings, "LastHelpPage", vb::Str(LastHelpPage));
    SaveData(ports.settings, "ShowOptions", OptionsShown ? "True" : "False");
}
void frmTessuma::LoadOptions() {
    ISettingsStore& store = ports.settings;
    LoadingOptions = true;
    chkClickring.Value = CheckValue(store, "Clickring", "1");
    chkSkin.Value = CheckValue(store, "Skin", "1");
    chkSounds.Value = CheckValue(store, "Sounds", "1");
    imgVolume.Left = volume::StoredThumb(vb::Val(GetData(store, "Volume", "75", "")));
    LoadingOptions = false;
    chkSkin_Click();
}
void frmTessuma::SaveOptions() {
    ISettingsStore& store = ports.settings;
    SaveData(store, "Clickring", vb::Str(chkClickring.Value));
    SaveData(store, "Skin", vb::Str(chkSkin.Value));
    SaveData(store, "Sounds", vb::Str(chkSounds.Value));
    SaveData(store, "Volume", vb::NumText(imgVolume.Left));
}
void frmTessuma::ShowMessage(const std::string& Message, const std::string& Kind) {
    // The box is made anew for every use; its load clears the answer.
    frmMessage box(program.MessageResult);
    box.Form_Load();
    box.Kind = Kind;
    box.lblMessage.Caption = Message;
    const bool yesNo = Kind == "yn";
    box.lblYes.Visible = yesNo;
    box.lblNo.Visible = yesNo;
    box.lblOkay.Visible = !yesNo;
    PlayEffect(SoundMessage);
    if (Message == frmMessage::kNamePrompt) {
        box.txtName.Text = modGetSet::GetData(ports.settings, "Data/LastSavedName", "", modGetSet::kKeepCaps);
        box.Focus = {"txtName", -1};
        box.KeyQueue.push_back("^{END}");
        box.txtName.Visible = true;
    } else {
        box.txtName.Visible = false;
    }
    ports.messages.RunModal(box);
    if (!box.Unloaded) box.CloseBySystem();
}
void frmTessuma::PlayEffect(int effect) {
    if (chkSounds.Value != 0) ports.sounds.Play(effect);
}
