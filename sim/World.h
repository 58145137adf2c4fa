#pragma once
// The simulated world in which the scenario runner and the tests run the
// game: every port faked, answers queued ahead, everything the game shows,
// plays, prints, opens or fetches recorded instead of done.

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "forms/Ports.h"

// Files kept in memory under a root folder of their own. Folders exist when
// made on the way by Put or named in `folders`; relative paths are under the
// root.
class FakeFiles : public IFiles {
public:
    explicit FakeFiles(std::string root);
    const std::string root;
    std::map<std::string, std::string> files;  // by full path
    std::set<std::string> folders;             // full paths, the root among them
    // Full paths whose reading fails.
    std::set<std::string> unreadable;

    std::string Full(const std::string& path) const;
    void Put(const std::string& path, const std::string& text);  // makes folders on the way
    std::optional<std::string> Get(const std::string& path) const;
    bool IsFolder(const std::string& path) const { return folders.count(Full(path)) != 0; }

    Read ReadFile(const std::string& path, std::size_t limit, std::string& text) override;
    bool WriteFileAtomically(const std::string& path, const std::string& text) override;
    bool IsFile(const std::string& path) override { return files.count(Full(path)) != 0; }
    void RemoveFile(const std::string& path) override { files.erase(Full(path)); }
};

class FakeSettings : public ISettingsStore {
public:
    std::map<std::tuple<std::string, std::string, std::string>, std::string> values;
    std::string Get(const std::string& app, const std::string& section, const std::string& key) override;
    void Save(const std::string& app, const std::string& section, const std::string& key,
              const std::string& value) override;
    bool Has(const std::string& app, const std::string& section, const std::string& key) override;
};

// Values queued first, then a fixed sequence of its own.
class FakeRandom : public IRandom {
public:
    std::deque<float> queued;
    float Rnd() override;
    void Randomize(float seconds) override {
        seeded = true;
        seed = seconds;
    }
    bool seeded = false;
    float seed = 0;

private:
    std::uint32_t state_ = 0x2545F491u;
};

class FakeClock : public IClock {
public:
    float seconds = 43200.0f;
    float SecondsSinceMidnight() override { return seconds; }
};

class FakeScreen : public IScreen {
public:
    int width = 1024, height = 768;
    int WidthPixels() override { return width; }
    int HeightPixels() override { return height; }
};

// One attached primary display; a change of mode changes the fake screen.
class FakeDisplay : public IDisplayMode {
public:
    explicit FakeDisplay(FakeScreen& screen) : screen_(screen) {}
    std::optional<Device> Enumerate(int i) override;
    int Change(const std::string& deviceName, int width, int height) override;
    int changes = 0;
    bool supported = true;

private:
    FakeScreen& screen_;
};

class FakeWindow : public IWindow {
public:
    int shows = 0, repaints = 0, minimizes = 0, unloads = 0;
    int pointer = 0;
    std::vector<int> pointerHistory;
    void Show() override { ++shows; }
    void Repaint() override { ++repaints; }
    void Minimize() override { ++minimizes; }
    void MousePointerChanged(int p) override {
        pointer = p;
        pointerHistory.push_back(p);
    }
    void Unload() override { ++unloads; }
    std::int32_t SetOwner(const std::string& owned) override {
        ownerSets.push_back(owned);
        return 0;
    }
    std::vector<std::string> ownerSets;
};

class FakeInstanceLock : public IInstanceLock {
public:
    bool otherRunning = false;
    bool AnotherInstanceRunning() override { return otherRunning; }
};

class FakeSysBox : public ISystemMessageBox {
public:
    std::deque<int> answers;  // ISystemMessageBox::Result values
    int count = 0;
    std::string lastText, lastTitle;
    int lastStyle = 0;
    int Show(const std::string& text, const std::string& title, int style) override;
};

// A prepared answer for the game's own message box.
struct MessageAnswer {
    enum Kind { Yes, No, Okay, Name, Keys, Close } kind = Close;
    std::string text;
    std::vector<int> keys;
};

class FakeMessageHost : public IMessageHost {
public:
    std::deque<MessageAnswer> answers;
    int count = 0;
    std::string lastText, lastKind;
    bool open = false;  // a box is being shown right now
    void RunModal(frmMessage& form) override;
};

struct MenuAnswer {
    bool none = false;
    std::string item;
    int index = -1;
};

class FakePopupHost : public IPopupHost {
public:
    std::deque<MenuAnswer> answers;
    std::vector<std::string> opened;
    std::optional<MenuChoice> Popup(const std::string& menuName, const std::vector<MenuEntry>& entries) override;
};

