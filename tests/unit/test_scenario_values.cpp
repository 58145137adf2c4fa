// How scenario values print and read, and the checks of the path and call
// tables, without running the game.
#include <gtest/gtest.h>

#include <sstream>

#include "scenario/Calls.h"
#include "scenario/Paths.h"
#include "scenario/Scenario.h"
#include "scenario/Values.h"

using namespace scenario;

namespace {

// The status and the output of checking a scenario without running it.
std::pair<int, std::string> CheckText(const std::string& text) {
    std::ostringstream out;
    const int status = Check(text, out);
    return {status, out.str()};
}

}  // namespace

TEST(ScenarioValues, ValuesForSetReadByTheKindOfThePath) {
    Value v;
    std::string error;
    EXPECT_TRUE(ParseValue(ValueKind::Bool, 0, 0, "true", v, error));
    EXPECT_TRUE(v.b);
    EXPECT_FALSE(ParseValue(ValueKind::Bool, 0, 0, "-1", v, error));
    EXPECT_TRUE(ParseValue(ValueKind::Colour, 0, 0, "&h2600c0", v, error));
    EXPECT_EQ(v.i, 0x2600C0);
    EXPECT_TRUE(ParseValue(ValueKind::Colour, 0, 0, "13139164", v, error));
    EXPECT_EQ(v.i, 0xC87CDC);
    EXPECT_FALSE(ParseValue(ValueKind::Colour, 0, 0, "&H123456789", v, error));
    EXPECT_FALSE(ParseValue(ValueKind::Int, 0, 80, "81", v, error));
    EXPECT_NE(error.find("0 to 80"), std::string::npos);
    EXPECT_TRUE(ParseValue(ValueKind::Float, 0, 0, "-2.5", v, error));
    EXPECT_EQ(v.f, -2.5f);
    EXPECT_FALSE(ParseValue(ValueKind::Float, 0, 0, "1e40", v, error));
}

TEST(ScenarioSandbox, FilePathsStayInsideTheSandbox) {
    std::string error;
    EXPECT_TRUE(CheckSandboxPath("Music/tess0.mp3", error));
    EXPECT_TRUE(CheckSandboxPath("a..b/x", error));
    EXPECT_FALSE(CheckSandboxPath("/etc/passwd", error));
    EXPECT_FALSE(CheckSandboxPath("../x", error));
    EXPECT_FALSE(CheckSandboxPath("a/../../x", error));
    EXPECT_FALSE(CheckSandboxPath("a/..", error));
    EXPECT_FALSE(CheckSandboxPath("", error));
    EXPECT_FALSE(CheckSandboxPath("saves/", error));
}

TEST(ScenarioSandbox, TheSandboxFolderShowsAsAToken) {
    EXPECT_EQ(ShowSandbox("/tmp/w-1/saves/", "/tmp/w-1"), "<sandbox>/saves/");
    EXPECT_EQ(ExpandSandbox("<sandbox>/a.tsm", "/tmp/w-1"), "/tmp/w-1/a.tsm");
    EXPECT_EQ(ShowSandbox("no path here", "/tmp/w-1"), "no path here");
}

TEST(ScenarioTables, EveryListedPathResolvesAndFormPathsCanBeSet) {
    const auto paths = ListPaths();
    EXPECT_GT(paths.size(), 250u);
    for (const auto& text : paths) {
        Path p;
        std::string error;
        ASSERT_TRUE(ResolvePath(text, p, error)) << text << ": " << error;
        EXPECT_TRUE(p.get) << text;
        // Every control property and every value of a form or of the program
        // can be prepared with set; observations of the world can't.
        if (p.needs == Needs::World) {
            EXPECT_FALSE(p.set) << text;
        } else if (text != "Focus" && text != "KeyQueue") {
            EXPECT_TRUE(p.set) << text;
        }
    }
}

