// Cell entry: the keys of a cell, the walk of the arrow keys, the judgement
// of a typed character against BoardState, and the first-cell command.

#include "forms/frmTessuma.h"

#include "core/BoardCode.h"
#include "core/Keys.h"

using namespace keys;

namespace {

bool ValidCell(int index) { return index >= 0 && index <= 80; }

}  // namespace

void frmTessuma::txtCell_KeyDown(int Index, int KeyCode, int /*Shift*/) {
    if (!ValidCell(Index) || !BoardUncovered()) return;
    const bool arrow = IsArrow(KeyCode);
    if ((KeyCode == kEsc || KeyCode == kSpace || arrow) && picRing[0].Visible) HideRing();

    if (KeyCode == kEsc) {
        // Takes the cell out of sight, digit or not; its Text stays.
        txtCell[static_cast<std::size_t>(Index)].Visible = false;
        RecalcPossible();
        return;
    }
    if (KeyCode == kSpace) {
        CurrentCell = static_cast<std::int16_t>(Index);
        ShowMarkPicker();
        return;
    }
    if (!arrow) return;

    // The walk jumps over shown cells in the key's direction and stops at the
    // first hidden one, which opens for typing. A shown cell left empty is
    // hidden again. Every cell is met once in 81 steps; when all are shown
    // (a full board) the walk ends there and the focus stays where it was.
    int prev = Index;
    for (int step = 0; step < 81; ++step) {
        const int next = NextCell(prev, KeyCode);
        TextField& from = txtCell[static_cast<std::size_t>(prev)];
        TextField& to = txtCell[static_cast<std::size_t>(next)];
        if (from.Text.empty()) from.Visible = false;
        if (!to.Visible) {
            to.Visible = true;
            SetFocus({"txtCell", next});
            return;
        }
        prev = next;
    }
}

// The text of a cell changed: judge it against the stored puzzle.
void frmTessuma::txtCell_Change(int Index) {
    if (SuppressChange || !ValidCell(Index)) return;
    TextField& cell = txtCell[static_cast<std::size_t>(Index)];

    if (cell.Text == " ") {
        // A blank leaves nothing behind.
        SuppressChange = true;
        SetCellText(Index, "");
        SuppressChange = false;
        cell.Visible = false;
        return;
    }
    if (cell.Text.empty()) {
        // Deleted by the player; the box stays shown until it loses the focus.
        RecalcPossible();
        return;
    }
    if (IsWrongDigit(BoardState, Index, cell.Text)) {
        // A wrong typed character costs no time and keeps the perfect game.
        ShowMessage("Whoops!  That not fit.", "");
        HideOverlays();
        SuppressChange = true;
        SetCellText(Index, "");
        cell.Visible = false;
        SuppressChange = false;
        return;
    }
    for (const TextField& other : txtCell) {
        if (other.Text.empty()) {
            PlayEffect(SoundDigitOk);
            RecalcPossible();
            PuzzleDirty = true;
            return;
        }
    }
    // No cell is empty: the puzzle is complete. A digit hidden with Esc
    // counts as filled.
    CompletePuzzle();
}

void frmTessuma::txtCell_LostFocus(int Index) {
    if (!ValidCell(Index)) return;
    TextField& cell = txtCell[static_cast<std::size_t>(Index)];
    if (cell.Text.empty()) cell.Visible = false;
}

// Alt+A: into the first open cell of a running game; during own-puzzle entry
// (or while a frame covers the board) into cell 0, through a blank that the
// queued Delete key takes away again by the ordinary change path.
void frmTessuma::cmdHiddenFirstCell_Click() {
    if (CountClues() && lblOption[8].Caption == "pause") {
        if (!BoardUncovered()) return;  // the walk would not move
        // Acting, it ends what a save leaves behind: typed digits are judged again.
        SuppressChange = false;
        txtCell_KeyDown(80, kRight, 0);
        return;
    }
    // Under the pause or help frame the board is left alone: putting the
    // caret into cell 0 there would erase what it holds, a given included.
    if (!cmdSideNav[0].Visible && BoardUncovered()) {
        HideRing();
        SuppressChange = true;
        SetCellText(0, " ");
        txtCell[0].Visible = true;
        SetFocus({"txtCell", 0});
        SuppressChange = false;
        SendKeys("{DEL}");
    }
}

bool frmTessuma::BoardUncovered() const { return !picFrame[2].Visible && !picFrame[3].Visible; }
