// Tessuma Sudoku: the program.

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QStandardPaths>

#include <memory>

#include "forms/HeldAudio.h"
#include "forms/modMain.h"
#include "qt/ports/QtDialogHost.h"
#include "qt/ports/Extras.h"
#include "qt/ports/QtBackground.h"
#include "qt/ports/QtFiles.h"
#include "qt/ports/QtInstallPaths.h"
#include "qt/ports/QtPlatform.h"
#include "qt/ports/QtSettingsStore.h"
#include "qt/view/FirstFrame.h"
#include "qt/view/FormView.h"
#include "qt/view/Look.h"
#include "qt/view/MessageDialog.h"
#include "qt/view/QtPrinter.h"
#include "qt/view/TessumaWindow.h"

#ifdef TESSUMA_BENCH_HOOKS
#include "BenchHooks.h"
#endif

int main(int argc, char** argv) {
    // The resources live in a static library: bring them in by name.
    Q_INIT_RESOURCE(art);  // the sounds are the extras module's
    QApplication::setApplicationName("Tessuma");
    QApplication::setOrganizationName("Tessuma");
    // No application display name: Qt would append it to every window
    // title, and the message box has none. The main window names itself.
    QApplication::setDesktopFileName("tessuma");
    // On X, the window's frames go to the server as plain image requests,
    // not through a shared-memory segment. Our frames are small (a game left
    // open repaints its clock and score once a second, about 30 KB), and with
    // shared memory Qt's backing store waits on a round trip to the server
    // before every frame: two more wake-ups and about an eighth of the cost
    // of a tick. Full repaints are rare (a page turned, the window resized).
    if (!qEnvironmentVariableIsSet("QT_XCB_NO_MITSHM")) qputenv("QT_XCB_NO_MITSHM", "1");
    QApplication app(argc, argv);
    look::LoadFonts();
#ifdef TESSUMA_BENCH_HOOKS
    benchhooks::Install();  // the measured twin of the game only
#endif

    // The whole command line is one path of a saved game, kept as the bytes
    // the system gave (a file's name need not be UTF-8). QApplication has
    // taken its own options out of argv by now.
    std::string commandLine;
    for (int i = 1; i < argc; ++i) commandLine += (i > 1 ? " " : "") + std::string(argv[i]);

    QtSettingsStore settings;
    QtRandom random;
    QtClock clock;
    QtDisplay display;
    QtInstanceLock instance;
    QtSystemMessageBox sysbox;
    QtMessageHost messages;
    QtPopupHost popups;
    QtDialogHost dialogs;
    // The audio devices are made once the window is up (see below), by the
    // sound module; without it the game plays on in silence.
    HeldSoundEffects sounds([] {
        const SoundApi* api = extras::Sound();
        return api ? api->makeSounds() : nullptr;
    });
    HeldMusicDevice music([] {
        const SoundApi* api = extras::Sound();
        return api ? api->makeMusic() : nullptr;
    });
    QtShell shell;
    extras::LazyDownloader download;
    QtFiles files;

    Ports ports{settings, random, clock,  display, display, instance, sysbox,   messages,
                popups,   dialogs, sounds, music,   shell,   download, files};
    // The songs lie beside the program in a build, under share/ once installed.
    // The solver's search runs away from the window.
    QtBackground background;
    ports.background = &background;
    ports.programDir = ProgramDataDir();
    ports.commandLine = commandLine;
    // The dialogs' profile lives beside the settings: ~/.config/Tessuma.
    ports.profileDir =
        (QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Tessuma").toStdString();
    QDir().mkpath(QString::fromStdString(ports.profileDir));
    // The program's own folder is rarely writable once installed: the file
    // dialogs start in the player's documents.
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty() || !QDir(documents).exists()) documents = QDir::homePath();
    ports.documentsDir = documents.toStdString();
    // The version file is fetched into the cache, which is always writable.
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    QDir().mkpath(cache);
    ports.scratchDir = cache.toStdString();
    // Packagers and tests may point the update check elsewhere.
    ports.versionUrl = qEnvironmentVariable("TESSUMA_VERSION_URL").toStdString();

    Program program(ports);
    TessumaWindow window(program);
    QtPrinter printer(window);
    program.ports.window = &window;
    program.ports.printer = &printer;
    messages.SetOwner(&window);
    popups.SetOwner(&window);
    display.onModeChanged = [&window](bool full) { window.SetFullScreenMode(full); };

    // Music and sounds wait for the first frame: bringing up the system's
    // audio takes longer than drawing the window. So does the icon; the
    // window gets it as a picture (the drawing it was made from would load
    // Qt's SVG support for it alone).
    AfterFirstFrame(&window, [&app, &sounds, &music] {
        app.setWindowIcon(QIcon(look::Pixmap(":/icons/tessuma-64.png")));
        sounds.Release();
        music.Release();
    });

    program.Main();
    if (!program.Running) return 0;
    // The form's load went on after the window first showed it (the song
    // timer, a game named on the command line): show it as it stands now.
    if (window.View()) window.View()->AfterModel();
    return app.exec();
}
