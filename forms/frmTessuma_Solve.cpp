// Solve command, vetting, own puzzles, hints.

#include "forms/frmTessuma.h"

#include <vector>

#include "core/Hint.h"
#include "core/modSudoku.h"
#include "core/vb.h"
#include "forms/modMain.h"

// CheckOnly false: the solve command, which fills every empty cell from the
// solver and ends the game, whatever the solver made of the board.
// CheckOnly true: vets a typed puzzle (solver, then clue count, then doubled
// digits) and on success writes it, with the solution, into BoardState.
// The refusals return with SuppressChange still set, on purpose: the change
// handling stays off until something else clears it.
void frmTessuma::SolveOrCheck(bool CheckOnly) {
    SuppressChange = true;
    SetMousePointer(vb::kPointerHourglass);

    modSudoku::Board Digits{};
    for (std::size_t cell = 0; cell < 81; ++cell) {
        // A letter or a blank reads as 0, an empty cell for the solver.
        const double v = vb::Val(txtCell[cell].Text);
        Digits[cell] = (v >= 1 && v <= 9) ? static_cast<std::uint8_t>(v) : 0;
    }

    // A board that cannot hold all digits makes LoadBoard answer false and
    // SolveBoard answer true; the result is read from SolveBoard alone.
    // A board without a solution can keep the search busy for minutes, so
    // it runs away from the window. Cut short because the window closes,
    // the board is not judged: no message, and an own puzzle isn't taken.
    modSudoku::SearchStop stop;
    bool solved = false;
    const auto search = [&Digits, &stop, &solved] {
        (void)modSudoku::LoadBoard(Digits);
        solved = modSudoku::SolveBoard(&stop);
        modSudoku::GetSolution(Digits);
    };
    const auto cut = [&stop] { stop.requested = true; };
    if (ports.background ? !ports.background->Run(search, cut) : (search(), false)) {
        if (CheckOnly) PuzzleAccepted = false;
        SetMousePointer(vb::kPointerDefault);
        return;
    }
    SolverResult = solved;

    if (CheckOnly) {
        BoardState.clear();
        PuzzleAccepted = false;
        if (!SolverResult) {
            SetMousePointer(vb::kPointerDefault);
            ShowMessage("Puzzle no good - no can solve!", "");
            return;
        }
        if (!CountClues()) {
            SetMousePointer(vb::kPointerDefault);
            ShowMessage("Proper Sudoku need 17 box.", "");
            return;
        }
        bool found = false;
        FindDuplicate(found);
        if (found) {
            SetMousePointer(vb::kPointerDefault);
            ShowMessage("Puzzle have more than one\r\nnumber " + DuplicateDigit + " in " + DuplicateUnit + ".", "");
            return;
        }
        PuzzleAccepted = true;
        PuzzleDirty = false;
    }

    for (std::size_t cell = 0; cell < 81; ++cell) {
        const int d = Digits[cell];
        TextField& c = txtCell[cell];
        if (!c.Text.empty()) {
            // A typed cell becomes a given: "1" is 'A', "9" is 'I'. Whatever
            // else was typed goes in 16 codes higher all the same.
            if (CheckOnly) BoardState += static_cast<char>(static_cast<unsigned char>(c.Text[0]) + 16);
        } else if (CheckOnly) {
            BoardState += static_cast<char>('0' + d);
        } else {
            // Looks like a hint and is treated as one; an undecided cell
            // shows 0.
            c.Locked = true;
            c.ForeColor = vb::kColorHinted;
            SetCellText(static_cast<int>(cell), std::string(1, static_cast<char>('0' + d)));
            c.Visible = true;
            mnuClearSolvedSquares.Enabled = true;
        }
    }

    // The finished look, in both modes; an accepted own puzzle is given the
    // look of a running game by its caller right after.
    SetMousePointer(vb::kPointerDefault);
    tmrClock.Enabled = false;
    lblOption[1].ForeColor = vb::kColorGreyed;
    lblOption[1].MousePointer = vb::kPointerDefault;
    lblScore.Caption = "0";
    lblOption[8].Caption = "solved";
    lblUnderscore[4].Visible = false;
    SuppressChange = false;
}

