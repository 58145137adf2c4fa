#include "forms/frmTessuma.h"

// Possibles view and marks.

void frmTessuma::lblViewPos_MouseUp(int Index, int Button, int Shift, float X, float Y) {}
void frmTessuma::UpdateViewPossible() {}
void frmTessuma::cmdMark_Click() {}
void frmTessuma::ShowMarkPicker() {}
void frmTessuma::HideMarkPicker() {}
void frmTessuma::picMark_Click(int Index) {}
void frmTessuma::picMark_KeyUp(int Index, int KeyCode, int Shift) {}
std::string frmTessuma::MarkString(int cell) const { return {}; }
