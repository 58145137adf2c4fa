#include "forms/frmTessuma.h"

// Board state.

std::int16_t frmTessuma::CellIndex(int row, int col) { return 0; }
void frmTessuma::CreateBoardFields() {}
void frmTessuma::ShowBoardState() {}
std::string frmTessuma::BuildBoardState() const { return {}; }
std::string frmTessuma::GetViewPosText() const { return {}; }
void frmTessuma::SetViewPosText(const std::string& text) {}
void frmTessuma::RecalcPossible() {}
