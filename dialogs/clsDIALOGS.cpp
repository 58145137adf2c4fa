#include "dialogs/clsDIALOGS.h"

#include "core/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr const char* kSection = "DIALOGS";
constexpr const char* kKeyOpenFilter = "LastOpenFilter";
constexpr const char* kKeySaveFilter = "LastSaveFilter";
constexpr const char* kKeyOpenFile = "LastOpenFile";
constexpr const char* kKeySaveFile = "LastSaveFile";
constexpr const char* kKeyOpenDir = "LastOpenDir";
constexpr const char* kKeySaveDir = "LastSaveDir";
constexpr const char* kKeyInitialDir = "InitialDir";

// A profile larger than this is not ours: it is left unread and unwritten.
constexpr std::uintmax_t kMaxProfileBytes = 1024 * 1024;

// The option bits of the file dialogs.
constexpr std::uint32_t kFlagsOpen = 0x8140C;
constexpr std::uint32_t kFlagsOpenMulti = 0x8160C;
constexpr std::uint32_t kFlagsOpenNew = 0x8040C;
constexpr std::uint32_t kFlagsSave = 0x8040C;
constexpr std::uint32_t kFlagsSaveCreatePrompt = 0x8240C;

// Message box styles.
constexpr int kStyleCritical = 16;
constexpr int kStyleAbortRetryIgnore = 2;

constexpr const char* kDefaultFilter =
    "All Files (*.*)|*.*|Batch Files (*.BAT)|*.BAT|INF Files (*.INF)|*.INF|SYS Files (*.SYS)|*.SYS|"
    "HTM Files (*.HTM)|*.HTM|Text Files (*.TXT)|*.TXT";

std::string Lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string TrimBlanks(const std::string& s) {
    std::size_t b = 0, e = s.size();
    while (b < e && (s[b] == ' ' || s[b] == '\t')) ++b;
    while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t')) --e;
    return s.substr(b, e - b);
}

std::string WithSlash(std::string folder) {
    if (!folder.empty() && folder.back() != '/') folder += '/';
    return folder;
}

// The folder of a path: up to and with its last "/"; "" when it has none.
std::string FolderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string NameOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// ---------------------------------------------------------------------------
// The profile file, read and written as the platform's profile functions do:
// sections and keys without regard to case, values trimmed and freed of one
// pair of surrounding quotes; writing a key keeps every other line.

struct Profile {
    std::vector<std::string> lines;

    static std::string SectionName(const std::string& line) {
        const std::string t = TrimBlanks(line);
        if (t.empty() || t[0] != '[') return {};
        const auto close = t.find(']');
        if (close == std::string::npos) return {};
        return Lower(TrimBlanks(t.substr(1, close - 1)));
    }
    static bool IsSection(const std::string& line) { return !TrimBlanks(line).empty() && TrimBlanks(line)[0] == '['; }
    static bool KeyOfLine(const std::string& line, std::string& key, std::string& value) {
        const std::string t = TrimBlanks(line);
        if (t.empty() || t[0] == ';' || t[0] == '[') return false;
        const auto eq = t.find('=');
        if (eq == std::string::npos) return false;
        key = Lower(TrimBlanks(t.substr(0, eq)));
        value = TrimBlanks(t.substr(eq + 1));
        if (value.size() >= 2 && ((value.front() == '"' && value.back() == '"') ||
                                  (value.front() == '\'' && value.back() == '\'')))
            value = value.substr(1, value.size() - 2);
        return true;
    }

    // False when the file exists but can't be used (unreadable, too large).
    bool Read(const std::string& path) {
        lines.clear();
        std::error_code ec;
        const auto status = fs::status(path, ec);
        if (ec || !fs::exists(status)) return true;  // a first run: no file yet
        if (!fs::is_regular_file(status)) return false;
        const auto size = fs::file_size(path, ec);
        if (ec || size > kMaxProfileBytes) return false;
        const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (fd < 0) return false;
        std::string text;
        char buf[8192];
        bool ok = true;
        while (true) {
            const ssize_t n = ::read(fd, buf, sizeof buf);
            if (n < 0) {
                if (errno == EINTR) continue;
                ok = false;
                break;
            }
            if (n == 0) break;
            text.append(buf, static_cast<std::size_t>(n));
            if (text.size() > kMaxProfileBytes) {
                ok = false;
                break;
            }
        }
        ::close(fd);
        if (!ok) return false;
        std::size_t pos = 0;
        while (pos < text.size()) {
            auto nl = text.find('\n', pos);
            if (nl == std::string::npos) nl = text.size();
            std::string line = text.substr(pos, nl - pos);
            if (!line.empty() && line.back() == '\r') line.pop_back();
            lines.push_back(std::move(line));
            pos = nl + 1;
        }
        return true;
    }