TEST(ScenarioTables, PathsNameEveryControlPropertyOfTheGame) {
    for (const char* text : {"cmdSideNav(3).Visible", "lblOption(1).MousePointer", "picFrame(3).Picture",
                             "imgVolume.Left", "mnuDifficulty(2).Enabled", "frmTessuma.Picture", "chkSkin.BackColor",
                             "SongPath", "DragActive", "lblViewPos(242).Caption", "Possible(8,8)", "HighEntries(13)",
                             "frmUpdate.lblDownload.Caption", "frmTessuma.txtCell(0).Text", "Setting(Data/0)"}) {
        Path p;
        std::string error;
        EXPECT_TRUE(ResolvePath(text, p, error)) << text << ": " << error;
    }
    for (const char* text : {"picFrame(1).Visible", "lblOption(0).Caption", "lblOption(11).Caption",
                             "Possible(9,0)", "HighEntries(14)", "txtCell(-1).Text", "txtCell(1).text",
                             "chkSkin(0).Value", "frmMessage.lblYes.Caption", "File(../x)", "Focus.Text"}) {
        Path p;
        std::string error;
        EXPECT_FALSE(ResolvePath(text, p, error)) << text;
        EXPECT_FALSE(error.empty()) << text;
    }
}

TEST(ScenarioTables, EveryRoutineCanBeCalledWithArgumentsOfItsKinds) {
    std::string text = "start\n";
    for (const auto& c : AllCalls()) {
        text += "call " + c.name;
        for (const auto& a : c.args) {
            switch (a.kind) {
                case ArgKind::Int: text += " " + std::to_string(a.hi); break;
                case ArgKind::Float: text += " -1.5"; break;
                case ArgKind::Bool: text += " True"; break;
                case ArgKind::Text: text += " \"a b\""; break;
                case ArgKind::Char: text += " U"; break;
                case ArgKind::File: text += " saves/a.tsm"; break;
                case ArgKind::Control: text += " txtCell(80)"; break;
            }
        }
        text += "\n";
    }
    const auto [status, out] = CheckText(text);
    EXPECT_EQ(status, 0) << out;
    for (const char* name : {"txtCell_KeyDown", "lblViewPos_MouseUp", "frmUpdate.lblDownload_Click",
                             "frmUpdate.CloseBySystem", "SolveOrCheck", "ShowFrame", "SetSideNavVisible"})
        EXPECT_NE(FindCall(name), nullptr) << name;
}

TEST(ScenarioTables, WrongCallsAreMalformed) {
    struct Case {
        const char* line;
        const char* reason;
    };
    const Case cases[] = {
        {"call txtCell_KeyDown 80 39", "takes 3 arguments"},
        {"call tmrClock_Timer 1", "takes no arguments"},
        {"call txtCell_Change 81", "out of range 0 to 80"},
        {"call lblOption_Click 0", "out of range 1 to 10"},
        {"call SolveOrCheck 1", "not a Boolean"},
        {"call lblViewPos_MouseUp 12 1 0 x 0", "not a decimal number"},
        {"call PressAltKey UU", "single character"},
        {"call LoadGameFile ../a.tsm", "leave the sandbox"},
        {"call NoSuchRoutine", "unknown routine"},
        {"call mnudifficulty_click 1", "did you mean mnuDifficulty_Click"},
        {"call frmMessage.lblYes_Click", "answered with answer"},
    };
    for (const auto& c : cases) {
        const auto [status, out] = CheckText(std::string("start\n") + c.line + "\n");
        EXPECT_EQ(status, 2) << c.line;
        EXPECT_EQ(out.rfind("error line 2: ", 0), 0u) << out;
        EXPECT_NE(out.find(c.reason), std::string::npos) << c.line << " -> " << out;
    }
}

TEST(ScenarioTables, TheFormIsNeededOnlyWhereItIsUsed) {
    // The world can be prepared and observed before start.
    EXPECT_EQ(CheckText("setting Skin \"0\"\nprint Setting(Skin)\nexpect Running False\nprint Messages\n").first, 0);
    for (const char* line : {"call tmrClock_Timer", "type 3 \"5\"", "set ClockSeconds 1", "alt P", "tick",
                             "focus txtCell(0)", "print BoardState", "print MessageResult", "print Focus"}) {
        const auto [status, out] = CheckText(std::string(line) + "\n");
        EXPECT_EQ(status, 2) << line;
        EXPECT_NE(out.find("after start"), std::string::npos) << out;
    }
    // Main refuses a second instance: no form to work on afterwards.
    const auto [status, out] = CheckText("other-instance\nstart\ncall tmrClock_Timer\n");
    EXPECT_EQ(status, 2);
    EXPECT_NE(out.find("error line 3: "), std::string::npos) << out;
    EXPECT_EQ(CheckText("other-instance\nstart\ntick 5\nprint Running\nprint MessageResult\n").first, 0);
}
