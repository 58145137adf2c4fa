#include "forms/frmUpdate.h"

#include "forms/modMain.h"

frmUpdate::frmUpdate(Program& p) : program(p) {}

void frmUpdate::Form_Load() { Loaded = true; }
void frmUpdate::Show() { Visible = true; }
void frmUpdate::lblDownload_Click() {}
void frmUpdate::CloseBySystem() {}
void frmUpdate::Form_Unload() {}