    bool Get(const std::string& section, const std::string& key, std::string& value) const {
        const std::string s = Lower(section), k = Lower(key);
        bool in = false;
        for (const std::string& line : lines) {
            if (IsSection(line)) {
                in = SectionName(line) == s;
                continue;
            }
            std::string lk, lv;
            if (in && KeyOfLine(line, lk, lv) && lk == k) {
                value = lv;
                return true;
            }
        }
        return false;
    }

    void Set(const std::string& section, const std::string& key, std::string value) {
        // A line break in a value would break the file.
        for (char& c : value)
            if (c == '\r' || c == '\n') c = ' ';
        const std::string s = Lower(section), k = Lower(key);
        const std::string entry = key + "=" + value;
        bool in = false;
        std::size_t sectionAt = lines.size(), lastKeyAt = lines.size();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (IsSection(lines[i])) {
                if (in) break;  // the end of our section
                in = SectionName(lines[i]) == s;
                if (in) sectionAt = lastKeyAt = i;
                continue;
            }
            if (!in) continue;
            std::string lk, lv;
            if (KeyOfLine(lines[i], lk, lv)) {
                if (lk == k) {
                    lines[i] = entry;
                    return;
                }
                lastKeyAt = i;
            }
        }
        if (sectionAt == lines.size()) {
            lines.push_back("[" + section + "]");
            lines.push_back(entry);
            return;
        }
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(lastKeyAt + 1), entry);
    }

    std::string Text() const {
        std::string t;
        for (const std::string& line : lines) t += line + "\n";
        return t;
    }
};

// The platform's reading of a whole number in a profile: its leading digits;
// a text without any reads as 0, a negative number as 0.
std::int32_t ProfileInt(const std::string& text) {
    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    long long v = 0;
    for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i) {
        v = v * 10 + (text[i] - '0');
        if (v > INT32_MAX) v = INT32_MAX;
    }
    return negative ? 0 : static_cast<std::int32_t>(v);
}

}  // namespace

// ---------------------------------------------------------------------------
clsDIALOGS::clsDIALOGS(IDialogHost* host, ISystemMessageBox* sysbox, std::string programDir, std::string profilePath)
    : host_(host), sysbox_(sysbox), programDir_(WithSlash(std::move(programDir))), profilePath_(std::move(profilePath)) {
    for (std::string& name : FileNames_) name.clear();
    strFilter(kDefaultFilter);
    strLastOpenFolder_ = strLastSaveFolder_ = strInitialDir_ = programDir_;
    if (blnUsePersistence_) LoadProfile();
}

clsDIALOGS::~clsDIALOGS() {
    try {
        if (blnUsePersistence_) SaveProfile();
    } catch (...) {
        // The end of the program is no place for a failure: the keys of the
        // last successful dialog are on the disk already.
    }
}

void clsDIALOGS::LoadProfile() {
    Profile p;
    if (!p.Read(profilePath_)) return;
    std::string v;
    lngLastOpenFilter_ = p.Get(kSection, kKeyOpenFilter, v) ? ProfileInt(v) : 1;
    lngLastSaveFilter_ = p.Get(kSection, kKeySaveFilter, v) ? ProfileInt(v) : 1;
    strLastOpenFile_ = p.Get(kSection, kKeyOpenFile, v) ? v : "";
    strLastSaveFile_ = p.Get(kSection, kKeySaveFile, v) ? v : "";
    strLastOpenFolder_ = p.Get(kSection, kKeyOpenDir, v) ? v : programDir_;
    strLastSaveFolder_ = p.Get(kSection, kKeySaveDir, v) ? v : programDir_;
    strInitialDir_ = p.Get(kSection, kKeyInitialDir, v) ? v : programDir_;
}