// Only the first doubled digit found is told.
void frmTessuma::FindDuplicate(bool& Found) {
    std::array<std::string, 81> texts;
    for (std::size_t i = 0; i < 81; ++i) texts[i] = txtCell[i].Text;
    const std::optional<Duplicate> d = ::FindDuplicate(texts);
    Found = d.has_value();
    if (!d) return;
    DuplicateDigit = d->digit;
    DuplicateUnit = d->unit;
}

// "Solve Puzzle" of the hint popup: no question asked.
void frmTessuma::mnuSolvePuzzle_Click() { SolveOrCheck(false); }

// "Enter My Own Puzzle": opens the board for typing in the givens.
void frmTessuma::mnuEnterPuzzle_Click() {
    // Asked whenever the board holds a puzzle, a solved one too.
    if (CountClues()) {
        ShowMessage("Say goodbye to puzzle now?", "yn");
        if (program.MessageResult == "no") return;
    }
    BoardState.clear();

    std::int16_t count = 6;  // buttons 0 to 6 go, Finish and Cancel show
    SetSideNavVisible(false, count);
    count = 0;
    SetOptionsVisible(false, count);

    tmrClock.Enabled = false;
    lblScore.Visible = false;
    lblDifficulty.Visible = false;
    cmdShowOptions.Visible = false;
    cmdHideOptions.Visible = false;

    SuppressChange = true;
    for (std::size_t i = 0; i < 81; ++i) {
        SetCellText(static_cast<int>(i), "");
        TextField& c = txtCell[i];
        c.ForeColor = vb::kColorGiven;  // typed digits are givens from the start
        c.Locked = false;
        c.Visible = false;
        c.TabStop = false;
        for (std::size_t k = 0; k < 3; ++k) {
            lblViewPos[3 * i + k].Caption = "   ";
            lblViewPos[3 * i + k].Visible = true;
        }
    }

    // A blank in cell 0 only to have something to delete: the queued {DEL}
    // removes it through the ordinary change path, which refreshes the
    // candidates and leaves the caret in cell 0.
    SetCellText(0, " ");
    txtCell[0].Visible = true;
    SetFocus(ControlRef{"txtCell", 0});
    SuppressChange = false;
    SendKeys("{DEL}");
}

// Side button 7: vets the typed grid and, if it passes, starts it as a game.
void frmTessuma::FinishOwnPuzzle() {
    SolveOrCheck(true);
    if (!PuzzleAccepted) return;  // the message has been shown; the grid stays

    ClockSeconds = 0;
    lblTimer.Caption = "0:00";
    lblTimer.Visible = true;
    lblScore.Visible = true;
    PlayEffect(SoundPuzzleStart);
    tmrClock.Enabled = true;
    PerfectGame = true;
    lblOption[1].ForeColor = vb::kColorLive;
    lblOption[1].MousePointer = vb::kPointerCustom;
    lblDifficulty.Caption = "unknown";
    lblDifficulty.Visible = true;
    BaseScore = 25000;
    lblScore.Caption = "25000";
    lblScore.Visible = true;
    lblOption[8].Caption = "pause";
    lblOption[8].Visible = true;
    lblUnderscore[4].Visible = true;

    // The typed cells keep Locked false: an own puzzle's givens can be typed
    // over until it is saved and opened again.
    for (auto& c : txtCell) {
        if (c.Text.empty()) {
            c.ForeColor = vb::kColorEntered;
            c.TabStop = true;
        }
    }
    mnuFillRandomSquare.Enabled = true;
    mnuClearSolvedSquares.Enabled = false;

    ShowPanelsAfterOwnPuzzle();
    RecalcPossible();
}

