#include "forms/frmTessuma.h"

// Update check and links.

void frmTessuma::CheckForUpdate() {}
void frmTessuma::DownloadFile(const std::string& Url, const std::string& LocalPath, bool& Succeeded) {}
void frmTessuma::lblSupport_Click() {}
void frmTessuma::lblWiki_Click() {}
