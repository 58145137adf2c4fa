// The update check over version files of every shape, the addresses the
// download link accepts, and the life of the small update window.

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "BuildConfig.h"
#include "StartedGame.h"
#include "fakes/World.h"
#include "forms/frmTessuma.h"
#include "forms/frmUpdate.h"
#include "forms/modMain.h"

namespace {

const std::string kNewest = "You have newest\r\nTessuma Sudoku.";
const std::string kNoConnect = std::string("No can connect.\r\nPlease try later or email to\r\n") +
                               TESSUMA_SUPPORT_MAIL + "\r\nif problem persist.";

struct UpdateTest : StartedGame {
    // Runs a check over a version file with this content; true when the
    // update window came up.
    bool Check(const std::string& content) {
        w.download.answers.push_back(content);
        if (p.UpdateForm) p.UpdateForm->Visible = false;
        f->CheckForUpdate();
        return p.UpdateForm && p.UpdateForm->Visible;
    }
};

TEST_F(UpdateTest, TheVersionIsComparedAsANumberOfTenths) {
    ASSERT_EQ(TESSUMA_VERSION_MAJOR, 2);
    ASSERT_EQ(TESSUMA_VERSION_MINOR, 0);
    const struct {
        const char* file;
        bool newer;
    } cases[] = {
        {"20,u\r\n", false},     {"21,u\r\n", true},     {"19,u\r\n", false},  {"abc,u\r\n", false},
        {"20.5,u\r\n", true},    {"21abc,u\r\n", true},  {" 21 ,u\r\n", true}, {"-30,u\r\n", false},
        {"\"21\",u\r\n", true},  {",u\r\n", false},      {"200,u", true},      {"20.0001,u", true},
        {"21\r\nu\r\n", true},   {"21\nu\n", true},      {"21\ru", true},
    };
    for (const auto& c : cases) {
        const int before = w.messages.count;
        EXPECT_EQ(Check(c.file), c.newer) << c.file;
        EXPECT_EQ(w.messages.count, before + (c.newer ? 0 : 1)) << c.file;
        if (!c.newer) {
            EXPECT_EQ(w.messages.lastText, kNewest) << c.file;
        }
        EXPECT_EQ(p.UpdateUrl, "u") << c.file;
        EXPECT_FALSE(w.files.IsFile("tessver.txt")) << c.file;
    }
}

TEST_F(UpdateTest, FieldsEndAtCommaOrLineEndQuotedOnesAtTheirQuote) {
    const struct {
        const char* file;
        const char* url;
    } cases[] = {
        {"21,http://a.example/x\r\n", "http://a.example/x"},
        {"21, http://a.example/x  \r\nmore,lines\r\n", "http://a.example/x"},
        {"21,\"http://a.example/x,y z\"\r\n", "http://a.example/x,y z"},
        {"21,\"http://a.example/q\" tail,next\r\n", "http://a.example/q"},
        {"21,\"http://a.example/open", "http://a.example/open"},
        {"21,http://a.example/1,http://a.example/2\r\n", "http://a.example/1"},
        {"21,\r\n", ""},
    };
    for (const auto& c : cases) {
        Check(c.file);
        EXPECT_EQ(p.UpdateUrl, c.url) << c.file;
    }
}

TEST_F(UpdateTest, AFileWithoutTwoFieldsIsRefusedAndChangesNothing) {
    Check("20,http://kept.example/\r\n");
    ASSERT_EQ(p.UpdateUrl, "http://kept.example/");
    for (const char* file : {"", "21", "21\r\n", "   ", "\"21\"", "21\r\n   "}) {
        const int before = w.messages.count;
        EXPECT_FALSE(Check(file)) << file;
        EXPECT_EQ(w.messages.count, before + 1) << file;
        EXPECT_EQ(w.messages.lastText, kNoConnect) << file;
        EXPECT_EQ(p.UpdateUrl, "http://kept.example/") << file;
        EXPECT_FALSE(w.files.IsFile("tessver.txt")) << file;
    }
}

// A downloader that reports success without having written anything.
class EmptyHandedDownloader : public IDownloader {
public:
    bool Download(const std::string&, const std::string&) override { return true; }
};

TEST(UpdateCheck, ADownloadThatLeftNoFileIsTheFailureNotice) {
    World w;
    EmptyHandedDownloader none;
    Ports ports = w.MakePorts();
    ports.download = &none;
    Program p(ports);
    p.Main();
    p.MainForm->CheckForUpdate();
    EXPECT_EQ(w.messages.lastText, kNoConnect);
    EXPECT_FALSE(p.UpdateForm && p.UpdateForm->Visible);
}

TEST_F(UpdateTest, TheVersionFileReplacesAnOldOneAndGoes) {
    w.files.Put("tessver.txt", "99,http://stale.example/\r\n");
    EXPECT_FALSE(Check("20,http://fresh.example/\r\n"));
    EXPECT_EQ(p.UpdateUrl, "http://fresh.example/");
    EXPECT_FALSE(w.files.IsFile("tessver.txt"));
    // A failed download never reads a file left from before.
    w.files.Put("tessver.txt", "99,http://stale.example/\r\n");
    f->CheckForUpdate();
    EXPECT_EQ(w.messages.lastText, kNoConnect);
    EXPECT_EQ(p.UpdateUrl, "http://fresh.example/");
    EXPECT_EQ(w.download.lastUrl, TESSUMA_VERSION_URL);
}

TEST_F(UpdateTest, DownloadFileTellsOnlyYesOrNo) {
    bool ok = true;
    f->DownloadFile("http://x.example/v", w.Path("v.txt"), ok);
    EXPECT_FALSE(ok);
    w.download.answers.push_back("21,u");
    f->DownloadFile("http://x.example/v", w.Path("v.txt"), ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(w.download.lastUrl, "http://x.example/v");
    Ports ports = w.MakePorts();
    ports.download = nullptr;
    Program q(ports);
    q.Main();
    q.MainForm->DownloadFile("http://x.example/v", w.Path("v.txt"), ok);
    EXPECT_FALSE(ok);
}

TEST(UpdateWindow, OnlyWebAddressesAreHandedOn) {
    for (const char* good : {"http://a.example/x.exe", "https://a.example", "HTTPS://A.example/B", "http://a"})
        EXPECT_TRUE(frmUpdate::IsWebAddress(good)) << good;
    for (const char* bad :
         {"", "http://", "https://", "ftp://a.example/x", "file:///etc/passwd", "mailto:a@b.example", "c:\\setup.exe",
          "/usr/bin/xterm", "javascript:alert(1)", " http://a.example", "http:///a", "http://a.example/x y",
          "http://a.example/\n", "httpx://a.example"})
        EXPECT_FALSE(frmUpdate::IsWebAddress(bad)) << bad;
}

}  // namespace
