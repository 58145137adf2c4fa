#pragma once
// frmUpdate: the small owned window that offers a newer version. It stays
// above the main window without being modal, so the game goes on behind it
// ("PLEASE SAVE YOUR WORK."). Its link hands the download address of the
// last check to the desktop and closes the game.

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
    // Shows the window without making it modal; loads it first if needed.
    void Show();
    void lblDownload_Click();
    // Closed by the window's close button.
    void CloseBySystem();
    void Form_Unload();

    // Whether the desktop may be handed this download address: only web
    // addresses, "http://" or "https://" followed by a host.
    static bool IsWebAddress(const std::string& address);
};
