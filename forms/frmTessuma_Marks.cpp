// Possibles view, auto-mark and the mark picker.

#include "forms/frmTessuma.h"

#include "core/Keys.h"

void frmTessuma::lblViewPos_MouseUp(int Index, int Button, int /*Shift*/, float /*X*/, float /*Y*/) {
    HideOverlays();
    if (Index < 0 || Index > 242) return;
    CurrentCell = static_cast<std::int16_t>(Index / 3);
    if (Button == 1) {
        if (chkClickring.Value == 0) {
            txtCell[static_cast<std::size_t>(CurrentCell)].Visible = true;
            SetFocus({"txtCell", CurrentCell});
        } else {
            ShowRing();
        }
    } else if (Button == 2) {
        ShowMarkPicker();
    }
}

void frmTessuma::UpdateViewPossible() {
    for (int r = 0; r < 9; ++r)
        for (int c = 0; c < 9; ++c)
            for (int k = 0; k < 3; ++k) {
                Label& l = lblViewPos[static_cast<std::size_t>((r * 9 + c) * 3 + k)];
                l.Caption.clear();
                l.Visible = true;
                const std::string& possible = Possible[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
                for (int m = 1; m <= 3; ++m) {
                    const char digit = static_cast<char>('0' + 3 * k + m);
                    l.Caption += possible.find(digit) != std::string::npos ? digit : ' ';
                }
            }
}

void frmTessuma::cmdMark_Click() {
    // The key respects the greyed look; a click on the label does not.
    if (lblOption[1].ForeColor == vb::kColorLive) lblOption_Click(1);
}

std::string frmTessuma::MarkString(int cell) const {
    if (cell < 0 || cell > 80) return std::string(9, ' ');
    const auto i = static_cast<std::size_t>(cell) * 3;
    return lblViewPos[i].Caption + lblViewPos[i + 1].Caption + lblViewPos[i + 2].Caption;
}

void frmTessuma::ShowMarkPicker() {
    const TextField& cell = txtCell[static_cast<std::size_t>(CurrentCell)];
    const int L = cell.Left, T = cell.Top;
    for (std::size_t p = 0; p < 9; ++p) {
        picMark[p].Left = L - 2 + 15 * static_cast<int>(p % 3);
        picMark[p].Top = T - 2 + 15 * static_cast<int>(p / 3);
    }
    picMark[9].Left = L + 28;
    picMark[9].Top = T - 17;
    const std::string marks = MarkString(CurrentCell);
    for (std::size_t p = 0; p < 9; ++p) {
        const char digit = static_cast<char>('1' + p);
        const bool marked = marks.find(digit) != std::string::npos;
        picMark[p].Glyph = "markchoice" + std::to_string(marked ? p : p + 9);
        picMark[p].Visible = true;
    }
    picMark[9].Visible = true;
    SetFocus({"picMark", 9});
}

void frmTessuma::HideMarkPicker() {
    for (auto& p : picMark) p.Visible = false;
}

void frmTessuma::picMark_Click(int Index) {
    if (Index == 9) {
        HideMarkPicker();
        return;
    }
    if (Index < 0 || Index > 8) return;
    const auto p = static_cast<std::size_t>(Index);
    std::string marks = MarkString(CurrentCell);
    marks.resize(9, ' ');
    const char digit = static_cast<char>('1' + Index);
    const std::size_t at = marks.find(digit);
    if (at != std::string::npos) {
        marks[at] = ' ';
        picMark[p].Glyph = "markchoice" + std::to_string(p + 9);
    } else {
        marks = marks.substr(0, p) + digit + marks.substr(marks.size() - (8 - p));
        picMark[p].Glyph = "markchoice" + std::to_string(p);
    }
    const auto i = static_cast<std::size_t>(CurrentCell) * 3;
    lblViewPos[i].Caption = marks.substr(0, 3);
    lblViewPos[i + 1].Caption = marks.substr(3, 3);
    lblViewPos[i + 2].Caption = marks.substr(6, 3);
    PuzzleDirty = true;
}

void frmTessuma::picMark_KeyUp(int /*Index*/, int KeyCode, int /*Shift*/) {
    if (KeyCode == '0' || KeyCode == keys::kNumpad0 || KeyCode == keys::kX || KeyCode == keys::kF9) {
        HideMarkPicker();
        txtCell[static_cast<std::size_t>(CurrentCell)].Visible = true;
        SetFocus({"txtCell", CurrentCell});
        return;
    }
    if (KeyCode >= 49 && KeyCode <= 57)
        picMark_Click(KeyCode - 49);
    else if (KeyCode > keys::kNumpad0 && KeyCode <= keys::kNumpad9)
        picMark_Click(KeyCode - 97);
    // Every other key counts as a change as well, even one that did nothing.
    PuzzleDirty = true;
}