bool clsDIALOGS::SaveProfile() {
    if (profilePath_.empty()) return false;
    Profile p;
    if (!p.Read(profilePath_)) return false;  // not a profile we may replace
    p.Set(kSection, kKeyOpenFilter, std::to_string(lngLastOpenFilter_));
    p.Set(kSection, kKeySaveFilter, std::to_string(lngLastSaveFilter_));
    p.Set(kSection, kKeyOpenFile, strLastOpenFile_);
    p.Set(kSection, kKeySaveFile, strLastSaveFile_);
    p.Set(kSection, kKeyOpenDir, strLastOpenFolder_);
    p.Set(kSection, kKeySaveDir, strLastSaveFolder_);
    p.Set(kSection, kKeyInitialDir, strInitialDir_);
    return WriteFileAtomically(profilePath_, p.Text());
}

// ---------------------------------------------------------------------------
std::string clsDIALOGS::FilterWithNulls(const std::string& filter) {
    std::string s = filter;
    for (char& c : s)
        if (c == '|') c = '\0';
    const bool endsWithTwo = s.size() >= 2 && s[s.size() - 1] == '\0' && s[s.size() - 2] == '\0';
    if (!endsWithTwo) s.append(2, '\0');
    return s;
}

std::vector<std::pair<std::string, std::string>> clsDIALOGS::FilterPairs(const std::string& nulFilter) {
    std::vector<std::string> parts;
    std::size_t pos = 0;
    while (pos < nulFilter.size()) {
        auto end = nulFilter.find('\0', pos);
        if (end == std::string::npos) end = nulFilter.size();
        if (end == pos) break;  // an empty part ends the list
        parts.push_back(nulFilter.substr(pos, end - pos));
        pos = end + 1;
    }
    std::vector<std::pair<std::string, std::string>> pairs;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) pairs.emplace_back(parts[i], parts[i + 1]);
    return pairs;
}

void clsDIALOGS::strFilter(const std::string& v) { strFilter_ = FilterWithNulls(v); }

std::string clsDIALOGS::ErrorText(std::int32_t code) {
    switch (code) {
        case -1: return "Dialog Failure";
        case 0: return "General Codes Failure";
        case 1: return "Structure Size Error";
        case 2: return "Initialization Failure";
        case 3: return "No Template";
        case 4: return "No Instance Handle";
        case 5: return "Load String Failure";
        case 6: return "Find Resource Failure";
        case 7: return "Load Resource Failure";
        case 8: return "Lock Resource Failure";
        case 9: return "Memory Allocation Failure";
        case 10: return "Memory Lock Failure";
        case 11: return "No Hook";
        case 12: return "Register Message Failure";
        case 12288: return "File Name Codes Error";
        case 12289: return "Subclassing Failure";
        case 12290: return "Invalid File Name";
        case 12291: return "File Name/Title Buffer Too Small";
        default: return "Unknown Error";
    }
}

// A dialog came back without a result: the code and its text; a code other
// than 0 (an ordinary cancel) is reported when that is wanted.
void clsDIALOGS::FailureStep(std::int32_t code) {
    lngDialogError_ = code;
    strDialogError_ = ErrorText(code);
    if (code != 0 && blnShowErrorMessages_ && sysbox_) sysbox_->Show(strDialogError_, "DIALOG ERROR", kStyleCritical);
}

// Runs one step that may fail at run time. The failure becomes the error
// text; with blnShowErrorMessages the player chooses: Abort leaves the
// function, Retry runs the step again, Ignore goes on after it.
template <class Step>
clsDIALOGS::Trapped clsDIALOGS::Trap(const char* title, Step step) {
    while (true) {
        long number = 0;
        std::string description;
        try {
            step();
            return Trapped::Done;
        } catch (const std::bad_alloc&) {
            number = 7;
            description = "Out of memory";
        } catch (const std::system_error& e) {
            number = e.code().value();
            description = e.what();
        } catch (const std::exception& e) {
            number = 5;
            description = e.what();
        } catch (...) {
            number = 51;
            description = "Internal error";
        }
        strDialogError_ = "Error #:" + std::to_string(number) + "\r\n" + description;
        if (!blnShowErrorMessages_ || !sysbox_ || !title) return Trapped::Left;
        const int answer = sysbox_->Show(strDialogError_, title, kStyleAbortRetryIgnore | kStyleCritical);
        if (answer == ISystemMessageBox::Retry) continue;
        if (answer == ISystemMessageBox::Ignore) return Trapped::Skipped;
        return Trapped::Left;
    }
}

// ---------------------------------------------------------------------------
// The three file name dialogs.

std::string clsDIALOGS::strGetOpenFileName(const std::string&) { return FileDialog(FileKind::Open); }
std::string clsDIALOGS::strGetNewFileName(const std::string&) { return FileDialog(FileKind::OpenNew); }
std::string clsDIALOGS::strGetSaveFileName(const std::string&) { return FileDialog(FileKind::Save); }

