#include "forms/frmTessuma.h"

// Click ring.

void frmTessuma::ShowRing() {}
void frmTessuma::HideRing() {}
void frmTessuma::picRing_MouseDown(int Index, int Button, int Shift, float X, float Y) {}
void frmTessuma::HideOverlays() {}
void frmTessuma::chkClickring_Click() {}
void frmTessuma::cmdHiddenClickRing_Click() {}
