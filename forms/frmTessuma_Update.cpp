#include "forms/frmTessuma.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

#include "BuildConfig.h"
#include "core/vb.h"
#include "forms/frmUpdate.h"
#include "forms/modMain.h"

// Update check and links. The check fetches a small version file, compares
// its number with the program's own version and offers the download in the
// small window frmUpdate. The links hand an address to the desktop.

namespace {

// The version file is one short line; anything larger is refused unread.
constexpr std::size_t kMaxVersionFileBytes = 64 * 1024;

const std::string kNoConnect = std::string("No can connect.\r\nPlease try later or email to\r\n") +
                               TESSUMA_SUPPORT_MAIL + "\r\nif problem persist.";

// Reads the next field of a version file from `pos`: blanks before it are
// skipped; a field in double quotes runs to its closing quote, any other
// ends at a comma or a line end (blanks before those dropped). The comma or
// line end after the field is taken with it. Nothing when the text has no
// further field.
std::optional<std::string> ReadField(const std::string& text, std::size_t& pos) {
    const auto lineEnd = [&](std::size_t i) { return text[i] == '\r' || text[i] == '\n'; };
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t')) ++pos;
    if (pos >= text.size()) return std::nullopt;

    std::string field;
    if (text[pos] == '"') {
        const std::size_t close = text.find('"', pos + 1);
        const std::size_t end = close == std::string::npos ? text.size() : close;
        field = text.substr(pos + 1, end - pos - 1);
        pos = close == std::string::npos ? text.size() : close + 1;
        // Whatever stands between the closing quote and the delimiter goes.
        while (pos < text.size() && text[pos] != ',' && !lineEnd(pos)) ++pos;
    } else {
        const std::size_t start = pos;
        while (pos < text.size() && text[pos] != ',' && !lineEnd(pos)) ++pos;
        field = vb::Trim(text.substr(start, pos - start));
    }
    if (pos < text.size()) {
        if (text[pos] == '\r' && pos + 1 < text.size() && text[pos + 1] == '\n') ++pos;
        ++pos;
    }
    return field;
}

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

    // A version file is a line; one past the limit is no version file and
    // is not read further.
    std::string text(kMaxVersionFileBytes + 1, '\0');
    {
        std::ifstream in(localPath, std::ios::binary);
        in.read(text.data(), static_cast<std::streamsize>(text.size()));
        text.resize(in ? text.size() : static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    }
    std::error_code ec;
    std::filesystem::remove(localPath, ec);
    if (text.size() > kMaxVersionFileBytes) {
        ShowMessage(kNoConnect, "");
        return;
    }
    // A byte-order mark is no part of the version.
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text.erase(0, 3);

    // A file that holds fewer than two fields is no version file: the same
    // notice as no file at all, and the last address stays as it was.
    std::size_t pos = 0;
    const std::optional<std::string> newest = ReadField(text, pos);
    const std::optional<std::string> address = newest ? ReadField(text, pos) : std::nullopt;
    if (!address) {
        ShowMessage(kNoConnect, "");
        return;
    }
    program.UpdateUrl = *address;

    // The file writes ten times the version: 21 for 2.1. Text that is no
    // number reads as 0, which is never newer.
    const double theirs = vb::Val(*newest) / 10.0;
    const double ours = TESSUMA_VERSION_MAJOR + TESSUMA_VERSION_MINOR / 10.0;
    if (!(ours < theirs)) {
        ShowMessage("You have newest\r\nTessuma Sudoku.", "");
        return;
    }
    AlwaysOnTop("frmUpdate");
    program.UpdateFormInstance().Show();
}

void frmTessuma::DownloadFile(const std::string& Url, const std::string& LocalPath, bool& Succeeded) {
    Succeeded = ports.download != nullptr && ports.download->Download(Url, LocalPath);
}

// The links of the last help page. A failure to open them is not reported.
void frmTessuma::lblSupport_Click() {
    if (ports.shell) ports.shell->Open(std::string("mailto:") + TESSUMA_SUPPORT_MAIL, "C:\\");
}

void frmTessuma::lblWiki_Click() {
    if (ports.shell) ports.shell->Open(TESSUMA_WIKI_URL, "");
}
