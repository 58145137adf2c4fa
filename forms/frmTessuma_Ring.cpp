// Click ring.

#include "forms/frmTessuma.h"

#include "core/BoardCode.h"

namespace {

// Offsets of the ten pictures from the cell's top left corner: the digits 1
// to 9 clockwise from the top, then the cross.
constexpr int kRingLeft[10] = {13, 33, 50, 50, 33, 13, -7, -24, -24, -7};
constexpr int kRingTop[10] = {-28, -19, 1, 23, 43, 52, 43, 23, 1, -19};

}  // namespace

void frmTessuma::ShowRing() {
    const TextField& cell = txtCell[static_cast<std::size_t>(CurrentCell)];
    for (std::size_t i = 0; i < 10; ++i) {
        picRing[i].Left = cell.Left + kRingLeft[i];
        picRing[i].Top = cell.Top + kRingTop[i];
    }
    for (auto& p : picRing) p.Visible = true;
}

void frmTessuma::HideRing() {
    for (auto& p : picRing) p.Visible = false;
}

void frmTessuma::picRing_MouseDown(int Index, int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/) {
    HideRing();
    if (Index == 9) return;  // the cross only closes the ring
    if (Index < 0 || Index > 8) return;
    const std::string d(1, static_cast<char>('1' + Index));
    const auto cell = static_cast<std::size_t>(CurrentCell);
    if (IsWrongDigit(BoardState, CurrentCell, d)) {
        // A wrong digit from the ring costs five minutes and the clean win.
        ShowMessage("Whoops!  That not fit.", "");
        PerfectGame = false;
        AddPenalty();
        HideOverlays();
        return;
    }
    if (cmdSideNav[0].Visible) {
        txtCell[cell].ForeColor = vb::kColorEntered;
        PuzzleDirty = true;
    } else {
        // Own-puzzle entry: the digit is a given, and not judged.
        SuppressChange = true;
        txtCell[cell].ForeColor = vb::kColorGiven;
    }
    SetCellText(CurrentCell, d);
    txtCell[cell].Visible = true;
    SuppressChange = false;
    RecalcPossible();
}

void frmTessuma::HideOverlays() {
    if (picRing[0].Visible) HideRing();
    if (picMark[0].Visible) HideMarkPicker();
    const auto cell = static_cast<std::size_t>(CurrentCell);
    if (cell < txtCell.size() && txtCell[cell].Text.empty()) txtCell[cell].Visible = false;
}

void frmTessuma::chkClickring_Click() {
    if (LoadingOptions) return;
    HideOverlays();
    SendKeys("{tab}");
}

void frmTessuma::cmdHiddenClickRing_Click() { SetClickringValue(1 - chkClickring.Value); }
