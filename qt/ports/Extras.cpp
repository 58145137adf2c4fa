// Finding and loading the module of sound, music, download and printing.
#include "qt/ports/Extras.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QtDebug>

#include "BuildConfig.h"

namespace extras {

namespace {

const ExtrasApi* gApi = nullptr;
bool gTried = false;

// Beside the program in a build tree; where it was installed otherwise, or
// at the same place relative to a moved installation.
QStringList Candidates() {
    const QString name = QStringLiteral("libtessuma-extras.so");
    const QDir here(QCoreApplication::applicationDirPath());
    return {here.filePath(name), here.filePath(QStringLiteral(TESSUMA_EXTRAS_FROM_BINDIR "/") + name),
            QStringLiteral(TESSUMA_EXTRAS_DIR "/") + name};
}

}  // namespace

const ExtrasApi* Api() {
    if (gTried) return gApi;
    gTried = true;
    QStringList errors;
    for (const QString& path : Candidates()) {
        if (!QFileInfo::exists(path)) continue;
        QLibrary lib(path);
        // The module stays for the program's life: its objects are in use.
        lib.setLoadHints(QLibrary::PreventUnloadHint);
        using Entry = const ExtrasApi* (*)();
        if (auto entry = reinterpret_cast<Entry>(lib.resolve("tessuma_extras_api"))) {
            gApi = entry();
            if (gApi) return gApi;
        }
        errors << lib.errorString();
    }
    qWarning().noquote() << "Tessuma: no sound, music, update check or printing:"
                         << (errors.isEmpty() ? QStringLiteral("libtessuma-extras.so not found") : errors.join("; "));
    return nullptr;
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
