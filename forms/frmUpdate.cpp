// frmUpdate: the small window that offers a newer version.
#include "forms/frmUpdate.h"

#include "core/vb.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"

frmUpdate::frmUpdate(Program& p) : program(p) {}

void frmUpdate::Form_Load() {
    Caption = "   Click DOWNLOAD to begin Auto-Update.";
    Label2.Caption = "New Version Found.";
    lblStatus.Caption = "PLEASE SAVE YOUR WORK.";
    Label1.Caption = "Clicking Download will close this program and begin download the new version.";
    lblDownload.Caption = "download!";
    lblDownload.ForeColor = vb::kColorLive;
    lblDownload.MousePointer = vb::kPointerCustom;
    DownloadStarted = false;
    Visible = false;
    Loaded = true;
}

void frmUpdate::Show() {
    if (!Loaded) Form_Load();
    Visible = true;
}

bool frmUpdate::IsWebAddress(const std::string& address) {
    const std::string lower = vb::LCase(address);
    std::size_t rest = 0;
    if (lower.rfind("http://", 0) == 0)
        rest = 7;
    else if (lower.rfind("https://", 0) == 0)
        rest = 8;
    else
        return false;
    if (address.size() <= rest || address[rest] == '/') return false;
    for (char c : address) {
        const auto u = static_cast<unsigned char>(c);
        if (u <= 0x20 || u == 0x7F) return false;
    }
    return true;
}

// The address came from the version file; anything but a web address is
// not handed on. The game closes all the same, as it does when the desktop
// fails to open the address.
void frmUpdate::lblDownload_Click() {
    const std::string& url = program.UpdateUrl;
    if (IsWebAddress(url)) program.ports.shell.Open(url, "");
    DownloadStarted = true;
    Form_Unload();
}

void frmUpdate::CloseBySystem() { Form_Unload(); }

// After "download!" the window leaves the screen first, then the main form
// runs its close command, with its question about an unsaved game.
// Otherwise only this window goes.
void frmUpdate::Form_Unload() {
    Visible = false;
    Loaded = false;
    if (DownloadStarted) {
        if (program.MainForm && program.Running) program.MainForm->cmdClose_Click();
    }
}
