// frmMessage: the game's own message box as a model.
#include "forms/frmMessage.h"

#include <algorithm>

#include "core/Keys.h"

using namespace keys;

frmMessage::frmMessage(std::string& messageResult) : MessageResult(messageResult) {
    // Positions in twips, relative to the client area.
    lblMessage = Label{"", true, 0, 0, 1560, 480, 3975, 1215};
    txtName.Left = 2280;
    txtName.Top = 1080;
    txtName.Width = 2535;
    txtName.Height = 375;
    txtName.MaxLength = 20;
    txtName.ForeColor = 0;
    txtName.Visible = false;
    lblYes = Label{"yes", true, 0xC000C0, 99, 2760, 1740, 615, 420};
    lblNo = Label{"no", true, 0xC000C0, 99, 3945, 1740, 405, 420};
    lblOkay = Label{"okay", true, 0xC000C0, 99, 3120, 1740, 855, 420};
}

void frmMessage::Form_Load() {
    MessageResult.clear();
    Loaded = true;
    Unloaded = false;
}

void frmMessage::Unload() {
    Form_Unload();
    Loaded = false;
    Unloaded = true;
}

void frmMessage::lblYes_Click() {
    MessageResult = "yes";
    Unload();
}

void frmMessage::lblNo_Click() {
    MessageResult = "no";
    Unload();
}

void frmMessage::lblOkay_Click() {
    MessageResult = txtName.Visible ? txtName.Text : "okay";
    Unload();
}

void frmMessage::Form_KeyUp(int KeyCode, int /*Shift*/) {
    if (Unloaded) return;
    if (txtName.Visible) {
        // The name prompt: Enter alone answers; every other key types.
        if (KeyCode == kEnter) lblOkay_Click();
        return;
    }
    const bool yesNo = lblYes.Visible;
    switch (KeyCode) {
        case kEnter:
        case kSpace:
            if (yesNo)
                lblYes_Click();
            else
                lblOkay_Click();
            break;
        case kY:
            if (yesNo) lblYes_Click();
            break;
        case kN:
            if (yesNo) lblNo_Click();
            break;
        case kO:
            if (!yesNo) lblOkay_Click();
            break;
        default: break;
    }
}

void frmMessage::CloseBySystem() {
    if (Unloaded) return;
    Unload();
}

void frmMessage::Form_Unload() {
    if (!MessageResult.empty()) return;
    if (lblYes.Visible)
        MessageResult = "no";
    else if (txtName.Visible)
        MessageResult = txtName.Text;
}

void frmMessage::TypeName(const std::string& text) { txtName_Change(text, static_cast<int>(text.size())); }

void frmMessage::txtName_Change(const std::string& text, int caret) {
    txtName.Text = text.substr(0, static_cast<std::size_t>(std::max(txtName.MaxLength, 0)));
    txtName.SelStart = std::clamp(caret, 0, static_cast<int>(txtName.Text.size()));
}

int frmMessage::DeliverQueuedKeys() {
    int n = 0;
    while (!KeyQueue.empty()) {
        const std::string k = KeyQueue.front();
        KeyQueue.pop_front();
        ++n;
        if (k == "^{END}" && Focus.name == "txtName") txtName.SelStart = static_cast<int>(txtName.Text.size());
    }
    return n;
}
