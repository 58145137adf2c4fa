// Update check and links. The check fetches a small version file, compares
// its number with the program's own version and offers the download in the
// small window frmUpdate. The links hand an address to the desktop.

#include "forms/frmTessuma.h"

#include "BuildConfig.h"
#include "core/VersionFile.h"
#include "forms/frmUpdate.h"
#include "forms/modMain.h"

namespace {

const std::string kNoConnect = std::string("No can connect.\r\nPlease try later or email to\r\n") +
                               TESSUMA_SUPPORT_MAIL + "\r\nif problem persist.";

}  // namespace

void frmTessuma::CheckForUpdate() {
    const std::string& dir = ports.scratchDir.empty() ? ports.programDir : ports.scratchDir;
    const std::string localPath = dir + "/tessver.txt";
    bool succeeded = false;
    DownloadFile(ports.versionUrl.empty() ? std::string(TESSUMA_VERSION_URL) : ports.versionUrl, localPath, succeeded);
    if (!succeeded) {
        ShowMessage(kNoConnect, "");
        return;
    }

    // A version file is a line; a larger file is no version file and is not
    // read further. One that holds fewer than two fields is none either: the
    // same notice as no file at all, and the last address stays as it was.
    std::string text;
    const IFiles::Read read = ports.files.ReadFile(localPath, kMaxVersionFileBytes, text);
    ports.files.RemoveFile(localPath);
    const std::optional<VersionFile> version = read == IFiles::Read::Ok ? ParseVersionFile(text) : std::nullopt;
    if (!version) {
        ShowMessage(kNoConnect, "");
        return;
    }
    program.UpdateUrl = version->address;
    if (!IsNewerVersion(version->newest, TESSUMA_VERSION_MAJOR, TESSUMA_VERSION_MINOR)) {
        ShowMessage("You have newest\r\nTessuma Sudoku.", "");
        return;
    }
    AlwaysOnTop("frmUpdate");
    program.UpdateFormInstance().Show();
}

void frmTessuma::DownloadFile(const std::string& Url, const std::string& LocalPath, bool& Succeeded) {
    Succeeded = ports.download.Download(Url, LocalPath);
}

// The links of the last help page. A failure to open them is not reported.
void frmTessuma::lblSupport_Click() {
    ports.shell.Open(std::string("mailto:") + TESSUMA_SUPPORT_MAIL, "C:\\");
}

void frmTessuma::lblWiki_Click() {
    ports.shell.Open(TESSUMA_WIKI_URL, "");
}
