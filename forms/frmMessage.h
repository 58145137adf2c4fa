#pragma once
// frmMessage: the game's own message box as a headless model. Three faces:
// a notice with "okay", a question with "yes" and "no", and the name prompt
// for a new high score. The answer goes to the shared MessageResult.

#include <cstdint>
#include <deque>
#include <string>

#include "forms/Controls.h"

class frmMessage {
public:
    explicit frmMessage(std::string& messageResult);

    // The exact text that turns the notice face into the name prompt.
    static constexpr const char* kNamePrompt = "Score High!  Enter your name:";

    std::string& MessageResult;
    std::string Kind;  // the kind the box was asked with ("yn" or a notice)

    // Controls; positions in twips relative to the client area.
    Label lblMessage, lblYes, lblNo, lblOkay;
    TextField txtName;
    std::int32_t txtNameBackColor = 0xD6FEFE;  // pale yellow, &HBBGGRR
    int Width = 5880, Height = 2400;           // client area in twips (392 by 160 pixels)

    bool Loaded = false;    // between Form_Load and the unload
    bool Unloaded = false;  // the box is gone
    ControlRef Focus;
    std::deque<std::string> KeyQueue;  // "^{END}" for the name field

    void Form_Load();
    void lblYes_Click();
    void lblNo_Click();
    void lblOkay_Click();
    void Form_KeyUp(int KeyCode, int Shift);
    // The window's close button (the system's close command).
    void CloseBySystem();
    void Form_Unload();

    // The player edits the name field (at most 20 characters are kept).
    void TypeName(const std::string& text);
    // The player edited the name field: its text and caret as they stand.
    void txtName_Change(const std::string& text, int caret);
    int DeliverQueuedKeys();

private:
    void Unload();
};
