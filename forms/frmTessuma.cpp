// frmTessuma: design-time properties of the controls, and the plumbing every handler shares.
#include "forms/frmTessuma.h"

#include <algorithm>

#include "BuildConfig.h"
#include "core/Keys.h"
#include "forms/modMain.h"

namespace {

// Twips as drawn, to the form's pixels.
constexpr int Px(int twips) { return twips / 15; }

void Place(Label& l, int left, int top, int width, int height) {
    l.Left = left;
    l.Top = top;
    l.Width = width;
    l.Height = height;
}

void PlaceTw(Label& l, int left, int top, int width, int height) { Place(l, Px(left), Px(top), Px(width), Px(height)); }

void PlaceTw(CommandButton& b, int left, int top, int width, int height) {
    b.Left = Px(left);
    b.Top = Px(top);
    b.Width = Px(width);
    b.Height = Px(height);
}

}  // namespace

frmTessuma::frmTessuma(Program& p) : program(p), ports(p.ports) { InitControls(); }

void frmTessuma::InitControls() {
    tmrClock = Timer{false, 1000};
    tmrSongCheck = Timer{false, 250};
    // The cell fields and their labels as designed: cell 0 and labels 0..2
    // exist from design; the form's load creates and places the others.
    for (auto& c : txtCell) {
        c.Width = 41;
        c.Height = 41;
        c.Visible = false;
    }
    txtCell[0].Left = 120;
    txtCell[0].Top = 64;
    for (auto& l : lblViewPos) {
        l.Width = 40;
        l.Height = 13;
        l.ForeColor = vb::kColorHinted;
        l.Visible = false;
    }

    // Right panel.
    PlaceTw(lblScore, 7770, 1560, 1440, 315);
    lblScore.ForeColor = vb::kColorGiven;
    lblScore.Visible = false;
    PlaceTw(lblDifficulty, 7815, 1875, 1395, 285);
    lblDifficulty.ForeColor = vb::kColorGiven;
    PlaceTw(lblTimer, 7770, 2160, 1440, 315);
    lblTimer.ForeColor = vb::kColorClock;
    lblTimer.Caption = "0:00";
    lblTimer.Visible = false;
    lblLoading.Caption = "and now a word from our sponsor";
    lblLoading.Visible = false;
    Place(lblLoading, 120, 356, 392, 32);  // in the band of the curtain
    lblLoading.ForeColor = vb::kColorCream;

    struct OptionDesign {
        int index, left, top, width, height;
        const char* caption;
        std::int32_t color;
        int pointer;
        bool visible;
    };
    const OptionDesign options[] = {
        {1, 7770, 3000, 1440, 255, "auto-mark", vb::kColorGreyed, vb::kPointerDefault, true},
        {2, 7650, 3570, 1440, 255, "click ring", vb::kColorHinted, vb::kPointerDefault, true},
        {3, 7650, 3990, 1440, 255, "skin", vb::kColorHinted, vb::kPointerDefault, true},
        {4, 7650, 4560, 1440, 255, "sounds", vb::kColorHinted, vb::kPointerDefault, true},
        {5, 8550, 4980, 750, 285, "music", vb::kColorHinted, vb::kPointerDefault, true},
        {6, 7740, 5910, 465, 240, "v2.0", vb::kColorHinted, vb::kPointerDefault, true},
        {7, 8280, 5895, 1020, 285, "update?", vb::kColorLive, vb::kPointerCustom, true},
        {8, 8490, 2475, 720, 285, "pause", vb::kColorClock, vb::kPointerCustom, false},
        {9, 7920, 5520, 1380, 330, "-               +", 0xC6AE85, vb::kPointerDefault, true},
        {10, 7860, 6330, 1305, 480, "make lucky donation!", vb::kColorClock, vb::kPointerCustom, true},
    };
    for (const auto& o : options) {
        Label& l = lblOption[static_cast<std::size_t>(o.index)];
        PlaceTw(l, o.left, o.top, o.width, o.height);
        l.Caption = o.caption;
        l.ForeColor = o.color;
        l.MousePointer = o.pointer;
        l.Visible = o.visible;
    }
    lblOption[0].Visible = false;  // index 0 does not exist

    struct UnderscoreDesign {
        int left, top;
        std::int32_t color;
        bool visible;
    };
    const UnderscoreDesign underscores[7] = {
        {8550, 2970, 0xC87CDC, true}, {8520, 3540, 0xC6AE85, true},  {8670, 3960, 0xC6AE85, true},
        {8640, 4530, 0xC6AE85, true}, {9045, 2445, 0x71DAAC, false}, {8280, 5880, 0xC87CDC, true},
        {8040, 6525, 0x71DAAC, true},
    };
    for (std::size_t i = 0; i < 7; ++i) {
        auto& u = lblUnderscore[i];
        PlaceTw(u, underscores[i].left, underscores[i].top, 180, 330);
        u.Caption = "_";
        u.ForeColor = underscores[i].color;
        u.Visible = underscores[i].visible;
    }

    chkClickring.Left = Px(9120);
    chkClickring.Top = Px(3570);
    chkSkin.Left = Px(9120);
    chkSkin.Top = Px(3990);
    chkSounds.Left = Px(9120);
    chkSounds.Top = Px(4560);

    picVolume = PictureBox{true, 529, 354, 91, 16, 103, ""};
    imgVolume = Thumb{true, 75.0f, 1, 14, 14};

    // Side navigation: words on the pictures, places as drawn.
    const int navLeft[9] = {375, 375, 375, 375, 375, 360, 360, 375, 375};
    const int navTop[9] = {390, 1320, 2250, 3180, 4110, 5040, 5970, 390, 1320};
    const char* navWord[9] = {"Create", "Load", "Save", "Print", "Solve", "Highs!", "Help", "Finish", "Cancel"};
    for (std::size_t i = 0; i < 9; ++i) {
        PlaceTw(cmdSideNav[i], navLeft[i], navTop[i], 1290, 810);
        cmdSideNav[i].Caption = navWord[i];
    }

    PlaceTw(cmdMinimize, 7920, 0, 420, 240);
    PlaceTw(cmdMaximize, 6840, 0, 405, 240);
    PlaceTw(cmdRestoreDown, 8340, 0, 405, 240);
    PlaceTw(cmdClose, 8745, 0, 630, 240);
    PlaceTw(cmdShowOptions, 9360, 3285, 240, 630);
    PlaceTw(cmdHideOptions, 9360, 3285, 240, 630);
    PlaceTw(cmdOK, 240, 4440, 1290, 810);  // inside picHelpNav
    cmdOK.Caption = "OK";

    // Frames over the board; placed at the first cell by the form's load.
    for (std::size_t i = 2; i <= 4; ++i) {
        picFrame[i].Width = 392;
        picFrame[i].Height = 392;
        picFrame[i].Visible = false;
    }
    picFrame[3].Picture = 175;
    picFrame[4].Picture = 150;
    for (std::size_t i = 0; i < 10; ++i) {
        picRing[i] = PictureBox{false, 0, 0, 16, 18, 0, "ring" + std::to_string(i)};
        picMark[i] = PictureBox{false, 0, 0, 16, 16, 0, i == 9 ? "markclose" : "markchoice" + std::to_string(i + 9)};
    }
    picHelpNav = PictureBox{false, 512, 101, 112, 361, 0, "helpnav"};
    imgHelpMonkey = PictureBox{false, Px(120), Px(840), 110, 110, 0, "monkey"};

    // High score page, inside picFrame(4).
    PlaceTw(Label3, 1740, 720, 2415, 420);
    Label3.Caption = "Score Highs!";
    Label3.ForeColor = vb::kColorLive;
    for (std::size_t i = 0; i < 10; ++i) {
        const int top = 1200 + 420 * static_cast<int>(i);
        PlaceTw(lblSHName[i], 480, top, 3330, 345);
        PlaceTw(lblSHScore[i], 3960, top, 1365, 345);
        for (Label* l : {&lblSHName[i], &lblSHScore[i]}) {
            l->ForeColor = vb::kColorHinted;
            l->MousePointer = vb::kPointerCustom;
        }
    }

    // Help page labels, inside picHelpNav; links inside picFrame(2).
    const char* pages[10] = {"How to",    "How2",  "How3",    "solving",   "marks",
                             "eliminate", "pairs", "triples", "tess-tips", "support"};
    const int pageLeft[10] = {690, 945, 930, 690, 840, 405, 1005, 765, 540, 690};
    const int pageWidth[10] = {960, 705, 720, 960, 810, 1245, 645, 885, 1110, 960};
    for (std::size_t i = 0; i < 10; ++i) {
        PlaceTw(lblHelpPages[i], pageLeft[i], 240 + 360 * static_cast<int>(i), pageWidth[i], 285);
        lblHelpPages[i].Caption = pages[i];
        lblHelpPages[i].ForeColor = vb::kColorHinted;
        lblHelpPages[i].MousePointer = vb::kPointerCustom;
    }
    PlaceTw(lblSupport, 1260, 1800, 3330, 345);
    lblSupport.Caption = TESSUMA_SUPPORT_MAIL;
    PlaceTw(lblWiki, 270, 3720, 5325, 345);
    lblWiki.Caption = TESSUMA_WIKI_URL;
    for (Label* l : {&lblSupport, &lblWiki}) {
        l->ForeColor = vb::kColorHinted;
        l->MousePointer = vb::kPointerCustom;
        l->Visible = false;
    }

    // Menus.
    const char* levels[4] = {"&Easy", "&Intermediate", "&Advanced", "&Genius"};
    for (std::size_t i = 0; i < 4; ++i) mnuDifficulty[i].Caption = levels[i];
    mnuEnterPuzzle.Caption = "Enter My &Own Puzzle";
    mnuCancelNewPuzzle.Caption = "&Cancel New Puzzle";
    mnuFillRandomSquare = MenuItem{"Fill a &Random Square", false, true};
    mnuClearSolvedSquares = MenuItem{"&Clear Solved Squares", false, true};
    mnuSolvePuzzle.Caption = "&Solve Puzzle";
    mnuDeleteFile.Caption = "Delete this File";

    // The hidden command buttons: below the visible part of the form.
    struct Hidden {
        CommandButton* button;
        const char* caption;
    };
    const Hidden hidden[] = {
        {&cmdHiddenCreate, "&Create && Cancel"},
        {&cmdHiddenFinish, "&Finish"},
        {&cmdHiddenLoad, "&Load"},
        {&cmdHiddenSave, "&Save"},
        {&cmdHiddenPrint, "&Print"},
        {&cmdHiddenSolveOK, "S&olve && OK"},
        {&cmdHiddenHighs, "Hi&ghs"},
        {&cmdHiddenHelp, "&Help"},
        {&cmdHiddenPause, "paus&e"},
        {&cmdMark, "&mark"},
        {&cmdHiddenClickRing, "click &ring"},
        {&cmdHiddenSkin, "s&kin"},
        {&cmdHiddenSounds, "sou&nds"},
        {&cmdHiddenMinus, "&-"},
        {&cmdHiddenPlus, "&="},
        {&cmdHiddenUpdate, "&Update"},
        {&cmdHiddenDonate, "&Donate"},
        {&cmdHiddenFirstCell, "&A"},
        {&cmdHiddenShow, "&,"},
        {&cmdHiddenHide, "&."},
    };
    int n = 0;
    for (const auto& h : hidden) {
        h.button->Caption = h.caption;
        PlaceTw(*h.button, 1215 * (n % 8), 7680 + 495 * (n / 8), 1215, 495);
        ++n;
    }
}

