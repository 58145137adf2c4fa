#include "forms/frmTessuma.h"

// Cell entry.

void frmTessuma::txtCell_KeyDown(int Index, int KeyCode, int Shift) {}
void frmTessuma::txtCell_Change(int Index) {}
void frmTessuma::txtCell_LostFocus(int Index) {}
void frmTessuma::cmdHiddenFirstCell_Click() {}
bool frmTessuma::BoardUncovered() const { return false; }
