// clsDIALOGS: the game's file dialogs, their memory and its profile.
#include "forms/clsDIALOGS.h"

#include <algorithm>
#include <climits>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "core/Ini.h"

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
constexpr std::size_t kMaxProfileBytes = 1024 * 1024;

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

}  // namespace

// ---------------------------------------------------------------------------
clsDIALOGS::clsDIALOGS(IDialogHost* host, ISystemMessageBox* sysbox, IFiles& files, std::string programDir,
                       std::string profilePath)
    : host_(host),
      sysbox_(sysbox),
      files_(files),
      programDir_(WithSlash(std::move(programDir))),
      profilePath_(std::move(profilePath)) {
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
        // earlier run stay on the disk.
    }
}

// The profile as it stands: empty on a first run (no file yet); nothing when
// the file can't be ours (a folder, unreadable, too large).
std::optional<IniText> clsDIALOGS::ReadProfile() {
    if (profilePath_.empty()) return std::nullopt;
    std::string text;
    switch (files_.ReadFile(profilePath_, kMaxProfileBytes, text)) {
        case IFiles::Read::Ok: return IniText(text);
        case IFiles::Read::Missing: return IniText();
        default: return std::nullopt;
    }
}

void clsDIALOGS::LoadProfile() {
    const std::optional<IniText> p = ReadProfile();
    if (!p) return;
    const auto get = [&](const char* key, const std::string& otherwise) {
        return p->Get(kSection, key).value_or(otherwise);
    };
    const std::optional<std::string> openFilter = p->Get(kSection, kKeyOpenFilter);
    const std::optional<std::string> saveFilter = p->Get(kSection, kKeySaveFilter);
    lngLastOpenFilter_ = openFilter ? ProfileInt(*openFilter) : 1;
    lngLastSaveFilter_ = saveFilter ? ProfileInt(*saveFilter) : 1;
    strLastOpenFile_ = get(kKeyOpenFile, "");
    strLastSaveFile_ = get(kKeySaveFile, "");
    strLastOpenFolder_ = get(kKeyOpenDir, programDir_);
    strLastSaveFolder_ = get(kKeySaveDir, programDir_);
    strInitialDir_ = get(kKeyInitialDir, programDir_);
}

bool clsDIALOGS::SaveProfile() {
    std::optional<IniText> p = ReadProfile();
    if (!p) return false;  // not a profile we may replace
    p->Set(kSection, kKeyOpenFilter, std::to_string(lngLastOpenFilter_));
    p->Set(kSection, kKeySaveFilter, std::to_string(lngLastSaveFilter_));
    p->Set(kSection, kKeyOpenFile, strLastOpenFile_);
    p->Set(kSection, kKeySaveFile, strLastSaveFile_);
    p->Set(kSection, kKeyOpenDir, strLastOpenFolder_);
    p->Set(kSection, kKeySaveDir, strLastSaveFolder_);
    p->Set(kSection, kKeyInitialDir, strInitialDir_);
    return files_.WriteFileAtomically(profilePath_, p->Text());
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
    const Trapped t =
        host_ ? Trap("CHOOSE COLOR ERROR", [&] { chosen = host_->ChooseColor(lngColor_); }) : Trapped::Done;
    if (t == Trapped::Left) return lngColor_;
    if (chosen)
        lngColor_ = *chosen;
    else if (t == Trapped::Done)
        FailureStep(host_ ? 0 : -1);
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
