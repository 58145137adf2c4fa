// The small ports for real: random numbers, clock, screen, instance lock, boxes, popups, shell.
#include "qt/ports/QtPlatform.h"
#include "qt/view/Look.h"

#include <cstring>

#include <QApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QLockFile>
#include <QSysInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QTime>
#include <QUrl>

// --------------------------------------------------------------------------
float QtRandom::Rnd() {
    // 24 random bits: every value is exact in single precision and below 1.
    return static_cast<float>(engine_() >> 8) / 16777216.0f;
}

void QtRandom::Randomize(float seconds) {
    std::uint32_t bits;
    static_assert(sizeof bits == sizeof seconds);
    std::memcpy(&bits, &seconds, sizeof bits);
    engine_.seed(bits ^ 0x9E3779B9u);
}

float QtClock::SecondsSinceMidnight() {
    const QTime t = QTime::currentTime();
    return static_cast<float>(t.msecsSinceStartOfDay()) / 1000.0f;
}

// --------------------------------------------------------------------------
std::optional<IDisplayMode::Device> QtDisplay::Enumerate(int i) {
    if (i != 0) return std::nullopt;
    const QScreen* s = QGuiApplication::primaryScreen();
    return Device{"\\\\.\\DISPLAY1", s ? s->name().toStdString() : "Display", 5};
}

int QtDisplay::Change(const std::string&, int width, int height) {
    const bool full = width == 640 && height == 480;
    if (full != fullScreen_) {
        fullScreen_ = full;
        if (onModeChanged) onModeChanged(full);
    }
    return 0;
}

int QtDisplay::WidthPixels() {
    if (fullScreen_) return 640;
    const QScreen* s = QGuiApplication::primaryScreen();
    return s ? s->geometry().width() : 1024;
}

std::vector<place::PixelRect> QtDisplay::Screens() {
    if (fullScreen_) return {{0, 0, 640, 480}};
    std::vector<place::PixelRect> out;
    QList<QScreen*> screens = QGuiApplication::screens();
    if (QScreen* primary = QGuiApplication::primaryScreen()) {
        screens.removeAll(primary);
        screens.prepend(primary);
    }
    for (const QScreen* s : screens) {
        const QRect g = s->geometry();
        out.push_back({g.x(), g.y(), g.width(), g.height()});
    }
    if (out.empty()) out.push_back({0, 0, WidthPixels(), HeightPixels()});
    return out;
}

int QtDisplay::HeightPixels() {
    if (fullScreen_) return 480;
    const QScreen* s = QGuiApplication::primaryScreen();
    return s ? s->geometry().height() : 768;
}

// --------------------------------------------------------------------------
std::string QtInstanceLock::DefaultLockPath() {
    QString dir = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (dir.isEmpty()) dir = QDir::tempPath();
    return QDir(dir).filePath("tessuma-sudoku.lock").toStdString();
}

QtInstanceLock::QtInstanceLock() : QtInstanceLock(DefaultLockPath()) {}

QtInstanceLock::QtInstanceLock(const std::string& lockPath)
    : lock_(std::make_unique<QLockFile>(QString::fromStdString(lockPath))) {
    // Only a lock whose process is gone counts as stale, never by its age.
    lock_->setStaleLockTime(0);
}

QtInstanceLock::~QtInstanceLock() = default;

bool QtInstanceLock::AnotherInstanceRunning() {
    if (lock_->isLocked()) return false;
    if (lock_->tryLock(0)) return false;
    // tryLock removes a lock of a process of this machine that no longer
    // runs (or runs as another program). A lock that names no owner at all
    // (empty, or garbage) once it is old enough not to be one still being
    // written, or an owner on another machine, keeps no game out either.
    if (lock_->error() == QLockFile::LockFailedError && !HeldByAGameHere() && lock_->removeStaleLockFile() &&
        lock_->tryLock(0))
        return false;
    // Anything else means another game is running (or the folder can't be
    // written, in which case refusing would lock the player out: let the
    // game run).
    return lock_->error() == QLockFile::LockFailedError;
}