// --------------------------------------------------------------------------
// Plumbing.

void frmTessuma::SetCellText(int index, const std::string& text) {
    if (index < 0 || index > 80) return;
    TextField& c = txtCell[static_cast<std::size_t>(index)];
    if (c.Text == text) return;
    c.Text = text;
    c.SelStart = 0;
    txtCell_Change(index);
}

void frmTessuma::PlayerTypes(int index, const std::string& text) { txtCell_Edit(index, CellEdit::Replace, text); }

void frmTessuma::txtCell_Edit(int Index, CellEdit Edit, const std::string& Text) {
    if (Index < 0 || Index > 80) return;
    TextField& c = txtCell[static_cast<std::size_t>(Index)];
    if (c.Locked) return;
    const int size = static_cast<int>(c.Text.size());
    switch (Edit) {
        case CellEdit::Replace:
            c.Text = Text.substr(0, static_cast<std::size_t>(c.MaxLength));
            c.SelStart = static_cast<int>(c.Text.size());
            break;
        case CellEdit::Insert:
            if (Text.size() != 1 || size >= c.MaxLength) return;
            c.Text.insert(static_cast<std::size_t>(std::clamp(c.SelStart, 0, size)), Text);
            c.SelStart = std::clamp(c.SelStart, 0, size) + 1;
            break;
        case CellEdit::Backspace:
            if (c.SelStart <= 0 || c.SelStart > size) return;
            c.Text.erase(static_cast<std::size_t>(c.SelStart - 1), 1);
            --c.SelStart;
            break;
        case CellEdit::Delete: {
            // A cell holds one digit: Delete takes it out also with the caret
            // after it, as it stands right after typing.
            const int at = c.SelStart >= 0 && c.SelStart < size ? c.SelStart : size - 1;
            if (at < 0) return;
            c.Text.erase(static_cast<std::size_t>(at), 1);
            c.SelStart = at;
            break;
        }
        case CellEdit::Home: c.SelStart = 0; return;
        case CellEdit::End: c.SelStart = size; return;
    }
    txtCell_Change(Index);
}

