// The common dialogs: properties and their defaults, the filter string, the
// failure codes and their report, the name buffer, multiple selection, the
// memory of the last folders and the profile file that keeps it.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "forms/clsDIALOGS.h"
#include "sim/World.h"

using namespace std::string_literals;

namespace {

FileDialogResult Chosen(std::vector<std::string> paths, int filter = 1) {
    FileDialogResult r;
    r.ok = true;
    r.paths = std::move(paths);
    r.filterIndex = filter;
    return r;
}

FileDialogResult Failed(int code) {
    FileDialogResult r;
    r.errorCode = code;
    return r;
}

struct DialogsTest : ::testing::Test {
    World w;
    std::string ini = w.Path("tessuma.ini");
    std::unique_ptr<clsDIALOGS> d;

    void SetUp() override { Make(); }
    void Make() {
        d.reset();
        d = std::make_unique<clsDIALOGS>(&w.dialogs, &w.sysbox, w.files, w.sandbox, ini);
    }
    const FileDialogRequest& LastRequest() const { return w.dialogs.requests.back(); }
};

TEST_F(DialogsTest, FilterBarsBecomeNulsEndedByTwo) {
    d->strFilter("Tessuma Saved Games (*.tsm)|*.tsm");
    EXPECT_EQ(d->strFilterRaw(), "Tessuma Saved Games (*.tsm)\0*.tsm\0\0"s);
    // Already ended by two NULs: taken as it stands.
    d->strFilter("A\0*.a\0\0"s);
    EXPECT_EQ(d->strFilterRaw(), "A\0*.a\0\0"s);
    d->strFilter("A|*.a||");
    EXPECT_EQ(d->strFilterRaw(), "A\0*.a\0\0"s);
    // One NUL at the end is not enough: two more follow.
    d->strFilter("A|*.a|");
    EXPECT_EQ(d->strFilterRaw(), "A\0*.a\0\0\0"s);
    d->strFilter("");
    EXPECT_EQ(d->strFilterRaw(), "\0\0"s);

    // The dialog gets the pairs up to the first empty part; a lone
    // description without a pattern is dropped.
    d->strFilter("Games (*.tsm)|*.tsm|Text|*.txt;*.text");
    d->strGetOpenFileName("");
    ASSERT_EQ(LastRequest().filters.size(), 2u);
    EXPECT_EQ(LastRequest().filters[1], std::make_pair("Text"s, "*.txt;*.text"s));
    EXPECT_EQ(clsDIALOGS::FilterPairs("A\0a\0\0B\0b\0\0"s).size(), 1u);
    EXPECT_EQ(clsDIALOGS::FilterPairs("A\0a\0B\0\0"s).size(), 1u);
}

TEST_F(DialogsTest, CancelLeavesEverythingAndShowsNothing) {
    w.dialogs.results.push_back(Chosen({"games/a.tsm"}, 2));
    ASSERT_EQ(d->strGetOpenFileName(""), w.sandbox + "/games/a.tsm");
    const std::string before = w.files.Get(ini).value_or("");

    w.dialogs.answers.push_back(std::nullopt);
    EXPECT_EQ(d->strGetOpenFileName(""), "");
    EXPECT_EQ(d->lngDialogError(), 0);
    EXPECT_EQ(d->strDialogError(), "General Codes Failure");
    EXPECT_EQ(w.sysbox.count, 0);
    EXPECT_EQ(d->strLastOpenFile(), w.sandbox + "/games/a.tsm");
    EXPECT_EQ(d->strLastOpenFolder(), w.sandbox + "/games/");
    EXPECT_EQ(d->lngLastOpenFilter(), 2);
    EXPECT_EQ(w.files.Get(ini).value_or(""), before);

    w.dialogs.answers.push_back(std::nullopt);
    EXPECT_EQ(d->strGetSaveFileName(""), "");
    EXPECT_EQ(d->strLastSaveFile(), "");
    EXPECT_EQ(d->strLastSaveFolder(), w.sandbox + "/");
    EXPECT_EQ(w.sysbox.count, 0);
}

TEST_F(DialogsTest, OtherCodesAreReportedUnlessSwitchedOff) {
    w.dialogs.results.push_back(Failed(12290));
    EXPECT_EQ(d->strGetSaveFileName(""), "");
    EXPECT_EQ(d->lngDialogError(), 12290);
    EXPECT_EQ(d->strDialogError(), "Invalid File Name");
    EXPECT_EQ(w.sysbox.count, 1);
    EXPECT_EQ(w.sysbox.lastText, "Invalid File Name");
    EXPECT_EQ(w.sysbox.lastTitle, "DIALOG ERROR");
    EXPECT_EQ(w.sysbox.lastStyle, 16);

    w.dialogs.results.push_back(Failed(77));
    d->strGetOpenFileName("");
    EXPECT_EQ(w.sysbox.lastText, "Unknown Error");

    d->blnShowErrorMessages(false);
    w.dialogs.results.push_back(Failed(2));
    d->strGetOpenFileName("");
    EXPECT_EQ(d->strDialogError(), "Initialization Failure");
    EXPECT_EQ(w.sysbox.count, 2);
}

TEST_F(DialogsTest, NameBufferHoldsTheMaximumAndANul) {
    d->lngMaxFileNameBuffer(20);
    const std::string fits = "/" + std::string(20, 'a');  // 21 characters and the NUL: 22
    w.dialogs.results.push_back(Chosen({fits}));
    EXPECT_EQ(d->strGetOpenFileName(""), fits);
    EXPECT_EQ(LastRequest().maxFileNameBuffer, 22);

    const std::string tooLong = "/" + std::string(21, 'b');
    w.dialogs.results.push_back(Chosen({tooLong}));
    EXPECT_EQ(d->strGetOpenFileName(""), "");
    EXPECT_EQ(d->lngDialogError(), 12291);
    EXPECT_EQ(w.sysbox.lastText, "File Name/Title Buffer Too Small");
    EXPECT_EQ(w.sysbox.lastTitle, "DIALOG ERROR");
    EXPECT_EQ(d->strLastOpenFile(), fits);  // the last good one stays

    // With multiple selection the buffer is 2048 blanks whatever the maximum.
    d->blnAllowMultipleFileSelect(true);
    w.dialogs.results.push_back(Chosen({tooLong}));
    EXPECT_EQ(d->strGetOpenFileName(""), tooLong);
    EXPECT_EQ(LastRequest().maxFileNameBuffer, 2050);
}

TEST_F(DialogsTest, MultipleSelectionSplitsFolderAndNames) {
    d->blnAllowMultipleFileSelect(true);
    w.dialogs.results.push_back(Chosen({"/games/a.tsm", "/games/b.tsm", "/games/c d.tsm"}));
    EXPECT_EQ(d->strGetOpenFileName(""), "/games/");
    EXPECT_EQ(LastRequest().flags, 0x8160Cu);
    EXPECT_TRUE(LastRequest().multiSelect);
    EXPECT_EQ(d->lngNumFilesSelected(), 3);
    EXPECT_EQ(d->fstrReturnSingleFileName(0), "a.tsm");
    EXPECT_EQ(d->fstrReturnSingleFileName(1), "b.tsm");
    EXPECT_EQ(d->fstrReturnSingleFileName(2), "c d.tsm");
    EXPECT_EQ(d->fstrReturnSingleFileName(3), "");
    EXPECT_EQ(d->fstrReturnSingleFileName(-1), "");
    EXPECT_EQ(d->fstrReturnSingleFileName(255), "");
    EXPECT_EQ(d->strLastOpenFolder(), "/games/");
    EXPECT_EQ(d->strInitialDir(), "/games/");

    // A single name in a multiple selection is an ordinary one.
    w.dialogs.results.push_back(Chosen({"/other/x.tsm"}));
    EXPECT_EQ(d->strGetOpenFileName(""), "/other/x.tsm");
    EXPECT_EQ(d->lngNumFilesSelected(), 1);
    EXPECT_EQ(d->fstrReturnSingleFileName(0), "x.tsm");
    EXPECT_EQ(d->fstrReturnSingleFileName(1), "");
    EXPECT_EQ(d->strLastOpenFolder(), "/other/");

    // The array holds 255 names; a larger choice keeps the first 255.
    std::vector<std::string> many;
    for (int i = 0; i < 300; ++i) many.push_back("/m/" + std::to_string(i));
    w.dialogs.results.push_back(Chosen(many));
    EXPECT_EQ(d->strGetOpenFileName(""), "/m/");
    EXPECT_EQ(d->lngNumFilesSelected(), 255);
    EXPECT_EQ(d->fstrReturnSingleFileName(254), "254");

    // Folder, names and NULs must fit in 2050 characters.
    std::vector<std::string> big;
    for (int i = 0; i < 30; ++i)
        big.push_back("/big/" + std::string(70, static_cast<char>('a' + i % 26)) + std::to_string(i));
    w.dialogs.results.push_back(Chosen(big));
    EXPECT_EQ(d->strGetOpenFileName(""), "");
    EXPECT_EQ(d->lngDialogError(), 12291);
    EXPECT_EQ(d->lngNumFilesSelected(), 255);  // the last good selection stays
}

TEST_F(DialogsTest, TitlesFlagsAndKindsOfTheThreeFileDialogs) {
    d->strGetOpenFileName("ignored.tsm");
    EXPECT_EQ(LastRequest().kind, FileDialogRequest::Open);
    EXPECT_EQ(LastRequest().title, "Select File(s) To Open");
    EXPECT_EQ(LastRequest().flags, 0x8140Cu);
    d->strGetNewFileName("");
    EXPECT_EQ(LastRequest().kind, FileDialogRequest::OpenNew);
    EXPECT_EQ(LastRequest().title, "Select File To Open");
    EXPECT_EQ(LastRequest().flags, 0x8040Cu);
    d->strGetSaveFileName("");
    EXPECT_EQ(LastRequest().kind, FileDialogRequest::Save);
    EXPECT_EQ(LastRequest().title, "Save File");
    EXPECT_EQ(LastRequest().flags, 0x8040Cu);
    EXPECT_FALSE(LastRequest().createPrompt);
    d->blnCreatePrompt(true);
    d->strTitle("Save Your Tessuma Game");
    d->strGetSaveFileName("");
    EXPECT_EQ(LastRequest().title, "Save Your Tessuma Game");
    EXPECT_EQ(LastRequest().flags, 0x8240Cu);
    EXPECT_TRUE(LastRequest().createPrompt);
    // A save dialog never takes several names.
    d->blnAllowMultipleFileSelect(true);
    d->strGetSaveFileName("");
    EXPECT_FALSE(LastRequest().multiSelect);
    EXPECT_EQ(w.dialogs.count, 5);
}

TEST_F(DialogsTest, LastFolderOfTheKindIsWhereTheNextDialogStarts) {
    // The game's use: the starting folder cleared before each dialog.
    auto open = [&](std::optional<std::string> answer) {
        d->strInitialDir("");
        w.dialogs.answers.push_back(answer);
        return d->strGetOpenFileName("");
    };
    auto save = [&](std::optional<std::string> answer) {
        d->strInitialDir("");
        w.dialogs.answers.push_back(answer);
        return d->strGetSaveFileName("");
    };
    open("/games/a.tsm");
    EXPECT_EQ(d->strInitialDir(), "/games/");
    save("/saves/b.tsm");
    EXPECT_EQ(LastRequest().initialDir, w.sandbox + "/");
    EXPECT_EQ(d->strInitialDir(), "/saves/");
    open(std::nullopt);
    EXPECT_EQ(LastRequest().initialDir, "/games/");
    EXPECT_EQ(d->strInitialDir(), "/games/");  // also after a cancel
    save(std::nullopt);
    EXPECT_EQ(LastRequest().initialDir, "/saves/");

    // A starting folder that isn't empty wins over the last folders.
    d->strInitialDir("/chosen/");
    w.dialogs.answers.push_back(std::nullopt);
    d->strGetOpenFileName("");
    EXPECT_EQ(LastRequest().initialDir, "/chosen/");
    EXPECT_EQ(d->strInitialDir(), "/games/");

    // The filter chosen is the one offered next time, by kind.
    d->strInitialDir("");
    w.dialogs.results.push_back(Chosen({"/games/c.txt"}, 3));
    d->strGetOpenFileName("");
    EXPECT_EQ(d->lngLastOpenFilter(), 3);
    w.dialogs.answers.push_back(std::nullopt);
    d->strGetOpenFileName("");
    EXPECT_EQ(LastRequest().filterIndex, 3);
    w.dialogs.answers.push_back(std::nullopt);
    d->strGetSaveFileName("");
    EXPECT_EQ(LastRequest().filterIndex, 1);
}

TEST_F(DialogsTest, ProfileRoundTripKeepsOtherSectionsAndKeys) {
    d.reset();  // its end would write the keys over the file below
    w.files.Put(ini, "; mine\n[Other]\nLastOpenDir=elsewhere\n[DIALOGS]\nMine=kept\n\n[Tail]\nx=1\n");
    Make();
    w.dialogs.results.push_back(Chosen({"/games/a.tsm"}, 2));
    d->strGetOpenFileName("");
    w.dialogs.results.push_back(Chosen({"/saves/b c.tsm"}, 1));
    d->strGetSaveFileName("");
    d.reset();  // the end of the object writes too

    const std::string text = w.files.Get(ini).value_or("");
    EXPECT_NE(text.find("; mine\n[Other]\nLastOpenDir=elsewhere\n[DIALOGS]\nMine=kept\n"), std::string::npos) << text;
    EXPECT_NE(text.find("LastOpenFilter=2\n"), std::string::npos) << text;
    EXPECT_NE(text.find("LastSaveFile=/saves/b c.tsm\n"), std::string::npos) << text;
    EXPECT_NE(text.find("InitialDir=/saves/\n"), std::string::npos) << text;
    EXPECT_NE(text.find("[Tail]\nx=1\n"), std::string::npos) << text;
    EXPECT_LT(text.find("InitialDir="), text.find("[Tail]"));

    Make();
    EXPECT_EQ(d->lngLastOpenFilter(), 2);
    EXPECT_EQ(d->lngLastSaveFilter(), 1);
    EXPECT_EQ(d->strLastOpenFile(), "/games/a.tsm");
    EXPECT_EQ(d->strLastSaveFile(), "/saves/b c.tsm");
    EXPECT_EQ(d->strLastOpenFolder(), "/games/");
    EXPECT_EQ(d->strLastSaveFolder(), "/saves/");
    EXPECT_EQ(d->strInitialDir(), "/saves/");
}

TEST_F(DialogsTest, WithoutPersistenceNothingIsWritten) {
    d->blnUsePersistence(false);
    w.dialogs.answers.push_back("/games/a.tsm");
    d->strGetOpenFileName("");
    d.reset();
    EXPECT_FALSE(w.files.IsFile(ini));

    // A profile that is no file of ours (a folder) is left alone.
    w.files.folders.insert(w.files.Full(ini));
    Make();
    w.dialogs.answers.push_back("/games/a.tsm");
    EXPECT_EQ(d->strGetOpenFileName(""), "/games/a.tsm");
    EXPECT_FALSE(d->SaveProfile());
    d.reset();
    EXPECT_TRUE(w.files.IsFolder(ini));
}

TEST_F(DialogsTest, RunTimeFaultsAskAbortRetryIgnore) {
    // Abort: the function is left, nothing remembered.
    w.dialogs.faults.push_back("boom");
    w.sysbox.answers.push_back(ISystemMessageBox::Abort);
    EXPECT_EQ(d->strGetOpenFileName(""), "");
    EXPECT_EQ(d->strDialogError(), "Error #:5\r\nboom");
    EXPECT_EQ(w.sysbox.lastTitle, "GET_OPEN_FILE_NAME_ERROR");
    EXPECT_EQ(w.sysbox.lastStyle, 2 | 16);
    EXPECT_EQ(w.dialogs.count, 1);

    // Retry: the dialog runs again and its answer counts.
    w.dialogs.faults.push_back("again");
    w.sysbox.answers.push_back(ISystemMessageBox::Retry);
    w.dialogs.answers.push_back("/saves/x.tsm");
    EXPECT_EQ(d->strGetSaveFileName(""), "/saves/x.tsm");
    EXPECT_EQ(w.sysbox.lastTitle, "GET_SAVE_FILE_NAME_ERROR");
    EXPECT_EQ(w.dialogs.count, 3);
    EXPECT_EQ(d->strLastSaveFolder(), "/saves/");

    // Ignore: goes on after the failed step, with no name.
    w.dialogs.faults.push_back("ignored");
    w.sysbox.answers.push_back(ISystemMessageBox::Ignore);
    EXPECT_EQ(d->strGetSaveFileName(""), "");
    EXPECT_EQ(d->strDialogError(), "Error #:5\r\nignored");
    EXPECT_EQ(d->strLastSaveFile(), "/saves/x.tsm");

    // Without messages the function is simply left.
    d->blnShowErrorMessages(false);
    const int boxes = w.sysbox.count;
    w.dialogs.faults.push_back("quiet");
    EXPECT_EQ(d->lngChooseColor(), 0xC0C0C0);
    EXPECT_EQ(d->strDialogError(), "Error #:5\r\nquiet");
    EXPECT_EQ(w.sysbox.count, boxes);

    d->blnShowErrorMessages(true);
    w.dialogs.faults.push_back("font");
    EXPECT_FALSE(d->blnChooseFont());
    EXPECT_EQ(w.sysbox.lastTitle, "CHOOSE_FONT_ERROR");
    w.dialogs.faults.push_back("colour");
    d->lngChooseColor();
    EXPECT_EQ(w.sysbox.lastTitle, "CHOOSE COLOR ERROR");
}

TEST(DialogsWithoutHost, EveryOperationFailsCleanly) {
    World w;
    FakeSysBox box;
    clsDIALOGS d(nullptr, &box, w.files, w.sandbox, w.Path("tessuma.ini"));
    EXPECT_EQ(d.strGetOpenFileName(""), "");
    EXPECT_EQ(d.lngDialogError(), -1);
    EXPECT_EQ(box.lastText, "Dialog Failure");
    EXPECT_EQ(d.strInitialDir(), w.sandbox + "/");
    EXPECT_FALSE(d.blnChooseFont());
    EXPECT_FALSE(d.blnPageSetup());
    EXPECT_FALSE(d.blnPrintDialog());
    EXPECT_EQ(d.fstrBrowseForFolder(), "");
}

}  // namespace
