#pragma once
// The Qt side of the small ports: random numbers, the clock, the screen and
// its display mode, the single-instance lock, the system message box, the
// desktop shell and the popup menus.

#include <functional>
#include <memory>
#include <random>

#include "forms/Ports.h"

class QLockFile;
class QWidget;

class QtRandom : public IRandom {
public:
    float Rnd() override;
    void Randomize(float seconds) override;

private:
    std::mt19937 engine_{12345u};
};

class QtClock : public IClock {
public:
    float SecondsSinceMidnight() override;
};

// The desktop keeps its resolution. A change to 640 by 480 is kept as the
// game's own display mode: the screen then reads 640 by 480 to the game, and
// the window shows its scene full screen, scaled evenly.
class QtDisplay : public IDisplayMode, public IScreen {
public:
    std::optional<Device> Enumerate(int i) override;
    int Change(const std::string& deviceName, int width, int height) override;
    int WidthPixels() override;
    int HeightPixels() override;
    std::vector<place::PixelRect> Screens() override;

    bool FullScreenMode() const { return fullScreen_; }
    // Called when the mode changes, so the window can follow.
    std::function<void(bool fullScreen)> onModeChanged;

private:
    bool fullScreen_ = false;
};

// One running game per user session: a lock file in the session's runtime
// folder. A lock left by a crashed game is stale and taken over.
class QtInstanceLock : public IInstanceLock {
public:
    QtInstanceLock();
    explicit QtInstanceLock(const std::string& lockPath);
    ~QtInstanceLock() override;
    bool AnotherInstanceRunning() override;
    static std::string DefaultLockPath();

private:
    // A lock whose owner can't be read is taken as being written by a game
    // starting now for this long after its last change.
    static constexpr int kUnreadableLockMs = 3000;
    bool HeldByAGameHere() const;
    std::unique_ptr<QLockFile> lock_;
};

class QtSystemMessageBox : public ISystemMessageBox {
public:
    int Show(const std::string& text, const std::string& title, int style) override;
};

class QtShell : public IShell {
public:
    void Open(const std::string& target, const std::string& directory) override;
};

class QtPopupHost : public IPopupHost {
public:
    // The window the menus open over; they take the scale its form is drawn at.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    std::optional<MenuChoice> Popup(const std::string& menuName, const std::vector<MenuEntry>& entries) override;

private:
    QWidget* owner_ = nullptr;
};
