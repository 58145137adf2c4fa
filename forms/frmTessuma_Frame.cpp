#include "forms/frmTessuma.h"

// Window frame, skin, option panel, help, printing.

void frmTessuma::Form_MouseDown(int Button, int Shift, float X, float Y) {}
void frmTessuma::Form_MouseMove(int Button, int Shift, float X, float Y) {}
void frmTessuma::Form_MouseUp(int Button, int Shift, float X, float Y) {}
void frmTessuma::cmdMinimize_Click() {}
void frmTessuma::cmdMaximize_Click() {}
void frmTessuma::cmdRestoreDown_Click() {}
void frmTessuma::chkSkin_Click() {}
void frmTessuma::cmdShowOptions_Click() {}
void frmTessuma::cmdHideOptions_Click() {}
void frmTessuma::SetOptionsVisible(bool Visible, std::int16_t& Count) {}
void frmTessuma::SetFrameButtonsVisible(bool Visible) {}
void frmTessuma::SetViewPosVisible(bool Visible) {}
std::int32_t frmTessuma::AlwaysOnTop(const std::string& Owned) { return 0; }
void frmTessuma::ShowFrame(std::int16_t& Index) {}
void frmTessuma::HideFrame(std::int16_t Index) {}
void frmTessuma::lblHelpPages_Click(int Index) {}
void frmTessuma::picFrame_KeyUp(int Index, int KeyCode, int Shift) {}
void frmTessuma::cmdOK_Click() {}
void frmTessuma::PrintBoard() {}
