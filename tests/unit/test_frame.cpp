// The window frame, the skin, help and printing where a scenario cannot
// look: the form at the moment of printing, a page that went to a file, a
// display that refuses its mode, and what a restart keeps.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "sim/World.h"

namespace {

const std::string kPuzzleState = "EC46G8912F72AIE3481IH3425F7H597F142CD26H5C79AG139B485F9F1537BH4287DAI63E3452H61GI";

struct FrameTest : ::testing::Test {
    World w;
    std::unique_ptr<Program> p;
    frmTessuma* f = nullptr;

    void SetUp() override { Start(); }
    void Start(Ports ports) {
        p = std::make_unique<Program>(ports);
        p->Main();
        f = p->MainForm.get();
    }
    void Start() { Start(w.MakePorts()); }
    void Deal() {
        f->BoardState = kPuzzleState;
        f->ShowBoardState();
    }
    std::string Setting(const std::string& section, const std::string& key) {
        return w.settings.Get("Tessuma", section, key);
    }
};

// What the printer saw of the form.
struct Page {
    int picture = 0;
    int sideNav = 0, options = 0, underscores = 0, frameButtons = 0, marks = 0, cells = 0;
    bool timer = true, score = true, level = true, tabs = true, checks = true, volume = true;
    bool donation = false, donationUnderscore = false;
};

Page Snapshot(const frmTessuma& f) {
    Page s;
    s.picture = f.Picture;
    for (const auto& b : f.cmdSideNav) s.sideNav += b.Visible;
    for (int i = 1; i <= 9; ++i) s.options += f.lblOption[static_cast<std::size_t>(i)].Visible;
    for (int i : {0, 1, 2, 3, 4, 5}) s.underscores += f.lblUnderscore[static_cast<std::size_t>(i)].Visible;
    for (const auto* b : {&f.cmdMinimize, &f.cmdMaximize, &f.cmdRestoreDown, &f.cmdClose}) s.frameButtons += b->Visible;
    for (const auto& l : f.lblViewPos) s.marks += l.Visible;
    for (const auto& c : f.txtCell) s.cells += c.Visible;
    s.timer = f.lblTimer.Visible;
    s.score = f.lblScore.Visible;
    s.level = f.lblDifficulty.Visible;
    s.tabs = f.cmdShowOptions.Visible || f.cmdHideOptions.Visible;
    s.checks = f.chkClickring.Visible || f.chkSkin.Visible || f.chkSounds.Visible;
    s.volume = f.picVolume.Visible;
    s.donation = f.lblOption[10].Visible;
    s.donationUnderscore = f.lblUnderscore[6].Visible;
    return s;
}

TEST_F(FrameTest, ThePageCarriesTheBoardAndTheDonationLabelOnly) {
    Deal();
    const int shownCells = Snapshot(*f).cells;
    ASSERT_GT(shownCells, 16);
    std::vector<Page> pages;
    w.printer.onPrint = [&] { pages.push_back(Snapshot(*f)); };
    f->cmdSideNav_Click(3);
    ASSERT_EQ(pages.size(), 1u);
    const Page& s = pages[0];
    EXPECT_EQ(s.picture, 102);
    EXPECT_EQ(s.sideNav, 0);
    EXPECT_EQ(s.options, 0);
    EXPECT_EQ(s.underscores, 0);
    EXPECT_EQ(s.frameButtons, 0);
    EXPECT_EQ(s.marks, 0);
    EXPECT_FALSE(s.timer);
    EXPECT_FALSE(s.score);
    EXPECT_FALSE(s.level);
    EXPECT_FALSE(s.tabs);
    EXPECT_FALSE(s.checks);
    EXPECT_FALSE(s.volume);
    EXPECT_TRUE(s.donation);
    EXPECT_TRUE(s.donationUnderscore);
    EXPECT_EQ(s.cells, shownCells);

    // Put back without memory, but for the window buttons: every mark label
    // shows, the buttons are as before (the restore button stays hidden).
    const Page after = Snapshot(*f);
    EXPECT_EQ(after.picture, 101);
    EXPECT_EQ(after.sideNav, 9);
    EXPECT_EQ(after.options, 9);
    EXPECT_EQ(after.marks, 243);
    EXPECT_EQ(after.frameButtons, 3);
    EXPECT_TRUE(after.timer && after.score && after.level && after.tabs && after.checks && after.volume);
    EXPECT_EQ(w.messages.count, 0);
}

TEST_F(FrameTest, ARefusedDisplayModeIsToldAndTheWindowIsMaximisedAnyway) {
    w.display.supported = false;
    f->cmdMaximize_Click();
    // The walk of the devices changes the last one twice, so its refusal
    // comes up twice.
    EXPECT_EQ(w.sysbox.count, 2);
    EXPECT_EQ(w.sysbox.lastText, "Mode not supported on Simulated Display");
    EXPECT_EQ(w.sysbox.lastTitle, "Error");
    EXPECT_EQ(w.sysbox.lastStyle, 4096);
    EXPECT_TRUE(f->cmdRestoreDown.Visible);
    EXPECT_EQ(f->Left, 0);
    EXPECT_EQ(Setting("ScreenPos", "Maximized"), "True");
    EXPECT_EQ(w.screen.width, 1024);
}

TEST_F(FrameTest, AGameClosedMaximisedStartsMaximisedFromTheModeBefore) {
    f->cmdMaximize_Click();
    ASSERT_EQ(w.screen.width, 640);
    f->cmdClose_Click();
    EXPECT_EQ(w.screen.width, 1024);
    Start();
    EXPECT_EQ(w.screen.width, 640);
    EXPECT_TRUE(f->cmdRestoreDown.Visible);
    EXPECT_EQ(f->SavedScreenWidth, 1024);
    EXPECT_EQ(f->SavedScreenHeight, 768);
    f->cmdRestoreDown_Click();
    EXPECT_EQ(w.screen.width, 1024);
    EXPECT_EQ(w.screen.height, 768);
}

TEST_F(FrameTest, APageWithoutAPictureKeepsTheOldOne) {
    std::int16_t help = 2;
    f->ShowFrame(help);
    f->lblHelpPages_Click(4);
    f->lblHelpPages_Click(12);
    EXPECT_EQ(f->picFrame[2].Picture, 205);
    EXPECT_EQ(f->LastHelpPage, 12);
    for (const auto& l : f->lblHelpPages) EXPECT_EQ(l.ForeColor, vb::kColorHinted);
    EXPECT_FALSE(f->lblSupport.Visible);
    // The keys bring it back into the book.
    f->picFrame_KeyUp(2, 39, 0);
    EXPECT_EQ(f->LastHelpPage, 0);
    f->lblHelpPages_Click(12);
    f->picFrame_KeyUp(2, 37, 0);
    EXPECT_EQ(f->LastHelpPage, 11);
    EXPECT_EQ(f->picFrame[2].Picture, 201);
}

}  // namespace
