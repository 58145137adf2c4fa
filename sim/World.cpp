// The simulated world: every port faked, answers queued, everything recorded.
#include "sim/World.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "forms/frmMessage.h"

// --------------------------------------------------------------------------
std::string FakeSettings::Get(const std::string& app, const std::string& section, const std::string& key) {
    auto it = values.find({app, section, key});
    return it == values.end() ? "" : it->second;
}

void FakeSettings::Save(const std::string& app, const std::string& section, const std::string& key,
                        const std::string& value) {
    values[{app, section, key}] = value;
}

bool FakeSettings::Has(const std::string& app, const std::string& section, const std::string& key) {
    return values.count({app, section, key}) != 0;
}

// --------------------------------------------------------------------------
float FakeRandom::Rnd() {
    if (!queued.empty()) {
        float v = queued.front();
        queued.pop_front();
        return v;
    }
    // xorshift32: the same sequence for every run.
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<float>(state_ >> 8) / 16777216.0f;
}

// --------------------------------------------------------------------------
std::optional<IDisplayMode::Device> FakeDisplay::Enumerate(int i) {
    if (i != 0) return std::nullopt;
    return Device{"\\\\.\\DISPLAY1", "Simulated Display", 5};
}

int FakeDisplay::Change(const std::string&, int width, int height) {
    ++changes;
    if (!supported) return -1;
    screen_.width = width;
    screen_.height = height;
    return 0;
}

// --------------------------------------------------------------------------
int FakeSysBox::Show(const std::string& text, const std::string& title, int style) {
    ++count;
    lastText = text;
    lastTitle = title;
    lastStyle = style;
    if (!answers.empty()) {
        int a = answers.front();
        answers.pop_front();
        return a;
    }
    // The default button: the first of the set.
    switch (style & 7) {
        case 2: return Abort;
        case 3:
        case 4: return Yes;
        case 1: return Ok;
        default: return Ok;
    }
}

// --------------------------------------------------------------------------
void FakeMessageHost::RunModal(frmMessage& f) {
    ++count;
    lastText = f.lblMessage.Caption;
    lastKind = f.Kind;
    open = true;
    f.DeliverQueuedKeys();
    MessageAnswer a;
    if (!answers.empty()) {
        a = answers.front();
        answers.pop_front();
    }
    switch (a.kind) {
        case MessageAnswer::Yes:
            if (f.lblYes.Visible) f.lblYes_Click();
            break;
        case MessageAnswer::No:
            if (f.lblNo.Visible) f.lblNo_Click();
            break;
        case MessageAnswer::Okay:
            if (f.lblOkay.Visible) f.lblOkay_Click();
            break;
        case MessageAnswer::Name:
            if (f.txtName.Visible) f.TypeName(a.text);
            if (f.lblOkay.Visible) f.lblOkay_Click();
            break;
        case MessageAnswer::Keys:
            for (int k : a.keys) {
                if (f.Unloaded) break;
                f.Form_KeyUp(k, 0);
            }
            break;
        case MessageAnswer::Close: break;
    }
    // A box still open is closed by the system's close command.
    if (!f.Unloaded) f.CloseBySystem();
    open = false;
}

// --------------------------------------------------------------------------
std::optional<MenuChoice> FakePopupHost::Popup(const std::string& menuName, const std::vector<MenuEntry>&) {
    opened.push_back(menuName);
    if (answers.empty()) return std::nullopt;
    MenuAnswer a = answers.front();
    answers.pop_front();
    if (a.none) return std::nullopt;
    return MenuChoice{a.item, a.index};
}

// --------------------------------------------------------------------------
namespace {

// Throws the next queued fault, if any.
void NextFault(std::deque<std::string>& faults) {
    if (faults.empty()) return;
    std::string what = faults.front();
    faults.pop_front();
    throw std::runtime_error(what);
}

template <class T>
T NextOr(std::deque<T>& queue, T none) {
    if (queue.empty()) return none;
    T v = queue.front();
    queue.pop_front();
    return v;
}

}  // namespace

FileDialogResult FakeDialogHost::FileDialog(const FileDialogRequest& req) {
    ++count;
    lastTitle = req.title;
    lastInitialDir = req.initialDir;
    requests.push_back(req);
    calls.push_back("file");
    NextFault(faults);
    if (!results.empty()) {
        FileDialogResult prepared = results.front();
        results.pop_front();
        for (std::string& path : prepared.paths)
            if (!path.empty() && path[0] != '/') path = sandbox_ + "/" + path;
        return prepared;
    }
    FileDialogResult r;
    r.filterIndex = req.filterIndex;
    if (answers.empty() || !answers.front()) {
        if (!answers.empty()) answers.pop_front();
        return r;  // cancelled: error code 0
    }
    std::string path = *answers.front();
    answers.pop_front();
    if (!path.empty() && path[0] != '/') path = sandbox_ + "/" + path;
    r.ok = true;
    r.paths.push_back(path);
    return r;
}

std::optional<std::int32_t> FakeDialogHost::ChooseColor(std::int32_t) {
    calls.push_back("color");
    NextFault(faults);
    return NextOr(colors, std::optional<std::int32_t>());
}

std::optional<IDialogHost::FontChoice> FakeDialogHost::ChooseFont() {
    calls.push_back("font");
    NextFault(faults);
    return NextOr(fonts, std::optional<FontChoice>());
}

bool FakeDialogHost::PageSetupDialog(PageSetup& setup) {
    calls.push_back("page");
    lastPageSetup = setup;
    NextFault(faults);
    const std::optional<PageSetup> chosen = NextOr(pageSetups, std::optional<PageSetup>());
    if (!chosen) return false;
    setup = *chosen;
    return true;
}

