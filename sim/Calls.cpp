#include "sim/Calls.h"

#include <cstdint>
#include <map>

#include "sim/Paths.h"

namespace scenario {

namespace {

using Args = std::vector<Value>;

ArgInfo IntArg(const char* name, long long lo, long long hi) { return ArgInfo{name, ArgKind::Int, lo, hi, false}; }
ArgInfo Index(long long lo, long long hi) { return IntArg("Index", lo, hi); }
ArgInfo KeyCode() { return IntArg("KeyCode", 0, 255); }
ArgInfo Shift() { return IntArg("Shift", 0, 7); }
ArgInfo Button() { return IntArg("Button", 0, 7); }
ArgInfo FloatArg(const char* name) { return ArgInfo{name, ArgKind::Float, 0, 0, false}; }
ArgInfo BoolArg(const char* name) { return ArgInfo{name, ArgKind::Bool, 0, 0, false}; }
ArgInfo TextArg(const char* name) { return ArgInfo{name, ArgKind::Text, 0, 0, false}; }
ArgInfo FileArg(const char* name) { return ArgInfo{name, ArgKind::File, 0, 0, false}; }
ArgInfo Ref(ArgInfo a) {
    a.byRef = true;
    return a;
}

int I(const Value& v) { return static_cast<int>(v.i); }
std::int16_t S(const Value& v) { return static_cast<std::int16_t>(v.i); }

using Run = std::function<std::string(Runtime&, const Args&)>;

CallEntry Make(const char* name, std::vector<ArgInfo> args, Run run, Needs needs = Needs::Form) {
    return CallEntry{name, std::move(args), needs, std::move(run)};
}

// A routine of the main form with no arguments and no result.
CallEntry Plain(const char* name, void (frmTessuma::*m)()) {
    return Make(name, {}, [m](Runtime& rt, const Args&) {
        (rt.Form().*m)();
        return std::string();
    });
}

// A handler of a control array with the index alone.
CallEntry Indexed(const char* name, void (frmTessuma::*m)(int), long long lo, long long hi) {
    return Make(name, {Index(lo, hi)}, [m](Runtime& rt, const Args& a) {
        (rt.Form().*m)(I(a[0]));
        return std::string();
    });
}

// A mouse handler of the form or a control without an index.
CallEntry Mouse(const char* name, void (frmTessuma::*m)(int, int, float, float)) {
    return Make(name, {Button(), Shift(), FloatArg("X"), FloatArg("Y")}, [m](Runtime& rt, const Args& a) {
        (rt.Form().*m)(I(a[0]), I(a[1]), a[2].f, a[3].f);
        return std::string();
    });
}

// A mouse handler of a control array.
CallEntry IndexedMouse(const char* name, void (frmTessuma::*m)(int, int, int, float, float), long long lo,
                      long long hi) {
    return Make(name, {Index(lo, hi), Button(), Shift(), FloatArg("X"), FloatArg("Y")},
                [m](Runtime& rt, const Args& a) {
                    (rt.Form().*m)(I(a[0]), I(a[1]), I(a[2]), a[3].f, a[4].f);
                    return std::string();
                });
}

// A key handler of a control array.
CallEntry IndexedKey(const char* name, void (frmTessuma::*m)(int, int, int), long long lo, long long hi) {
    return Make(name, {Index(lo, hi), KeyCode(), Shift()}, [m](Runtime& rt, const Args& a) {
        (rt.Form().*m)(I(a[0]), I(a[1]), I(a[2]));
        return std::string();
    });
}

CallEntry BoolResult(const char* name, bool (frmTessuma::*m)() const) {
    return Make(name, {}, [m](Runtime& rt, const Args&) { return FormatBool((rt.Form().*m)()); });
}

CallEntry SetBool(const char* name, const char* arg, void (frmTessuma::*m)(bool)) {
    return Make(name, {BoolArg(arg)}, [m](Runtime& rt, const Args& a) {
        (rt.Form().*m)(a[0].b);
        return std::string();
    });
}

// A routine with a Boolean and a by-reference count.
CallEntry VisibleCount(const char* name, void (frmTessuma::*m)(bool, std::int16_t&)) {
    return Make(name, {BoolArg("Visible"), Ref(IntArg("Count", INT16_MIN, INT16_MAX))},
                [m](Runtime& rt, const Args& a) {
                    std::int16_t count = S(a[1]);
                    (rt.Form().*m)(a[0].b, count);
                    return std::to_string(count);
                });
}

CallEntry UpdateHandler(const char* name, void (frmUpdate::*m)()) {
    return Make(
        name, {},
        [m](Runtime& rt, const Args&) {
            (rt.UpdateForWriting().*m)();
            return std::string();
        },
        Needs::Program);
}

std::vector<CallEntry> BuildTable() {
    using F = frmTessuma;
    std::vector<CallEntry> t;

    // Plumbing shared by all handlers.
    t.push_back(Make("SetCellText", {Index(0, 80), TextArg("Text")}, [](Runtime& rt, const Args& a) {
        rt.Form().SetCellText(I(a[0]), a[1].s);
        return std::string();
    }));
    t.push_back(Make("PlayerTypes", {Index(0, 80), TextArg("Text")}, [](Runtime& rt, const Args& a) {
        rt.Form().PlayerTypes(I(a[0]), a[1].s);
        return std::string();
    }));
    t.push_back(Make("KeyPress", {KeyCode(), Shift(), TextArg("Text")}, [](Runtime& rt, const Args& a) {
        return FormatBool(rt.Form().KeyPress(I(a[0]), I(a[1]), a[2].s));
    }));
    t.push_back(Make("SetClickringValue", {IntArg("Value", 0, 2)}, [](Runtime& rt, const Args& a) {
        rt.Form().SetClickringValue(I(a[0]));
        return std::string();
    }));
    t.push_back(Make("SetSkinValue", {IntArg("Value", 0, 2)}, [](Runtime& rt, const Args& a) {
        rt.Form().SetSkinValue(I(a[0]));
        return std::string();
    }));
    t.push_back(Make("SetSoundsValue", {IntArg("Value", 0, 2)}, [](Runtime& rt, const Args& a) {
        rt.Form().SetSoundsValue(I(a[0]));
        return std::string();
    }));
    t.push_back(Make("SetFocus", {ArgInfo{"Target", ArgKind::Control, 0, 0, false}}, [](Runtime& rt, const Args& a) {
        rt.Form().SetFocus(ControlRef{a[0].s, I(a[0])});
        return std::string();
    }));
    t.push_back(Make("FocusedControl", {}, [](Runtime& rt, const Args&) { return rt.Form().FocusedControl().ToString(); }));
    t.push_back(Make("SendKeys", {TextArg("Keys")}, [](Runtime& rt, const Args& a) {
        rt.Form().SendKeys(a[0].s);
        return std::string();
    }));
    t.push_back(Make("DeliverQueuedKeys", {}, [](Runtime& rt, const Args&) {
        return std::to_string(rt.Form().DeliverQueuedKeys());
    }));
    t.push_back(Plain("TabForward", &F::TabForward));
    t.push_back(Make("SetMousePointer", {IntArg("Pointer", 0, 99)}, [](Runtime& rt, const Args& a) {
        rt.Form().SetMousePointer(I(a[0]));
        return std::string();
    }));
    t.push_back(Make("PopupMenu", {TextArg("MenuName")}, [](Runtime& rt, const Args& a) {
        rt.Form().PopupMenu(a[0].s);
        return std::string();
    }));

    // Board state.
    t.push_back(Make("CellIndex", {IntArg("Row", 0, 8), IntArg("Col", 0, 8)}, [](Runtime&, const Args& a) {
        return std::to_string(frmTessuma::CellIndex(I(a[0]), I(a[1])));
    }));
    t.push_back(Plain("CreateBoardFields", &F::CreateBoardFields));
    t.push_back(Plain("ShowBoardState", &F::ShowBoardState));
    t.push_back(Make("BuildBoardState", {}, [](Runtime& rt, const Args&) { return rt.Form().BuildBoardState(); }));
    t.push_back(Make("GetViewPosText", {}, [](Runtime& rt, const Args&) { return rt.Form().GetViewPosText(); }));
    t.push_back(Make("SetViewPosText", {TextArg("Text")}, [](Runtime& rt, const Args& a) {
        rt.Form().SetViewPosText(a[0].s);
        return std::string();
    }));
    t.push_back(Plain("RecalcPossible", &F::RecalcPossible));

    // Running game.
    t.push_back(Indexed("mnuDifficulty_Click", &F::mnuDifficulty_Click, 0, 3));
    t.push_back(Make("PickPuzzle", {IntArg("levelIndex", 0, 3)}, [](Runtime& rt, const Args& a) {
        rt.Form().PickPuzzle(I(a[0]));
        return std::string();
    }));
    t.push_back(Plain("tmrClock_Timer", &F::tmrClock_Timer));
    t.push_back(Plain("UpdateScore", &F::UpdateScore));
    t.push_back(Plain("AddPenalty", &F::AddPenalty));
    t.push_back(Plain("TogglePause", &F::TogglePause));
    t.push_back(BoolResult("CountClues", &F::CountClues));
    t.push_back(BoolResult("IsSolved", &F::IsSolved));
    t.push_back(Plain("CompletePuzzle", &F::CompletePuzzle));
    t.push_back(Plain("Form_Click", &F::Form_Click));
    t.push_back(Plain("lblTimer_Click", &F::lblTimer_Click));
    t.push_back(Indexed("picFrame_Click", &F::picFrame_Click, 2, 4));

    // Cell entry.
    t.push_back(IndexedKey("txtCell_KeyDown", &F::txtCell_KeyDown, 0, 80));
    t.push_back(Indexed("txtCell_Change", &F::txtCell_Change, 0, 80));
    t.push_back(Indexed("txtCell_LostFocus", &F::txtCell_LostFocus, 0, 80));
    t.push_back(Plain("cmdHiddenFirstCell_Click", &F::cmdHiddenFirstCell_Click));
    t.push_back(BoolResult("BoardUncovered", &F::BoardUncovered));

    // Click ring.
    t.push_back(Plain("ShowRing", &F::ShowRing));
    t.push_back(Plain("HideRing", &F::HideRing));
    t.push_back(IndexedMouse("picRing_MouseDown", &F::picRing_MouseDown, 0, 9));
    t.push_back(Plain("HideOverlays", &F::HideOverlays));
    t.push_back(Plain("chkClickring_Click", &F::chkClickring_Click));
    t.push_back(Plain("cmdHiddenClickRing_Click", &F::cmdHiddenClickRing_Click));

    // Possibles view and marks.
    t.push_back(IndexedMouse("lblViewPos_MouseUp", &F::lblViewPos_MouseUp, 0, 242));
    t.push_back(Plain("UpdateViewPossible", &F::UpdateViewPossible));
    t.push_back(Plain("cmdMark_Click", &F::cmdMark_Click));
    t.push_back(Plain("ShowMarkPicker", &F::ShowMarkPicker));
    t.push_back(Plain("HideMarkPicker", &F::HideMarkPicker));
    t.push_back(Indexed("picMark_Click", &F::picMark_Click, 0, 9));
    t.push_back(IndexedKey("picMark_KeyUp", &F::picMark_KeyUp, 0, 9));
    t.push_back(Make("MarkString", {IntArg("cell", 0, 80)}, [](Runtime& rt, const Args& a) {
        return rt.Form().MarkString(I(a[0]));
    }));

    // Solve command, vetting, own puzzles, hints.
    t.push_back(SetBool("SolveOrCheck", "CheckOnly", &F::SolveOrCheck));
    t.push_back(Make("FindDuplicate", {Ref(BoolArg("Found"))}, [](Runtime& rt, const Args& a) {
        bool found = a[0].b;
        rt.Form().FindDuplicate(found);
        return FormatBool(found);
    }));
    t.push_back(Plain("mnuSolvePuzzle_Click", &F::mnuSolvePuzzle_Click));
    t.push_back(Plain("mnuEnterPuzzle_Click", &F::mnuEnterPuzzle_Click));
    t.push_back(Plain("FinishOwnPuzzle", &F::FinishOwnPuzzle));
    t.push_back(Plain("CancelOwnPuzzle", &F::CancelOwnPuzzle));
    t.push_back(Plain("mnuCancelNewPuzzle_Click", &F::mnuCancelNewPuzzle_Click));
    t.push_back(Plain("mnuFillRandomSquare_Click", &F::mnuFillRandomSquare_Click));
    t.push_back(Plain("mnuClearSolvedSquares_Click", &F::mnuClearSolvedSquares_Click));

    // Side navigation, option labels, Alt keys.
    t.push_back(Indexed("cmdSideNav_Click", &F::cmdSideNav_Click, 0, 8));
    t.push_back(VisibleCount("SetSideNavVisible", &F::SetSideNavVisible));
    t.push_back(Indexed("lblOption_Click", &F::lblOption_Click, 1, 10));
    t.push_back(Plain("cmdHiddenCreate_Click", &F::cmdHiddenCreate_Click));
    t.push_back(Plain("cmdHiddenFinish_Click", &F::cmdHiddenFinish_Click));
    t.push_back(Plain("cmdHiddenLoad_Click", &F::cmdHiddenLoad_Click));
    t.push_back(Plain("cmdHiddenSave_Click", &F::cmdHiddenSave_Click));
    t.push_back(Plain("cmdHiddenPrint_Click", &F::cmdHiddenPrint_Click));
    t.push_back(Plain("cmdHiddenSolveOK_Click", &F::cmdHiddenSolveOK_Click));
    t.push_back(Plain("cmdHiddenHighs_Click", &F::cmdHiddenHighs_Click));
    t.push_back(Plain("cmdHiddenHelp_Click", &F::cmdHiddenHelp_Click));
    t.push_back(Plain("cmdHiddenPause_Click", &F::cmdHiddenPause_Click));
    t.push_back(Plain("cmdHiddenSkin_Click", &F::cmdHiddenSkin_Click));
    t.push_back(Plain("cmdHiddenSounds_Click", &F::cmdHiddenSounds_Click));
    t.push_back(Plain("cmdHiddenUpdate_Click", &F::cmdHiddenUpdate_Click));
    t.push_back(Plain("cmdHiddenDonate_Click", &F::cmdHiddenDonate_Click));
    t.push_back(Plain("cmdHiddenShow_Click", &F::cmdHiddenShow_Click));
    t.push_back(Plain("cmdHiddenHide_Click", &F::cmdHiddenHide_Click));
    t.push_back(Make("PressAltKey", {ArgInfo{"key", ArgKind::Char, 0, 0, false}}, [](Runtime& rt, const Args& a) {
        return FormatBool(rt.Form().PressAltKey(a[0].s[0]));
    }));

    // High scores.
    t.push_back(Plain("EnterHighScore", &F::EnterHighScore));
    t.push_back(Plain("ShowHighs", &F::ShowHighs));
    t.push_back(Plain("HideHighs", &F::HideHighs));
    t.push_back(Plain("LoadHighs", &F::LoadHighs));

    // Saved games.
    t.push_back(Plain("OpenGame", &F::OpenGame));
    t.push_back(Plain("SaveGame", &F::SaveGame));
    t.push_back(Make("LoadGameFile", {FileArg("path")}, [](Runtime& rt, const Args& a) {
        rt.Form().LoadGameFile(a[0].s);
        return std::string();
    }));
    t.push_back(Make("WriteGameFile", {FileArg("path")}, [](Runtime& rt, const Args& a) {
        rt.Form().WriteGameFile(a[0].s);
        return std::string();
    }));

    // Start-up, options, closing, message box, sounds.
    t.push_back(Plain("Form_Load", &F::Form_Load));
    t.push_back(Plain("cmdClose_Click", &F::cmdClose_Click));
    t.push_back(Plain("Form_Unload", &F::Form_Unload));
    t.push_back(Plain("LoadOptions", &F::LoadOptions));
    t.push_back(Plain("SaveOptions", &F::SaveOptions));
    t.push_back(Make("ShowMessage", {TextArg("Message"), TextArg("Kind")}, [](Runtime& rt, const Args& a) {
        rt.Form().ShowMessage(a[0].s, a[1].s);
        return std::string();
    }));
    t.push_back(Make("PlayEffect", {IntArg("effect", frmTessuma::SoundPuzzleStart, frmTessuma::SoundPopupOpen)},
                     [](Runtime& rt, const Args& a) {
                         rt.Form().PlayEffect(I(a[0]));
                         return std::string();
                     }));

    // Window frame, skin, option panel, help, printing.
    t.push_back(Mouse("Form_MouseDown", &F::Form_MouseDown));
    t.push_back(Mouse("Form_MouseMove", &F::Form_MouseMove));
    t.push_back(Mouse("Form_MouseUp", &F::Form_MouseUp));
    t.push_back(Plain("cmdMinimize_Click", &F::cmdMinimize_Click));
    t.push_back(Plain("cmdMaximize_Click", &F::cmdMaximize_Click));
    t.push_back(Plain("cmdRestoreDown_Click", &F::cmdRestoreDown_Click));
    t.push_back(Plain("chkSkin_Click", &F::chkSkin_Click));
    t.push_back(Plain("cmdShowOptions_Click", &F::cmdShowOptions_Click));
    t.push_back(Plain("cmdHideOptions_Click", &F::cmdHideOptions_Click));
    t.push_back(VisibleCount("SetOptionsVisible", &F::SetOptionsVisible));
    t.push_back(SetBool("SetFrameButtonsVisible", "Visible", &F::SetFrameButtonsVisible));
    t.push_back(SetBool("SetViewPosVisible", "Visible", &F::SetViewPosVisible));
    t.push_back(Make("AlwaysOnTop", {TextArg("Owned")}, [](Runtime& rt, const Args& a) {
        return std::to_string(rt.Form().AlwaysOnTop(a[0].s));
    }));
    t.push_back(Make("ShowFrame", {Ref(Index(2, 4))}, [](Runtime& rt, const Args& a) {
        std::int16_t index = S(a[0]);
        rt.Form().ShowFrame(index);
        return std::to_string(index);
    }));
    t.push_back(Make("HideFrame", {Index(2, 4)}, [](Runtime& rt, const Args& a) {
        rt.Form().HideFrame(S(a[0]));
        return std::string();
    }));
    t.push_back(Indexed("lblHelpPages_Click", &F::lblHelpPages_Click, 0, 9));
    t.push_back(IndexedKey("picFrame_KeyUp", &F::picFrame_KeyUp, 2, 4));
    t.push_back(Indexed("imgHelpTurn_Click", &F::imgHelpTurn_Click, 0, 1));
    t.push_back(Plain("cmdOK_Click", &F::cmdOK_Click));
    t.push_back(Plain("PrintBoard", &F::PrintBoard));

    // Songs and the volume slider.
    t.push_back(Plain("NextSong", &F::NextSong));
    t.push_back(Plain("tmrSongCheck_Timer", &F::tmrSongCheck_Timer));
    t.push_back(Plain("ApplyVolume", &F::ApplyVolume));
    t.push_back(Mouse("imgVolume_MouseMove", &F::imgVolume_MouseMove));
    t.push_back(Plain("cmdHiddenMinus_Click", &F::cmdHiddenMinus_Click));
    t.push_back(Plain("cmdHiddenPlus_Click", &F::cmdHiddenPlus_Click));

    // Update check and links.
    t.push_back(Plain("CheckForUpdate", &F::CheckForUpdate));
    t.push_back(Make("DownloadFile", {TextArg("Url"), FileArg("LocalPath"), Ref(BoolArg("Succeeded"))},
                     [](Runtime& rt, const Args& a) {
                         bool ok = a[2].b;
                         rt.Form().DownloadFile(a[0].s, a[1].s, ok);
                         return FormatBool(ok);
                     }));
    t.push_back(Plain("lblSupport_Click", &F::lblSupport_Click));
    t.push_back(Plain("lblWiki_Click", &F::lblWiki_Click));

    // The update window.
    t.push_back(UpdateHandler("frmUpdate.Form_Load", &frmUpdate::Form_Load));
    t.push_back(UpdateHandler("frmUpdate.Show", &frmUpdate::Show));
    t.push_back(UpdateHandler("frmUpdate.lblDownload_Click", &frmUpdate::lblDownload_Click));
    t.push_back(UpdateHandler("frmUpdate.CloseBySystem", &frmUpdate::CloseBySystem));
    t.push_back(UpdateHandler("frmUpdate.Form_Unload", &frmUpdate::Form_Unload));
    return t;
}

}  // namespace

const std::vector<CallEntry>& AllCalls() {
    static const std::vector<CallEntry> table = BuildTable();
    return table;
}

const CallEntry* FindCall(const std::string& name) {
    static const std::map<std::string, const CallEntry*> index = [] {
        std::map<std::string, const CallEntry*> m;
        for (const auto& c : AllCalls()) m[c.name] = &c;
        return m;
    }();
    const auto it = index.find(name);
    return it == index.end() ? nullptr : it->second;
}

std::string Signature(const CallEntry& entry) {
    std::string s = entry.name;
    for (const auto& a : entry.args) s += " " + a.name;
    return s;
}

bool ParseCallArgs(const CallEntry& entry, const std::vector<Token>& words, std::vector<Value>& args,
                   std::string& error) {
    args.clear();
    if (words.size() != entry.args.size()) {
        const auto n = entry.args.size();
        error = entry.name + " takes " + (n == 0 ? std::string("no arguments") : std::to_string(n) + (n == 1 ? " argument" : " arguments")) +
                (n == 0 ? "" : " (" + Signature(entry) + ")") + ", not " + std::to_string(words.size());
        return false;
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        const ArgInfo& a = entry.args[i];
        const std::string& w = words[i].text;
        Value v;
        std::string why;
        bool ok = true;
        switch (a.kind) {
            case ArgKind::Int: ok = ParseValue(ValueKind::Int, a.lo, a.hi, w, v, why); break;
            case ArgKind::Float: ok = ParseValue(ValueKind::Float, 0, 0, w, v, why); break;
            case ArgKind::Bool: ok = ParseValue(ValueKind::Bool, 0, 0, w, v, why); break;
            case ArgKind::Text: v.s = w; break;
            case ArgKind::Char:
                ok = w.size() == 1;
                if (!ok) why = "\"" + EscapeText(w) + "\" is not a single character";
                v.s = w;
                break;
            case ArgKind::File:
                ok = CheckSandboxPath(w, why);
                v.s = w;
                break;
            case ArgKind::Control: {
                ControlRef ref;
                ok = ResolveControl(w, ref, why);
                v.s = ref.name;
                v.i = ref.index;
                break;
            }
        }
        if (!ok) {
            error = "argument " + std::to_string(i + 1) + " (" + a.name + ") of " + entry.name + ": " + why;
            return false;
        }
        args.push_back(std::move(v));
    }
    return true;
}

}  // namespace scenario