bool frmTessuma::KeyPress(int KeyCode, int Shift, const std::string& Text) {
    const bool alt = (Shift & keys::kAltMask) != 0, ctrl = (Shift & keys::kCtrlMask) != 0;
    if (alt && !ctrl && PressAltKey(keys::AccessChar(KeyCode))) {
        DeliverQueuedKeys();
        return true;
    }
    ControlRef focus = FocusedControl();
    if (focus.name != "txtCell") {
        // The cell the keyboard was in went out of sight under it (a wrong
        // digit is taken out and its box hidden, Esc hides an empty box):
        // the keyboard stays with it, and its next key shows the box again,
        // as the walk shows a cell it stops on.
        const int cell = KeyboardCell();
        if (cell < 0) return false;
        txtCell[static_cast<std::size_t>(cell)].Visible = true;
        focus = {"txtCell", cell};
    }
    txtCell_KeyDown(focus.index, KeyCode, Shift);
    if (KeyCode == keys::kTab) {
        TabForward();
    } else if (FocusedControl() == focus && !alt && !ctrl) {
        // What the text box itself does with the key, if it still has the focus.
        switch (KeyCode) {
            case keys::kBack: txtCell_Edit(focus.index, CellEdit::Backspace); break;
            case keys::kDelete: txtCell_Edit(focus.index, CellEdit::Delete); break;
            case keys::kHome: txtCell_Edit(focus.index, CellEdit::Home); break;
            case keys::kEnd: txtCell_Edit(focus.index, CellEdit::End); break;
            default:
                if (!Text.empty()) txtCell_Edit(focus.index, CellEdit::Insert, Text);
        }
    }
    DeliverQueuedKeys();
    return true;
}

