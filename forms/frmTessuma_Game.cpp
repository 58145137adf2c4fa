#include "forms/frmTessuma.h"

// Running game.

void frmTessuma::mnuDifficulty_Click(int Index) {}
void frmTessuma::PickPuzzle(int levelIndex) {}
void frmTessuma::tmrClock_Timer() {}
void frmTessuma::UpdateScore() {}
void frmTessuma::AddPenalty() {}
void frmTessuma::TogglePause() {}
bool frmTessuma::CountClues() const { return false; }
bool frmTessuma::IsSolved() const { return false; }
void frmTessuma::CompletePuzzle() {}
void frmTessuma::Form_Click() {}
void frmTessuma::lblTimer_Click() {}
void frmTessuma::picFrame_Click(int Index) {}
