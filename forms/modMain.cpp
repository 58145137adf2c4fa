// modMain: the program: one instance, the dialogs object and the main form.
#include "forms/modMain.h"

#include "forms/clsDIALOGS.h"
#include "forms/frmTessuma.h"
#include "forms/frmUpdate.h"

Program::Program(Ports p) : ports(std::move(p)) {}

Program::~Program() = default;

frmUpdate& Program::UpdateFormInstance() {
    if (!UpdateForm) {
        UpdateForm = std::make_unique<frmUpdate>(*this);
        UpdateForm->Form_Load();
    }
    return *UpdateForm;
}

void Program::Main() {
    if (ports.instance.AnotherInstanceRunning()) {
        ports.sysbox.Show("Tessuma Sudoku is already running.", "Tessuma Sudoku", 0);
        Running = false;
        return;
    }
    std::string profileDir = ports.profileDir.empty() ? ports.programDir : ports.profileDir;
    if (!profileDir.empty() && profileDir.back() != '/') profileDir += '/';
    const std::string startDir = ports.documentsDir.empty() ? ports.programDir : ports.documentsDir;
    gDialogs =
        std::make_unique<clsDIALOGS>(&ports.dialogs, &ports.sysbox, ports.files, startDir, profileDir + "tessuma.ini");
    Running = true;
    MainForm = std::make_unique<frmTessuma>(*this);
    MainForm->Form_Load();
}

void Program::End() {
    Running = false;
    // The dialogs object ends with the program: it stores its keys now.
    gDialogs.reset();
}
