#include "forms/frmTessuma.h"

// Side navigation, option labels, Alt keys.

void frmTessuma::cmdSideNav_Click(int Index) {}
void frmTessuma::SetSideNavVisible(bool Visible, std::int16_t& Count) {}
void frmTessuma::lblOption_Click(int Index) {}
void frmTessuma::cmdHiddenCreate_Click() {}
void frmTessuma::cmdHiddenFinish_Click() {}
void frmTessuma::cmdHiddenLoad_Click() {}
void frmTessuma::cmdHiddenSave_Click() {}
void frmTessuma::cmdHiddenPrint_Click() {}
void frmTessuma::cmdHiddenSolveOK_Click() {}
void frmTessuma::cmdHiddenHighs_Click() {}
void frmTessuma::cmdHiddenHelp_Click() {}
void frmTessuma::cmdHiddenPause_Click() {}
void frmTessuma::cmdHiddenSkin_Click() {}
void frmTessuma::cmdHiddenSounds_Click() {}
void frmTessuma::cmdHiddenUpdate_Click() {}
void frmTessuma::cmdHiddenDonate_Click() {}
void frmTessuma::cmdHiddenShow_Click() {}
void frmTessuma::cmdHiddenHide_Click() {}
bool frmTessuma::PressAltKey(char key) { return false; }