std::string clsDIALOGS::FileDialog(FileKind kind) {
    const bool save = kind == FileKind::Save;
    const bool multi = !save && blnAllowMultipleFileSelect_;
    std::string& lastFolder = save ? strLastSaveFolder_ : strLastOpenFolder_;
    std::string& lastFile = save ? strLastSaveFile_ : strLastOpenFile_;
    std::int32_t& lastFilter = save ? lngLastSaveFilter_ : lngLastOpenFilter_;

    // The name buffer: a NUL, the blanks and a NUL.
    const long long blanks = multi ? kMultiSelectBuffer : std::max<std::int32_t>(lngMaxFileNameBuffer_, 0);
    const long long bufferLength = blanks + 2;

    FileDialogRequest req;
    switch (kind) {
        case FileKind::Open:
            req.kind = FileDialogRequest::Open;
            req.flags = multi ? kFlagsOpenMulti : kFlagsOpen;
            req.title = strTitle_.empty() ? "Select File(s) To Open" : strTitle_;
            break;
        case FileKind::OpenNew:
            req.kind = FileDialogRequest::OpenNew;
            req.flags = kFlagsOpenNew | (multi ? 0x200u : 0u);
            req.title = strTitle_.empty() ? "Select File To Open" : strTitle_;
            break;
        case FileKind::Save:
            req.kind = FileDialogRequest::Save;
            req.flags = blnCreatePrompt_ ? kFlagsSaveCreatePrompt : kFlagsSave;
            req.title = strTitle_.empty() ? "Save File" : strTitle_;
            break;
    }
    req.initialDir = !strInitialDir_.empty() ? strInitialDir_ : lastFolder;
    req.filters = FilterPairs(strFilter_);
    req.filterIndex = lastFilter;
    req.multiSelect = multi;
    req.createPrompt = save && blnCreatePrompt_;
    req.maxFileNameBuffer = static_cast<int>(std::min<long long>(bufferLength, INT_MAX));

    FileDialogResult r;
    const Trapped trapped = host_ ? Trap(save ? "GET_SAVE_FILE_NAME_ERROR" : "GET_OPEN_FILE_NAME_ERROR",
                                         [&] { r = host_->FileDialog(req); })
                                  : Trapped::Done;
    if (trapped == Trapped::Left) return {};

    std::string result;
    if (trapped == Trapped::Done) {
        // What the platform hands back must fit the buffer with its NULs:
        // one name and a NUL, or the folder, each name and a NUL after
        // each, and the closing NUL.
        std::int32_t code = host_ ? r.errorCode : -1;
        const bool several = multi && r.paths.size() > 1;
        if (r.ok && !r.paths.empty()) {
            long long needed = 0;
            if (several) {
                // The folder stands there without its closing "/".
                std::string folder = FolderOf(r.paths[0]);
                if (folder.size() > 1) folder.pop_back();
                needed = static_cast<long long>(folder.size()) + 1;
                for (const std::string& p : r.paths) needed += static_cast<long long>(NameOf(p).size()) + 1;
                needed += 1;
            } else {
                needed = static_cast<long long>(r.paths[0].size()) + 1;
            }
            if (needed > bufferLength) {
                r.ok = false;
                code = 12291;
            }
        }
        if (!r.ok || r.paths.empty()) {
            FailureStep(r.ok ? 0 : code);
        } else {
            if (several) {
                // The folder and the names of the files, in the array.
                const std::string folder = FolderOf(r.paths[0]);
                for (std::string& name : FileNames_) name.clear();
                const std::size_t count = std::min<std::size_t>(r.paths.size(), kMaxSelectedFiles);
                for (std::size_t i = 0; i < count; ++i) FileNames_[i] = NameOf(r.paths[i]);
                lngNumFilesSelected_ = static_cast<std::int32_t>(count);
                result = folder;
                lastFile = r.paths[0];
                lastFolder = folder;
            } else {
                result = r.paths[0];
                const auto nul = result.find('\0');
                if (nul != std::string::npos) result.resize(nul);
                lastFile = result;
                lastFolder = FolderOf(result);
                if (multi) {
                    for (std::string& name : FileNames_) name.clear();
                    FileNames_[0] = NameOf(result);
                    lngNumFilesSelected_ = 1;
                } else {
                    lngNumFilesSelected_ = 0;
                }
            }
            lastFilter = r.filterIndex;
        }
    }
    // In every case the dialog's folder is where the next one starts.
    strInitialDir_ = lastFolder;
    if (!result.empty() && blnUsePersistence_) SaveProfile();
    return result;
}