void frmTessuma::SetClickringValue(int value) {
    if (chkClickring.Value == value) return;
    chkClickring.Value = value;
    chkClickring_Click();
}

void frmTessuma::SetSkinValue(int value) {
    if (chkSkin.Value == value) return;
    chkSkin.Value = value;
    chkSkin_Click();
}

void frmTessuma::SetSoundsValue(int value) { chkSounds.Value = value; }

void frmTessuma::SetFocus(const ControlRef& target) {
    const ControlRef old = Focus;
    Focus = target;
    if (old != target && old.name == "txtCell") txtCell_LostFocus(old.index);
}

ControlRef frmTessuma::FocusedControl() const {
    const auto i = static_cast<std::size_t>(Focus.index);
    if (Focus.name == "txtCell" && i < txtCell.size()) return txtCell[i].Visible ? Focus : ControlRef{};
    if (Focus.name == "picMark" && i < picMark.size()) return picMark[i].Visible ? Focus : ControlRef{};
    if (Focus.name == "picFrame" && i < picFrame.size()) return picFrame[i].Visible ? Focus : ControlRef{};
    return Focus;
}

int frmTessuma::KeyboardCell() const {
    if (Focus.name != "txtCell" || Focus.index < 0 || Focus.index >= static_cast<int>(txtCell.size())) return -1;
    const TextField& c = txtCell[static_cast<std::size_t>(Focus.index)];
    if (c.Locked) return -1;
    if (c.Visible) return Focus.index;
    return c.Text.empty() && BoardUncovered() ? Focus.index : -1;
}

