// Reading, replacing, finding and removing the player's files.
#include "qt/ports/QtFiles.h"

#include <QFile>
#include <QFileInfo>

#include "qt/ports/AtomicFile.h"

namespace {

QString Q(const std::string& path) { return QString::fromStdString(path); }

}  // namespace

IFiles::Read QtFiles::ReadFile(const std::string& path, std::size_t limit, std::string& text) {
    text.clear();
    if (path.empty()) return Read::Missing;
    const QFileInfo info(Q(path));
    if (!info.exists()) return Read::Missing;
    // Only plain files are opened: a pipe or a device could keep the game waiting.
    if (!info.isFile()) return Read::NotAFile;
    if (static_cast<unsigned long long>(info.size()) > limit) return Read::TooLarge;
    QFile file(Q(path));
    if (!file.open(QIODevice::ReadOnly)) return Read::Failed;
    // One byte past the limit tells a file that grew since it was looked at.
    const QByteArray bytes = file.read(static_cast<qint64>(limit) + 1);
    if (file.error() != QFileDevice::NoError) return Read::Failed;
    if (static_cast<std::size_t>(bytes.size()) > limit) return Read::TooLarge;
    text.assign(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return Read::Ok;
}

bool QtFiles::WriteFileAtomically(const std::string& path, const std::string& text) {
    return ::WriteFileAtomically(path, text);
}

bool QtFiles::IsFile(const std::string& path) { return !path.empty() && QFileInfo(Q(path)).isFile(); }

void QtFiles::RemoveFile(const std::string& path) { QFile::remove(Q(path)); }
