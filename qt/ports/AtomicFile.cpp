// Replacing a file whole or not at all, on the real disk.
#include "qt/ports/AtomicFile.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr const char* kTempPrefix = ".~tessuma-";

// Temporaries that a save killed half-way left in `dir`: our names, our
// files, made by a process that is gone. A temporary of a process still
// running is its save in progress and stays. The look is bounded, so a
// huge folder costs no more than a glance.
void RemoveStaleTemporaries(const std::string& dir) {
    std::error_code ec;
    fs::directory_iterator it(dir, ec), end;
    for (int seen = 0; !ec && it != end && seen < 4096; it.increment(ec), ++seen) {
        const std::string name = it->path().filename().string();
        const std::size_t prefix = std::char_traits<char>::length(kTempPrefix);
        if (name.rfind(kTempPrefix, 0) != 0 || name.size() < prefix + 7 || name.substr(name.size() - 4) != ".tmp")
            continue;
        const std::size_t dash = name.find('-', prefix);
        if (dash == std::string::npos || dash == prefix || dash > prefix + 10) continue;
        long pid = 0;
        for (std::size_t i = prefix; i < dash; ++i) {
            if (name[i] < '0' || name[i] > '9') {
                pid = -1;
                break;
            }
            pid = pid * 10 + (name[i] - '0');
        }
        if (pid <= 0 || pid == ::getpid()) continue;
        if (::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH) continue;  // alive, or not ours to ask
        struct stat st {};
        const std::string path = it->path().string();
        if (::lstat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) && st.st_uid == ::geteuid()) ::unlink(path.c_str());
    }
}

}  // namespace

bool WriteFileAtomically(const std::string& path, const std::string& data) {
    static std::atomic<unsigned> counter{0};
    std::string target = path;
    std::error_code ec;
    // Replace the file a link points to, not the link. Links are followed by
    // hand: a link whose target is missing still names the place to write,
    // and when that place's folder is gone too, the save is refused below.
    for (int hops = 0; fs::is_symlink(target, ec); ++hops) {
        if (hops == 40) return false;  // a loop of links
        const fs::path link(target);
        const fs::path to = fs::read_symlink(link, ec);
        if (ec) return false;
        target = (to.is_absolute() ? to : link.parent_path() / to).lexically_normal().string();
    }
    const fs::path tp(target);
    const std::string dir = tp.has_parent_path() ? tp.parent_path().string() : std::string(".");
    struct stat old {};
    const bool existed = ::stat(target.c_str(), &old) == 0;
    if (existed && !S_ISREG(old.st_mode)) return false;
    RemoveStaleTemporaries(dir);

    std::string tmp;
    int fd = -1;
    for (int attempt = 0; attempt < 50 && fd < 0; ++attempt) {
        tmp = dir + "/" + kTempPrefix + std::to_string(::getpid()) + "-" + std::to_string(counter++) + ".tmp";
        fd = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST) return false;
    }
    if (fd < 0) return false;
    bool ok = true;
    std::size_t done = 0;
    while (ok && done < data.size()) {
        const ssize_t n = ::write(fd, data.data() + done, data.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            ok = false;
        } else {
            done += static_cast<std::size_t>(n);
        }
    }
    if (ok && existed) (void)::fchmod(fd, old.st_mode & 07777);  // the old file's permissions
    if (ok && ::fsync(fd) != 0) ok = false;
    if (::close(fd) != 0) ok = false;
    if (ok && ::rename(tmp.c_str(), target.c_str()) != 0) ok = false;
    if (!ok) {
        ::unlink(tmp.c_str());
        return false;
    }
    const int dfd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dfd >= 0) {
        (void)::fsync(dfd);  // the rename itself reaches the disk
        ::close(dfd);
    }
    return true;
}
