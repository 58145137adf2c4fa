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

TEST_F(NavTest, SetSideNavVisibleSwitchesTheModes) {
    const struct {
        bool visible;
        std::int16_t count, countAfter;
        const char* buttons;
    } cases[] = {
        {true, 0, 9, "111111111"}, {false, 0, 9, "000000000"}, {false, 6, 6, "000000011"},  {true, 6, 6, "111111100"},
        {true, 8, 8, "111111111"}, {false, 1, 1, "001111111"}, {true, -1, -1, "000000000"},
    };
    for (const auto& c : cases) {
        std::int16_t count = c.count;
        f->SetSideNavVisible(c.visible, count);
        EXPECT_EQ(count, c.countAfter) << c.visible << " " << c.count;
        EXPECT_EQ(SideNav(), c.buttons) << c.visible << " " << c.count;
    }
}

TEST_F(NavTest, EveryAccessKeyReachesAButtonAndNoOtherKeyDoes) {
    // Keys of buttons that need a visible control elsewhere: with the
    // whole side column and the labels hidden they answer but do nothing.
    std::int16_t none = 0;
    f->SetSideNavVisible(false, none);
    f->lblOption[7].Visible = false;
    f->lblOption[8].Visible = false;
    for (char k : std::string("CFLSPOGHEUcflspoghe")) {
        EXPECT_TRUE(f->PressAltKey(k)) << k;
    }
    EXPECT_EQ(Traces(), 0);
    for (char k : std::string("BIJQTVWXYZ0123456789/;'[]\\` ")) EXPECT_FALSE(f->PressAltKey(k)) << k;
    EXPECT_FALSE(f->PressAltKey('\0'));
    // The rest answer too; what they do belongs to their own commands.
    for (char k : std::string("MRKN-=DA,.")) EXPECT_TRUE(f->PressAltKey(k)) << k;
}

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
