#pragma once
// modMain: the entry of the program and the module-level values that all
// forms share. One Program exists for a run; the Qt application and the
// scenario runner each make one with their own ports.

#include <memory>
#include <string>

#include "forms/Ports.h"

class clsDIALOGS;
class frmTessuma;
class frmUpdate;

class Program {
public:
    explicit Program(Ports ports);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Ports ports;

    // Module-level values.
    std::string MessageResult;  // the answer of the last message box
    std::string UpdateUrl;      // the download address of the last check
    std::unique_ptr<clsDIALOGS> gDialogs;

    // The forms. frmUpdate exists from its first use.
    std::unique_ptr<frmTessuma> MainForm;
    std::unique_ptr<frmUpdate> UpdateForm;
    frmUpdate& UpdateFormInstance();

    // True until the program has ended.
    bool Running = false;

    // Refuses a second instance, makes gDialogs and loads the main form.
    void Main();
    // The main form was unloaded: the program ends.
    void End();
};
