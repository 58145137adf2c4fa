// Reading, replacing, finding and removing the player's files. A path is
// the bytes the system names the file by: a name given on the command line
// need not be UTF-8, and no text conversion may stand between it and the
// file it names.
#include "qt/ports/QtFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include <QFile>

#include "qt/ports/AtomicFile.h"

IFiles::Read QtFiles::ReadFile(const std::string& path, std::size_t limit, std::string& text) {
    text.clear();
    if (path.empty() || path.find('\0') != std::string::npos) return Read::Missing;
    // Opened without waiting (a fifo would hold the open until a writer
    // comes), then looked at through the open handle: only plain files are
    // read, so a pipe or a device can't keep the game waiting.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) return errno == ENOENT || errno == ENOTDIR ? Read::Missing : Read::Failed;
    QFile file;
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return Read::Failed;
    }
    struct stat st {};
    if (::fstat(fd, &st) != 0) return Read::Failed;
    if (!S_ISREG(st.st_mode)) return Read::NotAFile;
    if (static_cast<unsigned long long>(st.st_size) > limit) return Read::TooLarge;
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

bool QtFiles::IsFile(const std::string& path) {
    struct stat st {};
    return !path.empty() && path.find('\0') == std::string::npos && ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

void QtFiles::RemoveFile(const std::string& path) {
    if (!path.empty() && path.find('\0') == std::string::npos) ::unlink(path.c_str());
}
