#include "forms/frmTessuma.h"

#include "core/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <new>
#include <vector>

#include "core/Levels.h"
#include "core/vb.h"
#include "dialogs/clsDIALOGS.h"
#include "forms/modMain.h"

// Saved games: a game is five lines of text in a ".tsm" file, each ending
// with CR LF: the board state, the score shown, the level word, the clock in
// seconds and the 729 characters of the marks.
//
// Writing goes through a temporary file that replaces the old one only when
// it is whole. Reading is forgiving about missing lines, but a file that
// can't be a game (missing, unreadable, empty, a first line under 81
// characters, a folder, a huge file) is refused before anything on the
// board changes, with the game's own words for it.

namespace fs = std::filesystem;

namespace {

constexpr const char* kFilter = "Tessuma Saved Games (*.tsm)|*.tsm";
constexpr const char* kOpenTitle = "Open a Saved Tessuma Game";
constexpr const char* kSaveTitle = "Save Your Tessuma Game";
constexpr const char* kNoGood = "That file no good.";
constexpr const char* kCrLf = "\r\n";

// A saved game is under a kilobyte; anything past this is not one and is
// not read whole.
constexpr std::size_t kMaxGameFileBytes = 1024 * 1024;

constexpr int kStyleYesNo = 4, kStyleWarning = 48;

// A file of exactly that name is there (a folder doesn't count).
bool FileExists(const std::string& path) {
    struct stat st{};
    return !path.empty() && ::stat(path.c_str(), &st) == 0 && !S_ISDIR(st.st_mode);
}

// Reads a whole game file; false when it can't be opened, isn't a plain
// file, can't be read or is too large to be a game.
bool ReadGameText(const std::string& path, std::string& text) {
    text.clear();
    if (path.empty()) return false;
    // Not blocking on a pipe or a device: only plain files are read.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) return false;
    struct stat st{};
    bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) &&
              static_cast<unsigned long long>(st.st_size) <= kMaxGameFileBytes;
    char buf[8192];
    while (ok) {
        const ssize_t n = ::read(fd, buf, sizeof buf);
        if (n < 0) {
            if (errno == EINTR) continue;
            ok = false;
        } else if (n == 0) {
            break;
        } else {
            text.append(buf, static_cast<std::size_t>(n));
            if (text.size() > kMaxGameFileBytes) ok = false;  // grew while being read
        }
    }
    ::close(fd);
    if (!ok) text.clear();
    return ok;
}

// The lines of a text: "a\r\nb\r\n" is "a", "b", "". The game writes CR LF;
// a lone LF, as text editors here write it, ends a line as well.
std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t pos = 0;
    while (true) {
        const auto at = text.find('\n', pos);
        if (at == std::string::npos) {
            lines.push_back(text.substr(pos));
            return lines;
        }
        const std::size_t end = at > pos && text[at - 1] == '\r' ? at - 1 : at;
        lines.push_back(text.substr(pos, end - pos));
        pos = at + 1;
    }
}

// The game's use of the file dialogs: its title and filter, one file, and
// the last folder of the dialog's kind to start in.
clsDIALOGS* PrepareDialogs(Program& program, const char* title) {
    clsDIALOGS* d = program.gDialogs.get();
    if (!d) return nullptr;
    d->strTitle(title);
    d->blnAllowMultipleFileSelect(false);
    d->strInitialDir("");
    d->strFilter(kFilter);
    return d;
}

}  // namespace

// Side button 1: a saved game replaces the running one at once, saved or not.
void frmTessuma::OpenGame() {
    clsDIALOGS* d = PrepareDialogs(program, kOpenTitle);
    if (!d) return;
    const std::string path = d->strGetOpenFileName("");
    if (!path.empty() && FileExists(path)) LoadGameFile(path);
}

// Side button 2. The question about an existing file comes before ".tsm" is
// added, so a name typed without it replaces "name.tsm" without a question.
void frmTessuma::SaveGame() {
    clsDIALOGS* d = PrepareDialogs(program, kSaveTitle);
    if (!d) return;
    const std::string path = d->strGetSaveFileName("");
    if (path.empty()) return;
    if (FileExists(path)) {
        if (!ports.sysbox) return;
        const int answer = ports.sysbox->Show(path + " already exists.\r\n\r\nDo you want to replace it?", "Save As",
                                              kStyleWarning | kStyleYesNo);
        if (answer != ISystemMessageBox::Yes) return;
    }
    WriteGameFile(path);
}

// Reads a saved game. Missing lines are forgiven; a file that can't be a
// game is refused and the board stays as it was.
void frmTessuma::LoadGameFile(const std::string& path) {
    if (!path.empty() && (path.back() == '\\' || path.back() == '/')) return;

    std::vector<std::string> lines;
    try {
        std::string text;
        if (ReadGameText(path, text)) lines = SplitLines(vb::Remove(text, "|"));
    } catch (const std::bad_alloc&) {
        lines.clear();
    }
    // Line 1 is the board: without 81 characters there is no game in it.
    if (lines.empty() || lines[0].size() < 81) {
        ShowMessage(kNoGood, "");
        return;
    }

    BoardState = lines[0];
    ShowBoardState();
    lblScore.Caption = lines.size() > 1 ? lines[1] : "";

    lblDifficulty.Caption.clear();
    BaseScore = 0;
    if (lines.size() > 2) {
        const std::string word = vb::LCase(lines[2]);
        for (const LevelInfo& level : kLevels) {
            if (word == level.labelName) {
                lblDifficulty.Caption = word;
                BaseScore = level.baseScore;
            }
        }
    }
    // The clock by the number's value, rounded; the label shows "0:00" until
    // the next tick.
    ClockSeconds = lines.size() > 3 ? vb::CLng(vb::Val(lines[3])) : 0;
    if (lines.size() > 4) SetViewPosText(lines[4]);
}

// Writes the game. The change handling stays switched off afterwards: only
// the next deal, load or help switches it on again.
void frmTessuma::WriteGameFile(const std::string& path) {
    if (path.empty()) return;
    std::string target = path;
    const std::string tail = target.size() > 4 ? target.substr(target.size() - 4) : target;
    if (vb::LCase(tail) != ".tsm") target += ".tsm";
    SuppressChange = true;

    bool written = false;
    try {
        std::string text;
        text += BuildBoardState() + kCrLf;
        text += lblScore.Caption + kCrLf;
        text += lblDifficulty.Caption + kCrLf;
        text += vb::Str(ClockSeconds) + kCrLf;
        text += GetViewPosText() + kCrLf;
        written = WriteFileAtomically(target, text);
    } catch (const std::bad_alloc&) {
        written = false;
    }
    if (!written) {
        ShowMessage(kNoGood, "");
        return;
    }
    PuzzleDirty = false;
}
