// The settings store over QSettings.
#include "qt/ports/QtSettingsStore.h"

#include <sys/stat.h>

#include <cstdio>

#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QString>

namespace {

QString Path(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}

// The game's own file holds a few dozen short keys; QSettings reads the
// file whole, and keeps it in memory twice over.
constexpr long long kMaxStoreBytes = 1024 * 1024;

// A store file that the game could not have written (too large to be its
// own, or no plain file: a pipe would keep QSettings waiting, a device
// would never end) is moved aside, so that the game starts with its
// defaults and the player's file stays as it was. False when it can't be.
bool SetAsideIfNotAStore(const QString& path) {
    const QByteArray native = QFile::encodeName(path);
    struct stat st {};
    if (::stat(native.constData(), &st) != 0) return true;  // none yet, or not ours to read
    if (S_ISREG(st.st_mode) && st.st_size <= kMaxStoreBytes) return true;
    QString aside = path + ".set-aside";
    for (int n = 2; QFile::exists(aside) || QFile::symLinkTarget(aside) != QString(); ++n)
        aside = path + ".set-aside-" + QString::number(n);
    if (::rename(native.constData(), QFile::encodeName(aside).constData()) != 0) return false;
    std::fprintf(stderr, "Tessuma: %s is no settings file; kept as %s, the game starts with its defaults\n",
                 native.constData(), QFile::encodeName(aside).constData());
    return true;
}

}  // namespace

// The game passes "Tessuma" as the application with every call, and that is
// the only one it knows: its folder holds the store, settings.ini, next to
// the file dialogs' profile.
QtSettingsStore::QtSettingsStore()
    : QtSettingsStore(
          (QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Tessuma/settings.ini")
              .toStdString()) {}

QtSettingsStore::QtSettingsStore(const std::string& iniPath) {
    const QString path = QString::fromStdString(iniPath);
    // A file that can't be moved aside is not read either: the game then
    // keeps its settings for this session only.
    if (SetAsideIfNotAStore(path))
        settings_ = std::make_unique<QSettings>(path, QSettings::IniFormat);
    else
        memory_.emplace();
}

QtSettingsStore::~QtSettingsStore() = default;

std::string QtSettingsStore::Get(const std::string&, const std::string& section, const std::string& key) {
    if (memory_) {
        const auto it = memory_->find(Path(section, key).toStdString());
        return it == memory_->end() ? std::string() : it->second;
    }
    const QVariant v = settings_->value(Path(section, key));
    // A damaged file may hold a list where a text belongs; join it back.
    if (v.metaType().id() == QMetaType::QStringList) return v.toStringList().join(',').toStdString();
    return v.toString().toStdString();
}

void QtSettingsStore::Save(const std::string&, const std::string& section, const std::string& key,
                           const std::string& value) {
    if (memory_) {
        (*memory_)[Path(section, key).toStdString()] = value;
        return;
    }
    // QSettings writes the file (whole, through a lock and a rename) once
    // the handler has returned to the event loop, and on exit: the settings
    // one handler saves together cost one write, not one each. A first
    // start stores a dozen defaults before its first frame.
    settings_->setValue(Path(section, key), QString::fromStdString(value));
}

bool QtSettingsStore::Has(const std::string&, const std::string& section, const std::string& key) {
    if (memory_) return memory_->count(Path(section, key).toStdString()) != 0;
    return settings_->contains(Path(section, key));
}

std::string QtSettingsStore::FileName() const { return settings_ ? settings_->fileName().toStdString() : ""; }