bool QtInstanceLock::HeldByAGameHere() const {
    qint64 pid = 0;
    QString host, app;
    if (lock_->getLockInfo(&pid, &host, &app)) return host.isEmpty() || host == QSysInfo::machineHostName();
    const QFileInfo file(lock_->fileName());
    return file.lastModified().msecsTo(QDateTime::currentDateTime()) < kUnreadableLockMs;
}

// --------------------------------------------------------------------------
int QtSystemMessageBox::Show(const std::string& text, const std::string& title, int style) {
    QMessageBox box;
    box.setWindowTitle(QString::fromStdString(title));
    box.setText(QString::fromStdString(text));
    switch (style & 0x70) {
        case 16: box.setIcon(QMessageBox::Critical); break;
        case 32: box.setIcon(QMessageBox::Question); break;
        case 48: box.setIcon(QMessageBox::Warning); break;
        case 64: box.setIcon(QMessageBox::Information); break;
        default: break;
    }
    struct B {
        QMessageBox::StandardButton qt;
        int result;
    };
    std::vector<B> buttons;
    switch (style & 7) {
        case 1: buttons = {{QMessageBox::Ok, Ok}, {QMessageBox::Cancel, Cancel}}; break;
        case 2:
            buttons = {{QMessageBox::Abort, Abort}, {QMessageBox::Retry, Retry}, {QMessageBox::Ignore, Ignore}};
            break;
        case 3: buttons = {{QMessageBox::Yes, Yes}, {QMessageBox::No, No}, {QMessageBox::Cancel, Cancel}}; break;
        case 4: buttons = {{QMessageBox::Yes, Yes}, {QMessageBox::No, No}}; break;
        case 5: buttons = {{QMessageBox::Retry, Retry}, {QMessageBox::Cancel, Cancel}}; break;
        default: buttons = {{QMessageBox::Ok, Ok}}; break;
    }
    QMessageBox::StandardButtons set;
    for (const auto& b : buttons) set |= b.qt;
    box.setStandardButtons(set);
    box.setDefaultButton(buttons.front().qt);
    if (style & 4096) box.setWindowModality(Qt::ApplicationModal);
    const int clicked = box.exec();
    for (const auto& b : buttons)
        if (clicked == b.qt) return b.result;
    return buttons.size() > 1 ? buttons.back().result : Ok;
}

// --------------------------------------------------------------------------
void QtShell::Open(const std::string& target, const std::string&) {
    if (target.empty()) return;
    QDesktopServices::openUrl(QUrl::fromUserInput(QString::fromStdString(target)));
}

// --------------------------------------------------------------------------
std::optional<MenuChoice> QtPopupHost::Popup(const std::string&, const std::vector<MenuEntry>& entries) {
    QMenu menu(owner_);
    // The game's colours and its rounded display face, at the scale the form
    // is drawn at (a maximised window draws it larger).
    const double k = look::FormScale(owner_);
    const auto px = [k](double v) { return QString::number(std::max(1, qRound(v * k))); };
    menu.setStyleSheet(QStringLiteral(
                           "QMenu { background: #FFFDEB; border: %1px solid #0B5EB5; padding: %2px %3px;"
                           " font-family: 'Dosis'; font-weight: 800; font-size: %4pt; color: #0B5EB5; }"
                           "QMenu::item { padding: %3px %5px %3px %6px; border-radius: %2px; margin: 1px %1px; }"
                           "QMenu::item:selected { background: #C000C0; color: #FFFFFF; }"
                           "QMenu::item:disabled { color: #B9B9AA; }"
                           "QMenu::separator { height: %1px; background: #E8E2B4; margin: %7px %8px; }")
                           .arg(px(2), px(5), px(3), QString::number(13 * k, 'f', 1), px(26), px(14), px(4),
                                px(10)));
    std::vector<std::pair<QAction*, MenuChoice>> map;
    for (const auto& e : entries) {
        if (e.caption == "-") {
            menu.addSeparator();
            continue;
        }
        QAction* a = menu.addAction(QString::fromStdString(e.caption));
        a->setEnabled(e.enabled);
        map.push_back({a, MenuChoice{e.name, e.index}});
    }
    QAction* chosen = menu.exec(QCursor::pos());
    for (const auto& [a, choice] : map)
        if (a == chosen) return choice;
    return std::nullopt;
}
