// What a broken disk can do to a save, tried on real file systems: a disk
// that is full (no room for the data, or for one more file), a folder that
// is mounted read-only (which holds for root too), a folder or file that
// vanishes while the player answers a question, a link into nowhere, and
// the game killed in the middle of saving. The old file always stays whole,
// the player is told "That file no good.", and the game goes on unsaved.
//
// The disk faults run in a child process with a small tmpfs of its own (a
// private mount namespace); where the system doesn't allow that, they are
// skipped with the reason.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>

#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>

#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "qt/extras/Printing.h"
#include "qt/ports/QtFiles.h"
#include "sim/World.h"

namespace fs = std::filesystem;

namespace {

const std::string kGame = "8E6217C94B4GI356HA9136DHGE25FD1832G9C2879416E7I1562DC86HICB1547AC547IH2F47B8569A3";
constexpr const char* kNoGood = "That file no good.";

std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream os;
    os << in.rdbuf();
    return os.str();
}

std::set<std::string> Names(const std::string& dir) {
    std::set<std::string> names;
    std::error_code ec;
    for (const auto& e : fs::directory_iterator(dir, ec)) names.insert(e.path().filename().string());
    return names;
}

// Runs `body` in a child process and returns its report: "" when all held,
// "skip: ..." when the child couldn't set up its world, else what failed.
// The child ends with _exit, so the parent's world is left alone.
std::string InChild(const std::function<std::string()>& body) {
    int fds[2];
    if (::pipe(fds) != 0) return "pipe failed";
    const pid_t pid = ::fork();
    if (pid < 0) return "fork failed";
    if (pid == 0) {
        ::close(fds[0]);
        std::string report;
        try {
            report = body();
        } catch (const std::exception& e) {
            report = std::string("exception: ") + e.what();
        }
        std::size_t done = 0;
        while (done < report.size()) {
            const ssize_t n = ::write(fds[1], report.data() + done, report.size() - done);
            if (n <= 0) break;
            done += static_cast<std::size_t>(n);
        }
        ::_exit(0);
    }
    ::close(fds[1]);
    std::string report;
    char buf[512];
    ssize_t n;
    while ((n = ::read(fds[0], buf, sizeof buf)) > 0) report.append(buf, static_cast<std::size_t>(n));
    ::close(fds[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    if (!WIFEXITED(status)) return "the child ended by signal " + std::to_string(WTERMSIG(status));
    return report;
}

// In the child: a private tmpfs at `dir`, seen by no other process.
std::string PrivateTmpfs(const std::string& dir, const std::string& options) {
    if (::unshare(CLONE_NEWNS) != 0) return std::string("skip: no private mount namespace: ") + std::strerror(errno);
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return std::string("skip: mounts can't be made private: ") + std::strerror(errno);
    std::error_code ec;
    fs::create_directories(dir, ec);
    if (::mount("tmpfs", dir.c_str(), "tmpfs", 0, options.c_str()) != 0)
        return std::string("skip: no tmpfs: ") + std::strerror(errno);
    return "";
}

// Fills a file system up to the last byte.
void FillUp(const std::string& path) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) return;
    const std::string block(4096, 'x');
    while (::write(fd, block.data(), block.size()) > 0) {
    }
    ::close(fd);
}

#define CHILD_CHECK(cond)                                    \
    do {                                                     \
        if (!(cond)) return std::string("failed: ") + #cond; \
    } while (0)

// A new folder on the real disk for each test, and the real files port.
struct RealFolder {
    std::string dir;
    RealFolder() {
        std::string tmpl = (fs::temp_directory_path() / "tessuma-faults-XXXXXX").string();
        if (::mkdtemp(tmpl.data())) dir = tmpl;
    }
    ~RealFolder() {
        std::error_code ec;
        if (!dir.empty()) fs::remove_all(dir, ec);
    }
};

class FaultsTest : public ::testing::Test {
protected:
    RealFolder real;
    QtFiles files;
    World w;
    std::string Path(const std::string& relative) const { return real.dir + "/" + relative; }
    std::unique_ptr<Program> p;
    frmTessuma* f = nullptr;

    void SetUp() override {
        w.use.files = &files;
        Start(w.MakePorts());
    }

    void Start(Ports ports) {
        p = std::make_unique<Program>(std::move(ports));
        p->Main();
        f = p->MainForm.get();
        f->BoardState = kGame;
        f->BaseScore = 25000;
        f->lblDifficulty.Caption = "beginner";
        f->ShowBoardState();
    }

