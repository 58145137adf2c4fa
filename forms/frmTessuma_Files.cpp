#include "forms/frmTessuma.h"

// Saved games.

void frmTessuma::OpenGame() {}
void frmTessuma::SaveGame() {}
void frmTessuma::LoadGameFile(const std::string& path) {}
void frmTessuma::WriteGameFile(const std::string& path) {}
