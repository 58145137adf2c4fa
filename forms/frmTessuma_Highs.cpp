#include "forms/frmTessuma.h"

// High scores.

void frmTessuma::EnterHighScore() {}
void frmTessuma::ShowHighs() {}
void frmTessuma::HideHighs() {}
void frmTessuma::LoadHighs() {}