    // The game moves on: the clock, and something to save.
    void MoveOn(int seconds) {
        for (int i = 0; i < seconds; ++i) f->tmrClock_Timer();
        f->PuzzleDirty = true;
    }

    // A save that must fail: told, still unsaved.
    std::string RefusedSave(const std::string& path) {
        const int before = w.messages.count;
        MoveOn(7);
        f->WriteGameFile(path);
        CHILD_CHECK(w.messages.count == before + 1);
        CHILD_CHECK(w.messages.lastText == kNoGood);
        CHILD_CHECK(f->PuzzleDirty);
        return "";
    }
};

void ExpectClean(const std::string& report) {
    if (report.rfind("skip: ", 0) == 0) GTEST_SKIP() << report.substr(6);
    EXPECT_EQ(report, "");
}

// ---------------------------------------------------------------------------

TEST_F(FaultsTest, AFullDiskKeepsTheOldFile) {
    const std::string disk = Path("disk");
    ExpectClean(InChild([&]() -> std::string {
        if (auto why = PrivateTmpfs(disk, "size=16k"); !why.empty()) return why;
        const std::string game = disk + "/game.tsm";
        f->WriteGameFile(game);
        CHILD_CHECK(w.messages.count == 0);
        const std::string old = Slurp(game);
        CHILD_CHECK(old.size() > 81);

        FillUp(disk + "/filler");
        if (auto why = RefusedSave(game); !why.empty()) return why;
        CHILD_CHECK(Slurp(game) == old);
        CHILD_CHECK((Names(disk) == std::set<std::string>{"game.tsm", "filler"}));

        // With room again the same save goes through.
        ::unlink((disk + "/filler").c_str());
        f->WriteGameFile(game);
        CHILD_CHECK(!f->PuzzleDirty);
        CHILD_CHECK(Slurp(game) != old);
        CHILD_CHECK(Slurp(game).substr(0, 81) == f->BuildBoardState());
        return "";
    }));
}

TEST_F(FaultsTest, NoRoomForOneMoreFileKeepsTheOldFile) {
    const std::string disk = Path("disk");
    ExpectClean(InChild([&]() -> std::string {
        // The folder and the game: the temporary file finds no inode.
        if (auto why = PrivateTmpfs(disk, "size=64k,nr_inodes=2"); !why.empty()) return why;
        const std::string game = disk + "/game.tsm";
        f->WriteGameFile(game);
        CHILD_CHECK(w.messages.count == 0);
        const std::string old = Slurp(game);
        if (auto why = RefusedSave(game); !why.empty()) return why;
        CHILD_CHECK(Slurp(game) == old);
        CHILD_CHECK(Names(disk) == std::set<std::string>{"game.tsm"});
        return "";
    }));
}