bool FakeDialogHost::PrintDialog() {
    calls.push_back("print");
    NextFault(faults);
    return NextOr(prints, false);
}

std::optional<std::string> FakeDialogHost::BrowseForFolder(const std::string& title) {
    calls.push_back("folder");
    lastFolderTitle = title;
    NextFault(faults);
    return NextOr(folders, std::optional<std::string>());
}

// --------------------------------------------------------------------------
int FakeMusic::Open(const std::string& alias, const std::string& path) {
    commands.push_back("open " + path + " alias " + alias);
    if (open_) return 289;                 // the alias is in use
    if (!files_.IsFile(path)) return 275;  // file not found
    open_ = true;
    playing_ = false;
    atEnd_ = false;
    alias_ = alias;
    path_ = path;
    return 0;
}

int FakeMusic::Play(const std::string& alias, long from, long to) {
    commands.push_back("play " + alias + " from " + std::to_string(from) + " to " + std::to_string(to));
    if (!open_ || alias != alias_) return 263;  // not open
    playing_ = true;
    atEnd_ = false;
    return 0;
}

int FakeMusic::Stop(const std::string& alias) {
    commands.push_back("stop " + alias);
    if (!open_ || alias != alias_) return 263;
    playing_ = false;
    return 0;
}

int FakeMusic::Close(const std::string& alias) {
    commands.push_back("close " + alias);
    if (!open_ || alias != alias_) return 263;
    open_ = playing_ = atEnd_ = false;
    path_.clear();
    return 0;
}

long FakeMusic::Length(const std::string& alias) { return open_ && alias == alias_ ? kLength : -1; }

long FakeMusic::Position(const std::string& alias) {
    if (!open_ || alias != alias_) return -1;
    return atEnd_ ? kLength : 0;
}

int FakeMusic::SetVolume(const std::string& alias, const std::string& side, int volume) {
    commands.push_back("setaudio " + alias + " " + side + " volume to " + std::to_string(volume));
    lastVolume = volume;
    return open_ && alias == alias_ ? 0 : 263;
}

std::string FakeMusic::ErrorText(int code) {
    switch (code) {
        case 263: return "The specified device is not open or is not recognized by MCI.";
        case 275: return "Cannot find the specified file. Make sure the path and filename are correct.";
        case 289: return "The specified alias is already being used in this application. Use a unique alias.";
        default: return "Unknown error.";
    }
}

void FakeMusic::SongEnd() {
    if (open_ && playing_) atEnd_ = true;
}

std::string FakeMusic::SongPlaying() const {
    if (!open_ || !playing_) return "";
    return path_.substr(path_.rfind('/') + 1);
}

// --------------------------------------------------------------------------
bool FakeDownloader::Download(const std::string& url, const std::string& localPath) {
    ++count;
    lastUrl = url;
    if (answers.empty() || !answers.front()) {
        if (!answers.empty()) answers.pop_front();
        return false;
    }
    std::string text = *answers.front();
    answers.pop_front();
    return files_.WriteFileAtomically(localPath, text);
}

// --------------------------------------------------------------------------
FakeFiles::FakeFiles(std::string rootFolder) : root(std::move(rootFolder)) { folders.insert(root); }

// Relative paths are under the root; "." and empty parts go, ".." climbs.
std::string FakeFiles::Full(const std::string& path) const {
    const std::string whole = !path.empty() && path[0] == '/' ? path : root + "/" + path;
    std::vector<std::string> parts;
    std::size_t pos = 0;
    while (pos <= whole.size()) {
        std::size_t slash = whole.find('/', pos);
        if (slash == std::string::npos) slash = whole.size();
        const std::string part = whole.substr(pos, slash - pos);
        if (part == "..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        pos = slash + 1;
    }
    std::string full;
    for (const std::string& part : parts) full += "/" + part;
    return full.empty() ? "/" : full;
}

void FakeFiles::Put(const std::string& path, const std::string& text) {
    const std::string full = Full(path);
    for (std::size_t slash = full.find('/', 1); slash != std::string::npos; slash = full.find('/', slash + 1))
        folders.insert(full.substr(0, slash));
    files[full] = text;
}

std::optional<std::string> FakeFiles::Get(const std::string& path) const {
    const auto it = files.find(Full(path));
    if (it == files.end()) return std::nullopt;
    return it->second;
}

IFiles::Read FakeFiles::ReadFile(const std::string& path, std::size_t limit, std::string& text) {
    text.clear();
    const std::string full = Full(path);
    if (folders.count(full)) return Read::NotAFile;
    const auto it = files.find(full);
    if (it == files.end()) return Read::Missing;
    if (unreadable.count(full)) return Read::Failed;
    if (it->second.size() > limit) return Read::TooLarge;
    text = it->second;
    return Read::Ok;
}

bool FakeFiles::WriteFileAtomically(const std::string& path, const std::string& text) {
    const std::string full = Full(path);
    const std::string parent = full.substr(0, std::max<std::size_t>(full.rfind('/'), 1));
    if (folders.count(full) || !folders.count(parent)) return false;
    files[full] = text;
    return true;
}

Ports World::MakePorts() {
    Ports p{*use.settings, random, clock,     *use.screen,    *use.display, instance, *use.sysbox,    messages,
            popups,        *use.dialogs, sounds, music, shell, *use.download, *use.files, &window, &printer};
    p.programDir = sandbox;
    p.commandLine = commandLine;
    p.profileDir = sandbox;
    p.background = &background;
    return p;
}

std::string World::Path(const std::string& relative) const { return files.Full(relative); }
