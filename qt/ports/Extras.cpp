// Finding and loading the modules of sound and music, and of download and printing.
#include "qt/ports/Extras.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QtDebug>

#include "BuildConfig.h"

namespace extras {

namespace {

// Beside the program in a build tree; where it was installed otherwise, or
// at the same place relative to a moved installation.
QStringList Candidates(const QString& name) {
    const QDir here(QCoreApplication::applicationDirPath());
    return {here.filePath(name), here.filePath(QStringLiteral(TESSUMA_EXTRAS_FROM_BINDIR "/") + name),
            QStringLiteral(TESSUMA_EXTRAS_DIR "/") + name};
}

// The table that the module `name` gives through `entry`, or nullptr (said
// on the log, with what goes missing and why).
template <class Table>
const Table* Load(const char* name, const char* entry, const char* without) {
    QStringList errors;
    for (const QString& path : Candidates(QString::fromLatin1(name))) {
        if (!QFileInfo::exists(path)) continue;
        QLibrary lib(path);
        // A module stays for the program's life: its objects are in use.
        lib.setLoadHints(QLibrary::PreventUnloadHint);
        using Entry = const Table* (*)();
        if (auto get = reinterpret_cast<Entry>(lib.resolve(entry))) {
            if (const Table* table = get()) return table;
        }
        errors << lib.errorString();
    }
    qWarning().noquote() << "Tessuma: no" << without << "-"
                         << (errors.isEmpty() ? QStringLiteral("%1 not found").arg(QLatin1String(name)) : errors.join("; "));
    return nullptr;
}

const ExtrasApi* gApi = nullptr;
bool gTried = false;

}  // namespace

const SoundApi* Sound() {
    static const SoundApi* const api =
        Load<SoundApi>("libtessuma-sound.so", "tessuma_sound_api", "sound or music");
    return api;
}

const ExtrasApi* Api() {
    if (!gTried) {
        gTried = true;
        gApi = Load<ExtrasApi>("libtessuma-extras.so", "tessuma_extras_api", "update check or printing");
    }
    return gApi;
}

bool Loaded() { return gApi != nullptr; }

bool DownloadActive() { return gApi && gApi->downloadActive(); }

bool LazyDownloader::Download(const std::string& url, const std::string& localPath) {
    if (!real_) {
        const ExtrasApi* api = Api();
        if (!api) return false;
        real_ = api->makeDownloader();
    }
    return real_ && real_->Download(url, localPath);
}

}  // namespace extras