TEST_F(FaultsTest, AReadOnlyMountKeepsTheOldFile) {
    const std::string disk = Path("disk");
    ExpectClean(InChild([&]() -> std::string {
        if (auto why = PrivateTmpfs(disk, "size=64k"); !why.empty()) return why;
        const std::string game = disk + "/game.tsm";
        f->WriteGameFile(game);
        const std::string old = Slurp(game);
        if (::mount(nullptr, disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
            return std::string("skip: no read-only remount: ") + std::strerror(errno);
        if (auto why = RefusedSave(game); !why.empty()) return why;
        CHILD_CHECK(Slurp(game) == old);
        // A new name in that folder is refused the same way.
        if (auto why = RefusedSave(disk + "/other"); !why.empty()) return why;
        CHILD_CHECK(Names(disk) == std::set<std::string>{"game.tsm"});
        return "";
    }));
}

// ---------------------------------------------------------------------------
// Paths that vanish under the game's feet.

// Answers the overwrite question with yes, after something happened.
class SysBoxThatWaits : public ISystemMessageBox {
public:
    std::function<void()> meanwhile;
    int asked = 0;
    int Show(const std::string&, const std::string&, int) override {
        ++asked;
        if (meanwhile) meanwhile();
        return Yes;
    }
};

// Gives the answer of the fake dialogs, then lets something happen.
class DialogsThatWait : public FakeDialogHost {
public:
    explicit DialogsThatWait(std::string sandbox) : FakeDialogHost(std::move(sandbox)) {}
    std::function<void()> meanwhile;
    FileDialogResult FileDialog(const FileDialogRequest& req) override {
        FileDialogResult r = FakeDialogHost::FileDialog(req);
        if (meanwhile) meanwhile();
        return r;
    }
};

TEST_F(FaultsTest, AFolderThatVanishesDuringTheQuestionIsNotMadeAgain) {
    SysBoxThatWaits sysbox;
    w.use.sysbox = &sysbox;
    Start(w.MakePorts());
    fs::create_directory(Path("stick"));
    f->WriteGameFile(Path("stick/game.tsm"));
    ASSERT_EQ(w.messages.count, 0);

    // The stick is pulled while the player reads "already exists".
    sysbox.meanwhile = [&] { fs::remove_all(Path("stick")); };
    MoveOn(3);
    w.dialogs.answers.push_back(Path("stick/game.tsm"));
    f->cmdSideNav_Click(2);
    EXPECT_EQ(sysbox.asked, 1);
    EXPECT_EQ(w.messages.count, 1);
    EXPECT_EQ(w.messages.lastText, kNoGood);
    EXPECT_TRUE(f->PuzzleDirty);
    EXPECT_FALSE(fs::exists(Path("stick")));

    // A file deleted meanwhile is simply written anew.
    fs::create_directory(Path("stick"));
    f->WriteGameFile(Path("stick/game.tsm"));
    sysbox.meanwhile = [&] { fs::remove(Path("stick/game.tsm")); };
    MoveOn(3);
    w.dialogs.answers.push_back(Path("stick/game.tsm"));
    f->cmdSideNav_Click(2);
    EXPECT_EQ(w.messages.count, 1);
    EXPECT_FALSE(f->PuzzleDirty);
    EXPECT_EQ(Slurp(Path("stick/game.tsm")).substr(0, 81), f->BuildBoardState());
}

TEST_F(FaultsTest, AFileThatVanishesBeforeItIsReadLeavesTheGame) {
    DialogsThatWait dialogs(real.dir);
    w.use.dialogs = &dialogs;
    Start(w.MakePorts());
    f->WriteGameFile(Path("game.tsm"));
    MoveOn(5);
    const std::string board = f->BuildBoardState();
    const std::int32_t clock = f->ClockSeconds;

    // Deleted, or made a folder, between the dialog and the reading.
    for (int round = 0; round < 2; ++round) {
        dialogs.meanwhile = [&] {
            fs::remove(Path("game.tsm"));
            if (round == 1) fs::create_directory(Path("game.tsm"));
        };
        dialogs.answers.push_back(Path("game.tsm"));
        f->cmdSideNav_Click(1);
        EXPECT_EQ(f->BuildBoardState(), board);
        EXPECT_EQ(f->ClockSeconds, clock);
        EXPECT_TRUE(f->tmrClock.Enabled);
        fs::remove_all(Path("game.tsm"));
        f->WriteGameFile(Path("game.tsm"));
        f->ClockSeconds = clock;
    }
    // The command line's path is read without a look first: it is refused.
    const int before = w.messages.count;
    f->LoadGameFile(Path("gone.tsm"));
    EXPECT_EQ(w.messages.count, before + 1);
    EXPECT_EQ(w.messages.lastText, kNoGood);
    EXPECT_EQ(f->BuildBoardState(), board);
}

TEST_F(FaultsTest, ALinkIntoAVanishedFolderIsRefused) {
    fs::create_directory(Path("gone"));
    fs::create_symlink(Path("gone/game.tsm"), Path("link.tsm"));
    fs::remove(Path("gone"));
    MoveOn(1);
    f->WriteGameFile(Path("link.tsm"));
    EXPECT_EQ(w.messages.lastText, kNoGood);
    EXPECT_TRUE(f->PuzzleDirty);
    EXPECT_TRUE(fs::is_symlink(Path("link.tsm")));
    EXPECT_FALSE(fs::exists(Path("gone")));
}

// ---------------------------------------------------------------------------
// Killed while saving: a child saves two games in turn, as fast as it can,
// and is killed at a random moment. The file is always one of the two.

// Replacing a file keeps its permissions, and a link stays a link whose
// target gets the game.
TEST_F(FaultsTest, ReplacingKeepsThePermissionsAndTheLinks) {
    const std::string game = Path("game.tsm");
    std::ofstream(game) << "old";
    ::chmod(game.c_str(), 0640);
    f->WriteGameFile(game);
    struct stat st {};
    ASSERT_EQ(::stat(game.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0640u);
    EXPECT_EQ(Slurp(game).substr(0, 81), kGame);

    fs::create_directory(Path("real"));
    std::ofstream(Path("real/target.tsm")) << "old";
    fs::create_symlink(Path("real/target.tsm"), Path("link.tsm"));
    f->WriteGameFile(Path("link.tsm"));
    EXPECT_TRUE(fs::is_symlink(Path("link.tsm")));
    EXPECT_EQ(Slurp(Path("real/target.tsm")).substr(0, 81), kGame);
    EXPECT_EQ(w.messages.count, 0);
}

TEST_F(FaultsTest, KilledInTheMiddleOfASaveLeavesTheOldOrTheNewFile) {
    const std::string game = Path("game.tsm");
    f->ClockSeconds = 111;
    f->WriteGameFile(Path("a.tsm"));
    f->ClockSeconds = 2222;
    f->lblViewPos[9].Caption = "4 6";
    f->WriteGameFile(Path("b.tsm"));
    const std::string a = Slurp(Path("a.tsm")), b = Slurp(Path("b.tsm"));
    ASSERT_NE(a, b);
    fs::remove(Path("a.tsm"));
    fs::remove(Path("b.tsm"));
    f->lblViewPos[9].Caption = "   ";

    std::mt19937 rng(12345);
    int rounds = 0, temporaries = 0;
    for (; rounds < 25; ++rounds) {
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            ::close(ready[0]);
            for (long i = 0;; ++i) {
                const bool second = i % 2 == 1;
                f->ClockSeconds = second ? 2222 : 111;
                f->lblViewPos[9].Caption = second ? "4 6" : "   ";
                f->WriteGameFile(game);
                if (i == 1) {
                    (void)::write(ready[1], "r", 1);
                    ::close(ready[1]);
                }
            }
        }
        ::close(ready[1]);
        char c = 0;
        ASSERT_EQ(::read(ready[0], &c, 1), 1);
        ::close(ready[0]);
        std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution<int>(0, 20000)(rng)));
        ::kill(pid, SIGKILL);
        int status = 0;
        ::waitpid(pid, &status, 0);

        const std::string now = Slurp(game);
        ASSERT_TRUE(now == a || now == b) << "round " << rounds << ": a mixed file of " << now.size() << " bytes";
        // What a kill leaves beside it is a hidden temporary, never the game.
        for (const std::string& name : Names(real.dir)) {
            if (name == "game.tsm") continue;
            ++temporaries;
            EXPECT_EQ(name.rfind(".~tessuma-", 0), 0u) << name;
        }
    }
    RecordProperty("temporaries_left_by_kills", temporaries);
    // The next save clears away what the killed ones left, and only that: a
    // temporary of a process still running is its save under way.
    const std::string live = Path(".~tessuma-" + std::to_string(::getpid()) + "-99999.tmp");
    std::ofstream(live) << "in progress";
    f->WriteGameFile(game);
    EXPECT_EQ(Names(real.dir), (std::set<std::string>{"game.tsm", fs::path(live).filename().string()}));
}

}  // namespace

// A page that doesn't fit the disk is no page: no file is left, and the
// caller is told, rather than handed a truncated PDF.
TEST_F(FaultsTest, APageThatDoesNotFitLeavesNoFile) {
    const std::string disk = Path("docs");
    ExpectClean(InChild([&]() -> std::string {
        if (auto why = PrivateTmpfs(disk, "size=16k"); !why.empty()) return why;
        qputenv("QT_QPA_PLATFORM", "offscreen");
        int argc = 1;
        char name[] = "disk_faults";
        char* argv[] = {name, nullptr};
        QGuiApplication app(argc, argv);
        // Noise does not compress: the page is far larger than the disk.
        QImage noise(256, 256, QImage::Format_RGB32);
        std::mt19937 random(7);
        for (int y = 0; y < noise.height(); ++y)
            for (int x = 0; x < noise.width(); ++x) noise.setPixel(x, y, random());
        const auto paint = [&](QPainter& p) { p.drawImage(QRect(0, 0, 640, 480), noise); };
        const QString pdf = QString::fromStdString(disk + "/page.pdf");
        CHILD_CHECK(!printing::WritePage(paint, pdf, QPageSize(QPageSize::A4)));
        CHILD_CHECK(Names(disk).empty());
        return "";
    }));
}
