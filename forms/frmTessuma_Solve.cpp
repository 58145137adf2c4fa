#include "forms/frmTessuma.h"

// Solve command, vetting, own puzzles, hints.

void frmTessuma::SolveOrCheck(bool CheckOnly) {}
void frmTessuma::FindDuplicate(bool& Found) {}
void frmTessuma::mnuSolvePuzzle_Click() {}
void frmTessuma::mnuEnterPuzzle_Click() {}
void frmTessuma::FinishOwnPuzzle() {}
void frmTessuma::CancelOwnPuzzle() {}
void frmTessuma::mnuCancelNewPuzzle_Click() {}
void frmTessuma::mnuFillRandomSquare_Click() {}
void frmTessuma::mnuClearSolvedSquares_Click() {}