void frmTessuma::SendKeys(const std::string& keys) { KeyQueue.push_back(keys); }

int frmTessuma::DeliverQueuedKeys() {
    int delivered = 0;
    // A handler run by a key may queue further keys; a bound keeps a
    // runaway loop of queued keys from hanging the program.
    while (!KeyQueue.empty() && delivered < 64) {
        const std::string key = KeyQueue.front();
        KeyQueue.pop_front();
        ++delivered;
        const ControlRef f = FocusedControl();
        if (key == "{DEL}") {
            if (f.name != "txtCell") continue;
            TextField& c = txtCell[static_cast<std::size_t>(f.index)];
            if (c.Locked || c.SelStart < 0 || c.SelStart >= static_cast<int>(c.Text.size())) continue;
            c.Text.erase(static_cast<std::size_t>(c.SelStart), 1);
            txtCell_Change(f.index);
        } else if (key == "{tab}") {
            TabForward();
        }
    }
    KeyQueue.clear();
    return delivered;
}

void frmTessuma::TabForward() {
    const ControlRef f = FocusedControl();
    if (f.name != "txtCell") return;
    for (int step = 1; step <= 81; ++step) {
        const int j = (f.index + step) % 81;
        const TextField& c = txtCell[static_cast<std::size_t>(j)];
        if (c.Visible && c.TabStop) {
            SetFocus({"txtCell", j});
            return;
        }
    }
}

void frmTessuma::SetMousePointer(int pointer) {
    MousePointer = pointer;
    if (ports.window) ports.window->MousePointerChanged(pointer);
}

void frmTessuma::PopupMenu(const std::string& menuName) {
    std::vector<MenuEntry> entries;
    if (menuName == "mnuPopupDifficulty") {
        for (int i = 0; i < 4; ++i)
            entries.push_back({"mnuDifficulty", i, mnuDifficulty[static_cast<std::size_t>(i)].Caption,
                               mnuDifficulty[static_cast<std::size_t>(i)].Enabled});
        entries.push_back({"line040", -1, "-", true});
        entries.push_back({"mnuEnterPuzzle", -1, mnuEnterPuzzle.Caption, mnuEnterPuzzle.Enabled});
        entries.push_back({"line045", -1, "-", true});
        entries.push_back({"mnuCancelNewPuzzle", -1, mnuCancelNewPuzzle.Caption, mnuCancelNewPuzzle.Enabled});
    } else if (menuName == "mnuPopupHint") {
        entries.push_back({"mnuFillRandomSquare", -1, mnuFillRandomSquare.Caption, mnuFillRandomSquare.Enabled});
        entries.push_back({"mnuClearSolvedSquares", -1, mnuClearSolvedSquares.Caption, mnuClearSolvedSquares.Enabled});
        entries.push_back({"line50", -1, "-", true});
        entries.push_back({"mnuSolvePuzzle", -1, mnuSolvePuzzle.Caption, mnuSolvePuzzle.Enabled});
    } else if (menuName == "mnuPopupFile") {
        entries.push_back({"mnuDeleteFile", -1, mnuDeleteFile.Caption, mnuDeleteFile.Enabled});
    } else {
        return;
    }
    const auto choice = ports.popups.Popup(menuName, entries);
    if (!choice) return;
    // Choosing a disabled entry or a separator dismisses the menu.
    const MenuEntry* chosen = nullptr;
    for (const auto& e : entries)
        if (e.name == choice->name && (e.index == choice->index || (e.index < 0 && choice->index < 0))) chosen = &e;
    if (!chosen || !chosen->enabled || chosen->caption == "-") return;
    if (chosen->name == "mnuDifficulty")
        mnuDifficulty_Click(chosen->index);
    else if (chosen->name == "mnuEnterPuzzle")
        mnuEnterPuzzle_Click();
    else if (chosen->name == "mnuCancelNewPuzzle")
        mnuCancelNewPuzzle_Click();
    else if (chosen->name == "mnuFillRandomSquare")
        mnuFillRandomSquare_Click();
    else if (chosen->name == "mnuClearSolvedSquares")
        mnuClearSolvedSquares_Click();
    else if (chosen->name == "mnuSolvePuzzle")
        mnuSolvePuzzle_Click();
}