// The side buttons and, when they were open, the options come back once the
// typed grid is finished or dropped.
void frmTessuma::ShowPanelsAfterOwnPuzzle() {
    std::int16_t count = 0;
    SetSideNavVisible(true, count);
    if (OptionsShown) {
        count = 0;
        SetOptionsVisible(true, count);
    }
    cmdShowOptions.Visible = true;
    cmdHideOptions.Visible = OptionsShown;
}

// Side button 8: drops the typed grid; the board is left empty.
void frmTessuma::CancelOwnPuzzle() {
    ClockSeconds = 0;
    lblTimer.Visible = false;
    lblTimer.Caption = "0:00";
    lblScore.Visible = false;
    lblScore.Caption = "0";
    tmrClock.Enabled = false;

    SuppressChange = true;
    for (std::size_t i = 0; i < 81; ++i) {
        txtCell[i].Visible = false;
        SetCellText(static_cast<int>(i), "");
        for (std::size_t k = 0; k < 3; ++k) lblViewPos[3 * i + k].Visible = false;
    }
    SuppressChange = false;

    mnuFillRandomSquare.Enabled = false;
    mnuClearSolvedSquares.Enabled = false;

    ShowPanelsAfterOwnPuzzle();
    lblOption[8].Visible = false;
    lblUnderscore[4].Visible = false;
}

// "Cancel New Puzzle" only closes the popup; cancelling is side button 8.
void frmTessuma::mnuCancelNewPuzzle_Click() {}

// A hint: the right digit of a random empty cell, read from BoardState, for
// five minutes of clock.
void frmTessuma::mnuFillRandomSquare_Click() {
    SuppressChange = true;

    std::vector<int> empty;
    for (int cell = 0; cell < 81; ++cell)
        if (txtCell[static_cast<std::size_t>(cell)].Text.empty()) empty.push_back(cell);
    const int last = static_cast<int>(empty.size()) - 1;
    if (last == -1) {
        // A full board that is not solved; SuppressChange stays set.
        mnuFillRandomSquare.Enabled = false;
        return;
    }
    const int k = HintPick(static_cast<double>(ports.random.Rnd()), last + 1);
    const int cell = empty[static_cast<std::size_t>(k)];
    TextField& c = txtCell[static_cast<std::size_t>(cell)];
    c.Locked = true;
    c.ForeColor = vb::kColorHinted;
    // The character of BoardState as it stands: a blank where the right
    // digit is unknown, nothing past the end of a short state.
    SetCellText(cell, static_cast<std::size_t>(cell) < BoardState.size()
                          ? BoardState.substr(static_cast<std::size_t>(cell), 1)
                          : std::string());
    c.Visible = true;

    SuppressChange = false;
    PerfectGame = false;
    AddPenalty();

    if (last > 0) {
        mnuClearSolvedSquares.Enabled = true;
        RecalcPossible();
    } else {
        // The hint filled the board: solved, but never "SOLVED!".
        mnuFillRandomSquare.Enabled = false;
        tmrClock.Enabled = false;
        lblOption[1].ForeColor = vb::kColorGreyed;
        lblOption[1].MousePointer = vb::kPointerDefault;
        lblOption[8].Caption = "solved";
        lblUnderscore[4].Visible = false;
    }
    PlayEffect(SoundHintFill);
}

// Takes away every blue cell, hints and solved cells alike. The colour is
// the only record of a hint.
void frmTessuma::mnuClearSolvedSquares_Click() {
    SuppressChange = true;
    for (std::size_t i = 0; i < 81; ++i) {
        TextField& c = txtCell[i];
        if (c.ForeColor != vb::kColorHinted) continue;
        SetCellText(static_cast<int>(i), "");
        c.Visible = false;
        c.Locked = false;
        c.ForeColor = vb::kColorEntered;
    }
    SuppressChange = false;
    mnuFillRandomSquare.Enabled = true;
    mnuClearSolvedSquares.Enabled = false;
    RecalcPossible();
}
