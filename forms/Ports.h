#pragma once
// The game's ports to the outside world. The forms reach everything beyond
// their own fields through these small interfaces; the Qt layer implements
// them for real (Qt*.cpp), the simulated world in fakes/ for tests and the
// scenario runner.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/Random.h"
#include "core/WindowPlace.h"

class frmMessage;

// Per-user persistent string store by application, section and key.
class ISettingsStore {
public:
    virtual ~ISettingsStore() = default;
    // "" when the key is missing.
    virtual std::string Get(const std::string& app, const std::string& section, const std::string& key) = 0;
    virtual void Save(const std::string& app, const std::string& section, const std::string& key,
                      const std::string& value) = 0;
    virtual bool Has(const std::string& app, const std::string& section, const std::string& key) = 0;
};

// Screen metrics: size of the desktop in pixels and the twips of a pixel.
class IScreen {
public:
    virtual ~IScreen() = default;
    virtual int WidthPixels() = 0;
    virtual int HeightPixels() = 0;
    virtual int TwipsPerPixelX() { return 15; }
    virtual int TwipsPerPixelY() { return 15; }
    // Every screen's place on the desktop in pixels, the primary first.
    virtual std::vector<place::PixelRect> Screens() { return {{0, 0, WidthPixels(), HeightPixels()}}; }
};

// Changing the display mode. Returns the platform's result code for one
// device: 0 success, -1 mode not supported. The Linux desktop keeps its
// resolution; the Qt side shows the 640 by 480 scene full screen instead.
class IDisplayMode {
public:
    virtual ~IDisplayMode() = default;
    struct Device {
        std::string name;
        std::string description;
        std::uint32_t stateFlags = 0;  // 1 attached, 4 primary
    };
    // Device number i, or nothing past the last one.
    virtual std::optional<Device> Enumerate(int i) = 0;
    virtual int Change(const std::string& deviceName, int width, int height) = 0;
};

// The main window as the window system sees it.
class IWindow {
public:
    virtual ~IWindow() = default;
    virtual void Show() = 0;
    virtual void Repaint() = 0;
    virtual void Minimize() = 0;
    // The form's mouse pointer changed (0 default, 11 hourglass); the Qt side
    // shows it at once, also while a long handler blocks the event loop.
    virtual void MousePointerChanged(int pointer) = 0;
    // The form asked to be unloaded (end of the program).
    virtual void Unload() = 0;
    // Makes the update window owned by the main window; returns the old owner.
    virtual std::int32_t SetOwner(const std::string& ownedForm) { return 0; }
};

// Detects another running instance of the program.
class IInstanceLock {
public:
    virtual ~IInstanceLock() = default;
    // True when another instance holds the lock; otherwise takes it.
    virtual bool AnotherInstanceRunning() = 0;
};

// The system's own message box (four uses in the game).
class ISystemMessageBox {
public:
    virtual ~ISystemMessageBox() = default;
    enum Result { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };
    // style: the Windows MB_ bits (4 yes/no, 2 abort/retry/ignore, 16 critical,
    // 48 warning, 4096 system modal).
    virtual int Show(const std::string& text, const std::string& title, int style) = 0;
};

// Runs the game's own message box form modally: returns when the model says
// it is unloaded. The host forwards key releases, label clicks and the
// system's close command to the model.
class IMessageHost {
public:
    virtual ~IMessageHost() = default;
    virtual void RunModal(frmMessage& form) = 0;
};

// Popup menus at the pointer. Returns the name of the chosen entry with its
// index ("mnuDifficulty", 2), or nothing when dismissed.
struct MenuEntry {
    std::string name;
    int index = -1;       // -1 when the entry is not part of a control array
    std::string caption;  // "-" for a separator
    bool enabled = true;
};
struct MenuChoice {
    std::string name;
    int index = -1;
};
class IPopupHost {
public:
    virtual ~IPopupHost() = default;
    virtual std::optional<MenuChoice> Popup(const std::string& menuName, const std::vector<MenuEntry>& entries) = 0;
};

// The platform's common dialogs, as the dialogs class needs them.
struct FileDialogRequest {
    enum Kind { Open, OpenNew, Save } kind = Open;
    std::string title;
    std::string initialDir;
    std::vector<std::pair<std::string, std::string>> filters;  // (description, pattern)
    int filterIndex = 1;                                       // one-based
    bool multiSelect = false;
    bool createPrompt = false;
    int maxFileNameBuffer = 250;
    // The dialog's option bits as the game sets them (&H8140C for an open
    // dialog whose file must exist, &H200 multiple selection, &H2000 the
    // create prompt). For information: a host follows kind, multiSelect and
    // createPrompt.
    std::uint32_t flags = 0;
};
struct FileDialogResult {
    bool ok = false;
    int errorCode = 0;               // 0 a plain cancel
    std::vector<std::string> paths;  // one path, or several with multiSelect
    int filterIndex = 1;             // one-based filter chosen
};
class IDialogHost {
public:
    virtual ~IDialogHost() = default;
    virtual FileDialogResult FileDialog(const FileDialogRequest& req) = 0;
    // Colour: returns the chosen &HBBGGRR colour, or nothing when cancelled.
    virtual std::optional<std::int32_t> ChooseColor(std::int32_t initial) = 0;
    struct FontChoice {
        std::string faceName;
        int sizePoints = 10;
        bool bold = false;
        bool italic = false;
        std::int32_t color = 0;
    };
    virtual std::optional<FontChoice> ChooseFont() = 0;
    struct PageSetup {
        int paperWidth = 8500, paperHeight = 11000;  // thousandths of an inch
        int left = 500, right = 500, top = 500, bottom = 500;
        // Lower limits of the margins; the dialog keeps the margins above them.
        int minLeft = 250, minRight = 250, minTop = 250, minBottom = 250;
    };
    virtual bool PageSetupDialog(PageSetup& setup) = 0;
    virtual bool PrintDialog() = 0;
    virtual std::optional<std::string> BrowseForFolder(const std::string& title) = 0;
};

