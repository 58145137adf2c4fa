#include "forms/frmTessuma.h"

// Songs and the volume slider.

void frmTessuma::NextSong() {}
void frmTessuma::tmrSongCheck_Timer() {}
void frmTessuma::ApplyVolume() {}
void frmTessuma::imgVolume_MouseMove(int Button, int Shift, float X, float Y) {}
void frmTessuma::cmdHiddenMinus_Click() {}
void frmTessuma::cmdHiddenPlus_Click() {}
