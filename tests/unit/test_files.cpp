// Saved games on the disk: the exact text written, the atomic replacement
// (a failing write keeps the old file whole and leaves no temporary), a
// folder that can't be written, and the refusals of files that can't be a
// game, which leave the board as it was.

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "core/vb.h"
#include "dialogs/clsDIALOGS.h"
#include "StartedGame.h"
#include "fakes/World.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"

namespace fs = std::filesystem;

namespace {

const std::string kEasy =
    "8E6217C94B4GI356HA9136DHGE25FD1832G9C2879416E7I1562DC86HICB1547AC547IH2F47B8569A3";

std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream os;
    os << in.rdbuf();
    return os.str();
}

void WriteAll(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

int EntriesIn(const std::string& dir) {
    int n = 0;
    for (const auto& e : fs::directory_iterator(dir)) {
        (void)e;
        ++n;
    }
    return n;
}

// Runs `test` as an ordinary user, so that file permissions hold also when
// the tests run as root; true when it returned true.
bool AsOrdinaryUser(const std::function<bool()>& test) {
    if (::geteuid() != 0) return test();
    const pid_t child = ::fork();
    if (child < 0) return false;
    if (child == 0) {
        const bool dropped = ::setgid(65534) == 0 && ::setuid(65534) == 0;
        ::_exit(dropped && test() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

struct FilesTest : StartedGame {

    void SetUp() override {
        StartedGame::SetUp();
        Deal(kEasy);
    }
    void Deal(const std::string& state) {
        f->BoardState = state;
        f->BaseScore = 25000;
        f->lblDifficulty.Caption = "beginner";
        f->lblScore.Caption = "25000";
        f->ShowBoardState();
    }
    // A game in play: an entered 8 in cell 0, a mark, 100 seconds.
    void Play() {
        f->SetFocus(ControlRef{"txtCell", 0});
        f->PlayerTypes(0, "8");
        f->lblViewPos[6].Caption = "1 3";
        for (int i = 0; i < 100; ++i) f->tmrClock_Timer();
    }
    std::string Path(const std::string& rel) const { return w.Path(rel); }
};

TEST_F(FilesTest, FiveLinesEachEndedByCrLf) {
    Play();
    f->WriteGameFile(Path("game"));
    std::string marks(729, ' ');
    marks.replace(18, 3, "1 3");
    EXPECT_EQ(ReadAll(Path("game.tsm")),
              "Q" + kEasy.substr(1) + "\r\n24299\r\nbeginner\r\n100\r\n" + marks + "\r\n");
    EXPECT_FALSE(f->PuzzleDirty);
    EXPECT_TRUE(f->SuppressChange);
    EXPECT_EQ(w.messages.count, 0);
    EXPECT_EQ(EntriesIn(w.sandbox), 1);  // no temporary beside it

    // An empty path writes nothing and touches no flag.
    f->SuppressChange = false;
    f->PuzzleDirty = true;
    f->WriteGameFile("");
    EXPECT_FALSE(f->SuppressChange);
    EXPECT_TRUE(f->PuzzleDirty);
    EXPECT_EQ(EntriesIn(w.sandbox), 1);
}

TEST_F(FilesTest, ReplacingKeepsThePermissionsAndTheLinks) {
    WriteAll(Path("game.tsm"), "old");
    ::chmod(Path("game.tsm").c_str(), 0640);
    f->WriteGameFile(Path("game.tsm"));
    struct stat st{};
    ASSERT_EQ(::stat(Path("game.tsm").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0640u);
    EXPECT_EQ(ReadAll(Path("game.tsm")).substr(0, 81), kEasy);

    // A link stays a link; the file it points to gets the game.
    fs::create_directory(Path("real"));
    WriteAll(Path("real/target.tsm"), "old");
    fs::create_symlink(Path("real/target.tsm"), Path("link.tsm"));
    f->WriteGameFile(Path("link.tsm"));
    EXPECT_TRUE(fs::is_symlink(Path("link.tsm")));
    EXPECT_EQ(ReadAll(Path("real/target.tsm")).substr(0, 81), kEasy);
    EXPECT_EQ(w.messages.count, 0);
}

// A write that fails half-way (the file size limit of the process) must
// leave the old file whole and no temporary behind.
TEST_F(FilesTest, AFailingWriteKeepsTheOldFile) {
    const std::string old = "QE6217C94B4GI356HA9136DHGE25FD1832G9C2879416E7I1562DC86HICB1547AC547IH2F47B8569A3\r\n";
    WriteAll(Path("game.tsm"), old);
    f->PuzzleDirty = true;

    struct rlimit saved{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    auto* previous = ::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = saved;
    small.rlim_cur = 200;  // a game file is about 900 bytes
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    f->WriteGameFile(Path("game.tsm"));
    ::setrlimit(RLIMIT_FSIZE, &saved);
    ::signal(SIGXFSZ, previous);

    EXPECT_EQ(ReadAll(Path("game.tsm")), old);
    EXPECT_EQ(EntriesIn(w.sandbox), 1);
    EXPECT_EQ(w.messages.count, 1);
    EXPECT_EQ(w.messages.lastText, "That file no good.");
    EXPECT_EQ(w.messages.lastKind, "");
    EXPECT_TRUE(f->PuzzleDirty);
    EXPECT_TRUE(f->SuppressChange);
}

TEST_F(FilesTest, AReadOnlyFolderIsRefusedAndKeepsItsFile) {
    const std::string dir = Path("locked");
    fs::create_directory(dir);
    WriteAll(dir + "/game.tsm", "old");
    ::chmod(w.sandbox.c_str(), 0755);
    ::chmod((dir + "/game.tsm").c_str(), 0644);
    ::chmod(dir.c_str(), 0555);
    f->PuzzleDirty = true;

    const bool refused = AsOrdinaryUser([&] {
        f->WriteGameFile(dir + "/game.tsm");
        return w.messages.count == 1 && w.messages.lastText == "That file no good." && f->PuzzleDirty &&
               f->SuppressChange;
    });
    ::chmod(dir.c_str(), 0755);
    EXPECT_TRUE(refused);
    EXPECT_EQ(ReadAll(dir + "/game.tsm"), "old");
    EXPECT_EQ(EntriesIn(dir), 1);
}

TEST_F(FilesTest, AnUnreadableFileIsRefused) {
    WriteAll(Path("secret.tsm"), kEasy + "\r\n");
    ::chmod(w.sandbox.c_str(), 0755);
    ::chmod(Path("secret.tsm").c_str(), 0);
    const bool refused = AsOrdinaryUser([&] {
        f->LoadGameFile(Path("secret.tsm"));
        return w.messages.count == 1 && w.messages.lastText == "That file no good.";
    });
    EXPECT_TRUE(refused);
}

// Everything a refusal must leave as it was.
struct Snapshot {
    std::string board, cells, marks, timer, score, level, word;
    std::int32_t clock, base;
    bool dirty, perfect, suppress, running;
    explicit Snapshot(const frmTessuma& f)
        : board(f.BoardState), marks(f.GetViewPosText()), timer(f.lblTimer.Caption), score(f.lblScore.Caption),
          level(f.lblDifficulty.Caption), word(f.lblOption[8].Caption), clock(f.ClockSeconds), base(f.BaseScore),
          dirty(f.PuzzleDirty), perfect(f.PerfectGame), suppress(f.SuppressChange), running(f.tmrClock.Enabled) {
        for (const TextField& c : f.txtCell)
            cells += c.Text + (c.Visible ? "v" : "h") + (c.Locked ? "l" : "u") + std::to_string(c.ForeColor) + ";";
    }
    bool operator==(const Snapshot&) const = default;
};

TEST_F(FilesTest, FilesThatCantBeAGameLeaveTheBoardAsItWas) {
    Play();
    f->PuzzleDirty = false;
    const Snapshot before(*f);

    fs::create_directory(Path("folder.tsm"));
    WriteAll(Path("empty.tsm"), "");
    WriteAll(Path("short.tsm"), kEasy.substr(0, 80) + "\r\n1\r\nbeginner\r\n5\r\n");
    ASSERT_EQ(::mkfifo(Path("pipe.tsm").c_str(), 0644), 0);
    {
        // Over a megabyte: refused without reading it whole.
        std::ofstream big(Path("big.tsm"), std::ios::binary);
        big << kEasy << "\r\n";
        big << std::string(1024 * 1024, 'x');
    }
    int expected = 0;
    for (const char* name : {"missing.tsm", "folder.tsm", "empty.tsm", "short.tsm", "pipe.tsm", "big.tsm"}) {
        f->LoadGameFile(Path(name));
        EXPECT_EQ(w.messages.count, ++expected) << name;
        EXPECT_EQ(w.messages.lastText, "That file no good.") << name;
        EXPECT_TRUE(Snapshot(*f) == before) << name;
    }
    f->LoadGameFile("");
    EXPECT_EQ(w.messages.count, ++expected);
    EXPECT_TRUE(Snapshot(*f) == before);

    // A path ending in a separator does nothing, and says nothing.
    f->LoadGameFile(w.sandbox + "/");
    f->LoadGameFile("C:\\Games\\");
    EXPECT_EQ(w.messages.count, expected);
    EXPECT_TRUE(Snapshot(*f) == before);

    // Just under the limit it is a game whose line 1 is taken whole.
    WriteAll(Path("large.tsm"), kEasy + std::string(1000, 'x') + "\r\n");
    f->LoadGameFile(Path("large.tsm"));
    EXPECT_EQ(w.messages.count, expected);
    EXPECT_EQ(f->BoardState.size(), 1081u);
    EXPECT_EQ(f->txtCell[79].Text, "1");
}

// What the scenarios can't see: the request the game makes and the style
// and title of its overwrite question.
TEST_F(FilesTest, TheGamesRequestAndItsOverwriteQuestion) {
    p.gDialogs->strInitialDir("/somewhere/");
    p.gDialogs->blnAllowMultipleFileSelect(true);
    WriteAll(Path("saved.tsm"), "old");
    w.dialogs.answers.push_back("saved.tsm");
    w.sysbox.answers.push_back(ISystemMessageBox::No);
    f->SaveGame();
    const FileDialogRequest& save = w.dialogs.requests.back();
    EXPECT_EQ(save.kind, FileDialogRequest::Save);
    EXPECT_EQ(save.initialDir, w.sandbox + "/");
    EXPECT_FALSE(save.multiSelect);
    ASSERT_EQ(save.filters.size(), 1u);
    EXPECT_EQ(save.filters[0], std::make_pair(std::string("Tessuma Saved Games (*.tsm)"), std::string("*.tsm")));
    EXPECT_EQ(w.sysbox.lastTitle, "Save As");
    EXPECT_EQ(w.sysbox.lastStyle, 48 | 4);
    EXPECT_EQ(ReadAll(Path("saved.tsm")), "old");

    p.gDialogs->blnAllowMultipleFileSelect(true);
    f->OpenGame();
    EXPECT_EQ(w.dialogs.requests.back().flags, 0x8140Cu);
    EXPECT_FALSE(w.dialogs.requests.back().multiSelect);
}

}  // namespace
