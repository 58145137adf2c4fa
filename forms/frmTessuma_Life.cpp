#include "forms/frmTessuma.h"

#include "forms/frmMessage.h"
#include "forms/modMain.h"
#include "settings/modGetSet.h"

// Start-up, options, closing, message box, sounds.

void frmTessuma::Form_Load() {}
void frmTessuma::cmdClose_Click() {}
void frmTessuma::Form_Unload() {}
void frmTessuma::LoadOptions() {}
void frmTessuma::SaveOptions() {}
void frmTessuma::ShowMessage(const std::string& Message, const std::string& Kind) {
    // The box is made anew for every use; its load clears the answer.
    frmMessage box(program.MessageResult);
    box.Form_Load();
    box.Kind = Kind;
    box.lblMessage.Caption = Message;
    const bool yesNo = Kind == "yn";
    box.lblYes.Visible = yesNo;
    box.lblNo.Visible = yesNo;
    box.lblOkay.Visible = !yesNo;
    PlayEffect(SoundMessage);
    if (Message == frmMessage::kNamePrompt) {
        box.txtName.Text = modGetSet::GetData(*ports.settings, "Data/LastSavedName", "", modGetSet::kKeepCaps);
        box.Focus = {"txtName", -1};
        box.KeyQueue.push_back("^{END}");
        box.txtName.Visible = true;
    } else {
        box.txtName.Visible = false;
    }
    if (ports.messages) ports.messages->RunModal(box);
    if (!box.Unloaded) box.CloseBySystem();
}
void frmTessuma::PlayEffect(int effect) {
    if (chkSounds.Value != 0 && ports.sounds) ports.sounds->Play(effect);
}
