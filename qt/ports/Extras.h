#pragma once
// Sound, music, the update check's download and printing need Qt Multimedia,
// Qt Network, Qt Print Support, Qt SVG and CUPS: three dozen libraries that
// take longer to load than the whole first frame takes to draw, and that a
// game left on its board may never use. They live in a module of their own
// (libtessuma-extras.so), loaded on first use; the program reaches them
// through one table of entry points.
//
// The module and the program are built together from one tree: the table
// is their whole contract.

#include <functional>
#include <memory>
#include <string>

#include "forms/Ports.h"

class QPainter;
class QRectF;
class QString;
class QWidget;

struct ExtrasApi {
    std::unique_ptr<ISoundEffects> (*makeSounds)();
    std::unique_ptr<IMusicDevice> (*makeMusic)();
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

// The module's one exported symbol.
extern "C" const ExtrasApi* tessuma_extras_api();

namespace extras {

// The module's table, loading the module on the first call; nullptr when it
// can't be loaded (said once on the log, with the reason).
const ExtrasApi* Api();
// Whether the module has been loaded, without loading it.
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
