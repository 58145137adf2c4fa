// Running scenarios: the set-up commands fill the world's answer queues, the
// queries print and compare, and a malformed line stops everything.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "scenario/Runtime.h"
#include "scenario/Scenario.h"

namespace {

struct Result {
    int status = 0;
    std::string out;
};

Result RunText(const std::string& text, const std::function<void(scenario::Runtime&)>& inspect = nullptr) {
    std::ostringstream out;
    Result r;
    r.status = inspect ? scenario::Run(text, out, inspect) : scenario::Run(text, out);
    r.out = out.str();
    return r;
}

}  // namespace

TEST(ScenarioRun, SetUpCommandsQueueTheirAnswersInOrder) {
    bool inspected = false;
    const auto r = RunText(
        "rnd 0.5 0 .25\n"
        "menu mnuDifficulty 2\nmenu none\nmenu mnuSolvePuzzle\n"
        "dialog \"saves/a.tsm\"\ndialog cancel\ndialog \"cancel\"\ndialog <sandbox>/b.tsm\n"
        "sysbox no\nsysbox ok\nsysbox yes\n"
        "download \"21,http://x\"\ndownload fail\ndownload \"fail\"\n"
        "answer keys 13 89\nanswer name \"Ann Lee\"\nanswer close\n"
        "cmdline \"<sandbox>/my game.tsm\"\n",
        [&](scenario::Runtime& rt) {
            inspected = true;
            const World& w = rt.world;
            EXPECT_EQ(std::vector<float>(w.random.queued.begin(), w.random.queued.end()),
                      (std::vector<float>{0.5f, 0.0f, 0.25f}));
            ASSERT_EQ(w.popups.answers.size(), 3u);
            EXPECT_EQ(w.popups.answers[0].item, "mnuDifficulty");
            EXPECT_EQ(w.popups.answers[0].index, 2);
            EXPECT_TRUE(w.popups.answers[1].none);
            EXPECT_EQ(w.popups.answers[2].item, "mnuSolvePuzzle");
            EXPECT_EQ(w.popups.answers[2].index, -1);
            ASSERT_EQ(w.dialogs.answers.size(), 4u);
            EXPECT_EQ(w.dialogs.answers[0], std::optional<std::string>("saves/a.tsm"));
            EXPECT_FALSE(w.dialogs.answers[1]);
            EXPECT_EQ(w.dialogs.answers[2], std::optional<std::string>("cancel"));
            EXPECT_EQ(w.dialogs.answers[3], std::optional<std::string>(w.sandbox + "/b.tsm"));
            EXPECT_EQ(std::vector<int>(w.sysbox.answers.begin(), w.sysbox.answers.end()), (std::vector<int>{7, 1, 6}));
            ASSERT_EQ(w.download.answers.size(), 3u);
            EXPECT_EQ(w.download.answers[0], std::optional<std::string>("21,http://x"));
            EXPECT_FALSE(w.download.answers[1]);
            EXPECT_EQ(w.download.answers[2], std::optional<std::string>("fail"));
            ASSERT_EQ(w.messages.answers.size(), 3u);
            EXPECT_EQ(w.messages.answers[0].kind, MessageAnswer::Keys);
            EXPECT_EQ(w.messages.answers[0].keys, (std::vector<int>{13, 89}));
            EXPECT_EQ(w.messages.answers[1].kind, MessageAnswer::Name);
            EXPECT_EQ(w.messages.answers[1].text, "Ann Lee");
            EXPECT_EQ(w.messages.answers[2].kind, MessageAnswer::Close);
            EXPECT_EQ(w.commandLine, w.sandbox + "/my game.tsm");
        });
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_TRUE(inspected);
}

TEST(ScenarioRun, TheProgramRunsInsideItsOwnSandbox) {
    std::string sandbox;
    const auto before = std::filesystem::current_path();
    const auto r = RunText("file a.txt \"x\"\n", [&](scenario::Runtime& rt) {
        sandbox = rt.world.sandbox;
        EXPECT_EQ(std::filesystem::current_path(), std::filesystem::path(sandbox));
        EXPECT_TRUE(std::filesystem::exists("a.txt"));
    });
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(std::filesystem::current_path(), before);
    EXPECT_FALSE(std::filesystem::exists(sandbox)) << "the sandbox is removed after the run";
}

TEST(ScenarioRun, FailedExpectationsAreReportedAndTheRunGoesOn) {
    const auto r = RunText(
        "setting Skin \"1\"\n"
        "expect Setting(Skin) \"0\"\n"
        "# a comment\n"
        "expect HasSetting(Skin) False\n"
        "file a.txt \"x\\r\\ny\"\n"
        "expect File(a.txt) \"x\\ny\"\n"
        "print Setting(Skin)\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out,
              "FAIL line 2: Setting(Skin) is \"1\", expected \"0\"\n"
              "FAIL line 4: HasSetting(Skin) is \"True\", expected \"False\"\n"
              "FAIL line 6: File(a.txt) is \"x\\r\\ny\", expected \"x\\ny\"\n"
              "1\n");
}

TEST(ScenarioRun, AMalformedLineStopsTheWholeScenarioBeforeItRuns) {
    const auto r = RunText("print DisplayMode\nfile a.txt \"x\"\n\nprint Nowhere\nprint DisplayMode\n");
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "error line 4: unknown path \"Nowhere\"\n");
}

TEST(ScenarioRun, AnEmptyScenarioHolds) {
    EXPECT_EQ(RunText("").status, 0);
    EXPECT_EQ(RunText("# nothing\n\n   \n").status, 0);
}
