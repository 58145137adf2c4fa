#include "forms/frmTessuma.h"

#include "core/modSort.h"
#include "forms/modMain.h"
#include "settings/modGetSet.h"

// High scores.

using modGetSet::GetData;
using modGetSet::SaveData;

void frmTessuma::EnterHighScore() {
    const std::string score = lblScore.Caption;
    if (vb::Val(score) <= 0) return;
    ShowMessage("Score High!  Enter your name:", "");
    const std::string reply = program.MessageResult;
    SaveData(*ports.settings, "Data/LastSavedName", reply);
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
    ISettingsStore& store = *ports.settings;
    const char* defaults[3] = {"1250,bombastic", "12000,funkalicious", "4500,shikamoo"};
    for (int i = 0; i < 10; ++i)
        HighEntries[static_cast<std::size_t>(i)] =
            GetData(store, "Data/" + std::to_string(i), i < 3 ? defaults[i] : "", modGetSet::kKeepCaps);

    // Scores padded to six digits, so that text order is score order.
    for (auto& entry : HighEntries) {
        const std::size_t comma = entry.find(',');
        const int p = comma == std::string::npos ? 0 : static_cast<int>(comma) + 1;
        const int pad = 7 - p;
        if (pad >= 1 && pad <= 6) entry = std::string(static_cast<std::size_t>(pad), '0') + entry;
    }
    modSort::SortStrings(HighEntries, 0, 13);

    for (std::size_t i = 0; i < 10; ++i) {
        const std::string& entry = HighEntries[i];
        const std::size_t comma = entry.find(',');
        const int p = comma == std::string::npos ? 0 : static_cast<int>(comma) + 1;
        if (p < 1 || p > 7) {
            lblSHName[i].Caption.clear();
            lblSHScore[i].Caption.clear();
            continue;
        }
        lblSHName[i].Caption = entry.substr(comma + 1);
        // The number format "#": the zeros in front go.
        // A part that is not a number is shown as it stands.
        const std::string digits = entry.substr(0, comma);
        std::int32_t value = 0;
        if (vb::TryCLng(digits, value)) lblSHScore[i].Caption = value == 0 ? "" : vb::Str(value);
        else lblSHScore[i].Caption = digits;
        SaveData(store, "Data/" + std::to_string(i), lblSHScore[i].Caption + "," + lblSHName[i].Caption);
    }
}
