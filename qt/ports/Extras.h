#pragma once
// Sound and music need Qt Multimedia, PulseAudio and libmpg123; the update
// check's download, printing and the SVG pictures need Qt Network, Qt Print
// Support, Qt SVG and CUPS: three dozen libraries that take longer to load
// than the whole first frame takes to draw, and that a game left on its board
// may never use. They live in two modules of their own, loaded on first use
// (libtessuma-sound.so once the window is up, libtessuma-extras.so when the
// player prints or looks for an update), so that sound alone does not bring
// in the network and print stacks. The program reaches each through one
// table of entry points.
//
// The modules and the program are built together from one tree: the tables
// are their whole contract.

#include <functional>
#include <memory>
#include <string>

#include "forms/Ports.h"

class QPainter;
class QRectF;
class QString;
class QWidget;

struct SoundApi {
    std::unique_ptr<ISoundEffects> (*makeSounds)();
    std::unique_ptr<IMusicDevice> (*makeMusic)();
};

struct ExtrasApi {
    std::unique_ptr<IDownloader> (*makeDownloader)();
    // True while a download waits for its answer (input waits with it).
    bool (*downloadActive)();
    // Prints one page that `paint` draws in form pixels (640 by 480).
    PrintResult (*printPage)(const std::function<void(QPainter&)>& paint);
    bool (*pageSetupDialog)(QWidget* owner, IDialogHost::PageSetup& setup);
    bool (*printDialog)(QWidget* owner);
    // Draws the SVG picture at `path` into `target`; false when there is none.
    bool (*drawSvg)(QPainter& p, const QString& path, const QRectF& target);
};

// Each module's one exported symbol.
extern "C" const SoundApi* tessuma_sound_api();
extern "C" const ExtrasApi* tessuma_extras_api();

namespace extras {

// A module's table, loading the module on the first call; nullptr when it
// can't be loaded (said once on the log, with the reason).
const SoundApi* Sound();
const ExtrasApi* Api();
// Whether the extras module has been loaded, without loading it.
bool Loaded();
// A download waits for its answer (never before the module is loaded).
bool DownloadActive();

// The update check's download, loading the module on its first call.
class LazyDownloader : public IDownloader {
public:
    bool Download(const std::string& url, const std::string& localPath) override;

private:
    std::unique_ptr<IDownloader> real_;
};

}  // namespace extras