class FakeDialogHost : public IDialogHost {
public:
    explicit FakeDialogHost(std::string sandbox) : sandbox_(std::move(sandbox)) {}
    std::deque<std::optional<std::string>> answers;  // nothing = cancel
    int count = 0;
    std::string lastTitle, lastInitialDir;
    std::vector<FileDialogRequest> requests;
    FileDialogResult FileDialog(const FileDialogRequest& req) override;
    std::optional<std::int32_t> ChooseColor(std::int32_t initial) override;
    std::optional<FontChoice> ChooseFont() override;
    bool PageSetupDialog(PageSetup& setup) override;
    bool PrintDialog() override;
    std::optional<std::string> BrowseForFolder(const std::string& title) override;

    // Whole results for the next file dialogs, ahead of `answers`: an error
    // code, several paths (relative ones are in the sandbox), a filter.
    std::deque<FileDialogResult> results;
    // The next dialog of any kind fails at run time with this text (thrown
    // as std::runtime_error), once per entry.
    std::deque<std::string> faults;
    // Answers of the other dialogs; nothing (or an empty queue) = cancel.
    std::deque<std::optional<std::int32_t>> colors;
    std::deque<std::optional<FontChoice>> fonts;
    std::deque<std::optional<PageSetup>> pageSetups;
    std::deque<bool> prints;
    std::deque<std::optional<std::string>> folders;
    std::vector<std::string> calls;  // "file", "color", "font", "page", "print", "folder"
    PageSetup lastPageSetup;
    std::string lastFolderTitle;

private:
    std::string sandbox_;
};

class FakeSounds : public ISoundEffects {
public:
    std::vector<int> played;
    void Play(int effect) override { played.push_back(effect); }
};

// A music device that plays nothing: a song "plays" until song-end is
// announced, then stands at its end.
class FakeMusic : public IMusicDevice {
public:
    explicit FakeMusic(IFiles& files) : files_(files) {}
    int Open(const std::string& alias, const std::string& path) override;
    int Play(const std::string& alias, long from, long to) override;
    int Stop(const std::string& alias) override;
    int Close(const std::string& alias) override;
    long Length(const std::string& alias) override;
    long Position(const std::string& alias) override;
    int SetVolume(const std::string& alias, const std::string& side, int volume) override;
    std::string ErrorText(int code) override;

    void SongEnd();
    std::string SongPlaying() const;  // file name of the song playing, or ""
    std::optional<int> lastVolume;
    std::vector<std::string> commands;  // what was sent, for tests

private:
    IFiles& files_;
    bool open_ = false, playing_ = false, atEnd_ = false;
    std::string alias_, path_;
    static constexpr long kLength = 180000;
};

class FakePrinter : public IPrinter {
public:
    int count = 0;
    std::function<void()> onPrint;  // lets a test look at the form as printed
    PrintResult result;             // what the next prints come to
    PrintResult PrintForm() override {
        ++count;
        if (onPrint) onPrint();
        return result;
    }
};

class FakeShell : public IShell {
public:
    std::vector<std::string> targets;
    void Open(const std::string& target, const std::string&) override { targets.push_back(target); }
};

class FakeDownloader : public IDownloader {
public:
    explicit FakeDownloader(FakeFiles& files) : files_(files) {}
    std::deque<std::optional<std::string>> answers;  // nothing = fails
    int count = 0;
    std::string lastUrl;
    bool Download(const std::string& url, const std::string& localPath) override;

private:
    FakeFiles& files_;
};

// Runs long work where it is asked for. With `cutNext` the next work is
// stopped as a closing window stops it: the stop comes first, so the work
// returns at its first look at it.
class FakeBackground : public IBackground {
public:
    int runs = 0;
    bool cutNext = false;
    bool Run(const std::function<void()>& work, const std::function<void()>& stop) override {
        ++runs;
        const bool cut = std::exchange(cutNext, false);
        if (cut) stop();
        work();
        return !cut;
    }
};

class World {
public:
    World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // The program's folder, empty at first; it lives in `files` only.
    const std::string sandbox = "/sandbox";
    std::string commandLine;

    FakeFiles files{sandbox};
    FakeSettings settings;
    FakeRandom random;
    FakeClock clock;
    FakeScreen screen;
    FakeDisplay display{screen};
    FakeWindow window;
    FakeInstanceLock instance;
    FakeSysBox sysbox;
    FakeMessageHost messages;
    FakePopupHost popups;
    FakeDialogHost dialogs{sandbox};
    FakeSounds sounds;
    FakeMusic music{files};
    FakePrinter printer;
    FakeShell shell;
    FakeDownloader download{files};
    FakeBackground background;

    // The ports a test may hand over in place of the world's own fakes.
    struct {
        ISettingsStore* settings;
        IScreen* screen;
        IDisplayMode* display;
        ISystemMessageBox* sysbox;
        IDialogHost* dialogs;
        IDownloader* download;
        IFiles* files;
    } use{&settings, &screen, &display, &sysbox, &dialogs, &download, &files};

    Ports MakePorts();

    // The sandbox as the program's folder: a path written with "/" and
    // relative to the sandbox, made absolute.
    std::string Path(const std::string& relative) const;
};
