#include "dialogs/clsDIALOGS.h"

clsDIALOGS::clsDIALOGS(IDialogHost* host, ISystemMessageBox* sysbox, std::string programDir, std::string profilePath)
    : host_(host), sysbox_(sysbox), programDir_(std::move(programDir)), profilePath_(std::move(profilePath)) {}

clsDIALOGS::~clsDIALOGS() = default;

void clsDIALOGS::strFilter(const std::string& v) { strFilter_ = v; }

std::string clsDIALOGS::strGetOpenFileName(const std::string&) { return {}; }
std::string clsDIALOGS::strGetSaveFileName(const std::string&) { return {}; }
