// High scores.

#include "forms/frmTessuma.h"

#include "core/HighScores.h"
#include "forms/modGetSet.h"
#include "forms/modMain.h"

using modGetSet::GetData;
using modGetSet::SaveData;

void frmTessuma::EnterHighScore() {
    const std::string score = lblScore.Caption;
    if (vb::Val(score) <= 0) return;
    ShowMessage("Score High!  Enter your name:", "");
    const std::string reply = program.MessageResult;
    SaveData(ports.settings, "Data/LastSavedName", reply);
    HighEntries[13] = score + "," + reply;
    ShowHighs();
}

void frmTessuma::ShowHighs() {
    LoadHighs();
    tmrClock.Enabled = false;
    picFrame[4].Visible = true;
}

void frmTessuma::HideHighs() {
    // The word on the label, not the timer, decides whether the clock goes on.
    if (lblOption[8].Caption == "pause") tmrClock.Enabled = true;
    picFrame[4].Visible = false;
}

void frmTessuma::LoadHighs() {
    ISettingsStore& store = ports.settings;
    for (int i = 0; i < 10; ++i)
        HighEntries[static_cast<std::size_t>(i)] =
            GetData(store, "Data/" + std::to_string(i), i < 3 ? kDefaultHighs[i] : "", modGetSet::kKeepCaps);
    RankHighScores(HighEntries);
    for (std::size_t i = 0; i < 10; ++i) {
        const std::optional<HighRow> row = HighRowOf(HighEntries[i]);
        lblSHName[i].Caption = row ? row->name : "";
        lblSHScore[i].Caption = row ? row->score : "";
        if (row) SaveData(store, "Data/" + std::to_string(i), row->score + "," + row->name);
    }
}
