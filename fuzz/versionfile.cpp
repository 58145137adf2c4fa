// Fuzz target: the version file of the update check, any bytes.
//
// The download succeeds with the input as the file. The check tells the
// player something (a newer version, "You have newest", or "No can
// connect."), leaves no copy of the file behind, and the download link
// hands the desktop only a web address before the game closes.

#include <string>

#include "forms/frmTessuma.h"
#include "forms/frmUpdate.h"
#include "forms/modMain.h"
#include "fuzz/FuzzSupport.h"
#include "sim/World.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using fuzz::Require;
    World w;
    w.download.answers.push_back(fuzz::Text(data, size));
    Program p(w.MakePorts());
    p.Main();
    Require(p.Running && p.MainForm != nullptr, "the game starts");
    frmTessuma& f = *p.MainForm;

    const int messages = w.messages.count;
    f.CheckForUpdate();
    Require(!w.files.IsFile("tessver.txt"), "the version file is deleted after the check");
    const bool offered = p.UpdateForm && p.UpdateForm->Visible;
    Require(offered != (w.messages.count == messages + 1), "the check either offers the download or tells why not");

    if (offered) {
        p.UpdateForm->lblDownload_Click();
        for (const std::string& target : w.shell.targets)
            Require(frmUpdate::IsWebAddress(target), "only a web address goes to the desktop");
        Require(!p.Running, "the download link closes the game");
    } else {
        f.cmdClose_Click();
    }
    return 0;
}
