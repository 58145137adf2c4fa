#pragma once
// clsDIALOGS: the common file dialogs, remembering between runs the folders,
// files and filter last used, in the section "DIALOGS" of a profile file.
// (The full set of properties and operations is built out in clsDIALOGS.cpp.)

#include <string>

#include "platform/Ports.h"

class clsDIALOGS {
public:
    // host: the platform's dialogs; sysbox: for failure reports;
    // programDir: the program's folder (default folders); profilePath: the
    // profile file.
    clsDIALOGS(IDialogHost* host, ISystemMessageBox* sysbox, std::string programDir, std::string profilePath);
    ~clsDIALOGS();

    // The properties the game writes and reads.
    void strTitle(const std::string& v) { strTitle_ = v; }
    const std::string& strTitle() const { return strTitle_; }
    void blnAllowMultipleFileSelect(bool v) { blnAllowMultipleFileSelect_ = v; }
    bool blnAllowMultipleFileSelect() const { return blnAllowMultipleFileSelect_; }
    void strInitialDir(const std::string& v) { strInitialDir_ = v; }
    const std::string& strInitialDir() const { return strInitialDir_; }
    void strFilter(const std::string& v);
    const std::string& strFilterRaw() const { return strFilter_; }

    std::string strGetOpenFileName(const std::string& name);
    std::string strGetSaveFileName(const std::string& name);

private:
    IDialogHost* host_;
    ISystemMessageBox* sysbox_;
    std::string programDir_, profilePath_;
    std::string strTitle_, strInitialDir_, strFilter_;
    bool blnAllowMultipleFileSelect_ = false;
};