// Short sound effects by resource number (101..107); a new one replaces the
// one playing; never blocks, never fails loudly.
class ISoundEffects {
public:
    virtual ~ISoundEffects() = default;
    virtual void Play(int effect) = 0;
};

// The music device under one alias. Results are 0 for success or an error
// code whose text ErrorText gives.
class IMusicDevice {
public:
    virtual ~IMusicDevice() = default;
    virtual int Open(const std::string& alias, const std::string& path) = 0;
    virtual int Play(const std::string& alias, long from, long to) = 0;
    virtual int Stop(const std::string& alias) = 0;
    virtual int Close(const std::string& alias) = 0;
    // Length and position in one unit; -1 when there is no such device.
    virtual long Length(const std::string& alias) = 0;
    virtual long Position(const std::string& alias) = 0;
    // volume on 0..1000; side "all", "left" or "right"
    virtual int SetVolume(const std::string& alias, const std::string& side, int volume) = 0;
    virtual std::string ErrorText(int code) = 0;
};

// Prints the form as it stands, with no dialog, to the default printer; with
// no printer installed, into a PDF file instead.
struct PrintResult {
    enum Kind {
        Printed,        // the queue took the job
        ToFile,         // no printer: the page is in the file at `path`
        FileFailed,     // no printer, and the file could not be written
        PrinterFailed,  // the printer's queue refused the job
    } kind = Printed;
    std::string path;
};
class IPrinter {
public:
    virtual ~IPrinter() = default;
    virtual PrintResult PrintForm() = 0;
};

// Hands a target (web address, mailto:) to the desktop.
class IShell {
public:
    virtual ~IShell() = default;
    virtual void Open(const std::string& target, const std::string& directory) = 0;
};

// Fetches a file from the web into a local path. True on success.
class IDownloader {
public:
    virtual ~IDownloader() = default;
    virtual bool Download(const std::string& url, const std::string& localPath) = 0;
};

// Files on the player's disk: whole small files read at once, files
// replaced whole or not at all.
class IFiles {
public:
    virtual ~IFiles() = default;
    enum class Read { Ok, Missing, NotAFile, TooLarge, Failed };
    // Reads a plain file of at most `limit` bytes whole into `text` (left
    // empty unless Ok). Never waits on a pipe or a device.
    virtual Read ReadFile(const std::string& path, std::size_t limit, std::string& text) = 0;
    // The file afterwards is either the old one, untouched, or the whole new
    // one; false when it is the old one.
    virtual bool WriteFileAtomically(const std::string& path, const std::string& text) = 0;
    // A file (not a folder) of that name is there.
    virtual bool IsFile(const std::string& path) = 0;
    virtual void RemoveFile(const std::string& path) = 0;
};

// Long work of the game (the solver's search) done away from the window,
// which stays live meanwhile: it repaints, answers the desktop and can be
// closed, while the player's input and the form's clock wait. Run returns
// once the work has returned; false when it had to be cut short first (the
// window is closing): `stop` was called from the window's side and the work
// returned early.
class IBackground {
public:
    virtual ~IBackground() = default;
    virtual bool Run(const std::function<void()>& work, const std::function<void()>& stop) = 0;
};

// Wall clock, for the one seeding of the random generator.
class IClock {
public:
    virtual ~IClock() = default;
    virtual float SecondsSinceMidnight() = 0;
};

// Everything a form needs, handed over at construction. The window and the
// printer come with the window, which is made after the program: until then
// there is none.
struct Ports {
    ISettingsStore& settings;
    IRandom& random;
    IClock& clock;
    IScreen& screen;
    IDisplayMode& display;
    IInstanceLock& instance;
    ISystemMessageBox& sysbox;
    IMessageHost& messages;
    IPopupHost& popups;
    IDialogHost& dialogs;
    ISoundEffects& sounds;
    IMusicDevice& music;
    IShell& shell;
    IDownloader& download;
    IFiles& files;
    IWindow* window = nullptr;
    IPrinter* printer = nullptr;
    // Without one, long work runs where it is asked for, as in the tests.
    IBackground* background = nullptr;
    // The program's own folder (Music/, the version file); and the command line.
    std::string programDir{};
    std::string commandLine{};
    // Where the dialogs keep their profile file.
    std::string profileDir{};
    // Where the file dialogs start before they remember a folder; the
    // program's folder when empty.
    std::string documentsDir{};
    // A folder the program may write scratch files to (the downloaded
    // version file); the program's folder when empty.
    std::string scratchDir{};
    // The address of the version file; the configured one when empty.
    std::string versionUrl{};
};