std::string clsDIALOGS::fstrReturnSingleFileName(std::int32_t index) const {
    if (index < 0 || index >= kMaxSelectedFiles) return {};
    return FileNames_[static_cast<std::size_t>(index)];
}

// ---------------------------------------------------------------------------
// Colour, font, page setup, printer, folder.

std::int32_t clsDIALOGS::lngChooseColor() {
    std::optional<std::int32_t> chosen;
    const Trapped t = host_ ? Trap("CHOOSE COLOR ERROR", [&] { chosen = host_->ChooseColor(lngColor_); }) : Trapped::Done;
    if (t == Trapped::Left) return lngColor_;
    if (chosen) lngColor_ = *chosen;
    else if (t == Trapped::Done) FailureStep(host_ ? 0 : -1);
    return lngColor_;
}

bool clsDIALOGS::blnChooseFont() {
    std::optional<IDialogHost::FontChoice> chosen;
    const Trapped t = host_ ? Trap("CHOOSE_FONT_ERROR", [&] { chosen = host_->ChooseFont(); }) : Trapped::Done;
    if (t == Trapped::Left) return false;
    if (!chosen) {
        if (t == Trapped::Done) FailureStep(host_ ? 0 : -1);
        return false;
    }
    constexpr std::int32_t kBold = 0x100, kItalic = 0x200, kRegular = 0x400, kScreen = 0x2000;
    strFontFaceName_ = chosen->faceName;
    lngFontSize_ = chosen->sizePoints;
    lngFontColor_ = chosen->color;
    lngFontType_ = kScreen | (chosen->bold ? kBold : 0) | (chosen->italic ? kItalic : 0) |
                   (!chosen->bold && !chosen->italic ? kRegular : 0);
    blnIsFontBold_ = (lngFontType_ & kBold) != 0;
    blnIsFontItalic_ = (lngFontType_ & kItalic) != 0;
    strFontStyle_ = blnIsFontBold_ ? "Bold" : blnIsFontItalic_ ? "Italic" : "Regular";
    return true;
}

bool clsDIALOGS::blnPageSetup() {
    IDialogHost::PageSetup setup;
    setup.paperWidth = lngPaperWidth_;
    setup.paperHeight = lngPaperHeight_;
    setup.left = intLeftMargin_;
    setup.right = intRightMargin_;
    setup.top = intTopMargin_;
    setup.bottom = intBottomMargin_;
    setup.minLeft = intMinMarginLeft_;
    setup.minRight = intMinMarginRight_;
    setup.minTop = intMinMarginTop_;
    setup.minBottom = intMinMarginBottom_;
    bool ok = false;
    const Trapped t = host_ ? Trap(nullptr, [&] { ok = host_->PageSetupDialog(setup); }) : Trapped::Done;
    if (t != Trapped::Done) return false;
    if (!ok) {
        FailureStep(host_ ? 0 : -1);
        return false;
    }
    auto margin = [](int v, std::int16_t lowest) {
        v = std::max(v, static_cast<int>(lowest));
        return static_cast<std::int16_t>(std::min(v, static_cast<int>(INT16_MAX)));
    };
    lngPaperWidth_ = setup.paperWidth;
    lngPaperHeight_ = setup.paperHeight;
    intLeftMargin_ = margin(setup.left, intMinMarginLeft_);
    intRightMargin_ = margin(setup.right, intMinMarginRight_);
    intTopMargin_ = margin(setup.top, intMinMarginTop_);
    intBottomMargin_ = margin(setup.bottom, intMinMarginBottom_);
    return true;
}

bool clsDIALOGS::blnPrintDialog() {
    bool ok = false;
    const Trapped t = host_ ? Trap(nullptr, [&] { ok = host_->PrintDialog(); }) : Trapped::Done;
    if (t != Trapped::Done) return false;
    if (!ok) FailureStep(host_ ? 0 : -1);
    return ok;
}

std::string clsDIALOGS::fstrBrowseForFolder() {
    std::optional<std::string> chosen;
    const Trapped t = host_ ? Trap(nullptr, [&] { chosen = host_->BrowseForFolder("Select Folder"); }) : Trapped::Done;
    if (t != Trapped::Done || !chosen) return {};
    return *chosen;
}
