// The settings store over QSettings.
#include "qt/ports/QtSettingsStore.h"

#include <QSettings>
#include <QString>

namespace {

QString Path(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}

}  // namespace

// The game passes "Tessuma" as the application with every call, and that is
// the only one it knows: its folder holds the store, settings.ini, next to
// the file dialogs' profile.
QtSettingsStore::QtSettingsStore()
    : settings_(std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, "Tessuma", "settings")) {}

QtSettingsStore::QtSettingsStore(const std::string& iniPath)
    : settings_(std::make_unique<QSettings>(QString::fromStdString(iniPath), QSettings::IniFormat)) {}

QtSettingsStore::~QtSettingsStore() = default;

std::string QtSettingsStore::Get(const std::string&, const std::string& section, const std::string& key) {
    const QVariant v = settings_->value(Path(section, key));
    // A damaged file may hold a list where a text belongs; join it back.
    if (v.metaType().id() == QMetaType::QStringList) return v.toStringList().join(',').toStdString();
    return v.toString().toStdString();
}

void QtSettingsStore::Save(const std::string&, const std::string& section, const std::string& key,
                           const std::string& value) {
    // QSettings writes the file (whole, through a lock and a rename) once
    // the handler has returned to the event loop, and on exit: the settings
    // one handler saves together cost one write, not one each. A first
    // start stores a dozen defaults before its first frame.
    settings_->setValue(Path(section, key), QString::fromStdString(value));
}

bool QtSettingsStore::Has(const std::string&, const std::string& section, const std::string& key) {
    return settings_->contains(Path(section, key));
}

std::string QtSettingsStore::FileName() const { return settings_->fileName().toStdString(); }
