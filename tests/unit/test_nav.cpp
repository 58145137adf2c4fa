// Side navigation and the Alt keys: the mode switch of the side column,
// the access keys of the twenty hidden buttons, and the cases a scenario
// cannot reach.

#include <gtest/gtest.h>

#include <string>

#include "BuildConfig.h"
#include "StartedGame.h"
#include "core/vb.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "sim/World.h"

namespace {

const std::string kPuzzleState = "EC46G8912F72AIE3481IH3425F7H597F142CD26H5C79AG139B485F9F1537BH4287DAI63E3452H61GI";

struct NavTest : StartedGame {
    void SetUp() override {
        StartedGame::SetUp();
        Listen();
    }
    std::string SideNav() {
        std::string s;
        for (const auto& b : f->cmdSideNav) s += b.Visible ? '1' : '0';
        return s;
    }
    // Everything a dead key could have done.
    int Traces() {
        return static_cast<int>(w.sounds.played.size() + w.popups.opened.size() + w.shell.targets.size()) +
               w.messages.count + w.dialogs.count + w.printer.count;
    }
};

TEST_F(NavTest, KeysFollowTheCaptionsAndSkipAHiddenOrDisabledButton) {
    f->PressAltKey('d');
    EXPECT_EQ(w.shell.targets, (std::vector<std::string>{TESSUMA_DONATE_URL}));

    f->cmdHiddenDonate.Visible = false;
    EXPECT_TRUE(f->PressAltKey('D'));
    f->cmdHiddenDonate.Visible = true;
    f->cmdHiddenDonate.Enabled = false;
    EXPECT_TRUE(f->PressAltKey('D'));
    EXPECT_EQ(w.shell.targets.size(), 1u);

    // "&Create && Cancel": the doubled ampersand is no access key.
    f->cmdHiddenCreate.Caption = "&&Create";
    EXPECT_FALSE(f->PressAltKey('C'));
}

TEST_F(NavTest, AnIndexBeyondTheColumnOnlyClosesTheHighScores) {
    f->BoardState = kPuzzleState;
    f->ShowBoardState();
    f->ShowHighs();
    ASSERT_TRUE(f->picFrame[4].Visible);
    w.sounds.played.clear();

    f->cmdSideNav_Click(9);

    EXPECT_FALSE(f->picFrame[4].Visible);
    EXPECT_TRUE(f->tmrClock.Enabled);  // the word is "pause": the clock runs again
    EXPECT_EQ(Traces(), 0);

    f->cmdSideNav_Click(12);
    f->cmdSideNav_Click(-1);
    EXPECT_EQ(Traces(), 0);
}

}  // namespace
