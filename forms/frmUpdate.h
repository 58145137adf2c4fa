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

    // The window's properties and controls, listed once for the class and
    // the scenario language's paths: FORM(Type, name, init), CONTROL(Type, name).
#define FRMUPDATE_FIELDS(FORM, CONTROL) \
    FORM(std::string, Caption, )        \
    CONTROL(Label, Label2)              \
    CONTROL(Label, lblStatus)           \
    CONTROL(Label, Label1)              \
    CONTROL(Label, lblDownload)         \
    FORM(bool, Visible, false)          \
    FORM(bool, Loaded, false)           \
    FORM(bool, DownloadStarted, false)
#define TESSUMA_FORM_FIELD(Type, name, init) Type name{init};
#define TESSUMA_CONTROL_FIELD(Type, name) Type name;
    FRMUPDATE_FIELDS(TESSUMA_FORM_FIELD, TESSUMA_CONTROL_FIELD)
#undef TESSUMA_FORM_FIELD
#undef TESSUMA_CONTROL_FIELD

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
