#pragma once
// frmUpdate: the small owned window that offers a newer version.

#include <string>

#include "forms/Controls.h"

class Program;

class frmUpdate {
public:
    explicit frmUpdate(Program& program);
    Program& program;

    std::string Caption;
    Label Label2, lblStatus, Label1, lblDownload;
    bool Visible = false;
    bool Loaded = false;
    bool DownloadStarted = false;

    void Form_Load();
    void Show();
    void lblDownload_Click();
    // Closed by the window's close button.
    void CloseBySystem();
    void Form_Unload();
};
