#pragma once
// The controls of the form models: plain fields holding exactly the
// properties that the game's rules read and write. Positions are pixels of
// the form's own scale unless a comment says twips.

#include <cstdint>
#include <string>

#include "core/vb.h"

struct TextField {
    std::string Text;
    bool Visible = true;
    bool Locked = false;
    std::int32_t ForeColor = vb::kColorEntered;
    bool TabStop = true;
    int Left = 0, Top = 0, Width = 0, Height = 0;
    int MaxLength = 1;
    int SelStart = 0;  // the caret
};

struct Label {
    std::string Caption;
    bool Visible = true;
    std::int32_t ForeColor = 0;
    int MousePointer = vb::kPointerDefault;
    int Left = 0, Top = 0, Width = 0, Height = 0;
};

// A picture box or image. `Picture` is the resource number of the bitmap it
// shows (101, 175, 201..., or 0 for none); `Glyph` names a small picture of
// the ring or the mark picker ("markchoice4").
struct PictureBox {
    bool Visible = false;
    int Left = 0, Top = 0, Width = 0, Height = 0;
    int Picture = 0;
    std::string Glyph;
};

// The volume thumb keeps its position as a single-precision number.
struct Thumb {
    bool Visible = true;
    float Left = 75.0f;
    int Top = 1, Width = 14, Height = 14;
};

struct CheckBox {
    int Value = 0;
    bool Visible = true;
    std::int32_t BackColor = vb::kColorCream;
    int Left = 0, Top = 0, Width = 14, Height = 19;
};

struct Timer {
    bool Enabled = false;
    int Interval = 0;
};

struct MenuItem {
    std::string Caption;
    bool Enabled = true;
    bool Visible = true;
};

// A button of the game: an owner-drawn hover button on the form, or one of
// the hidden command buttons that exist for their access keys.
struct CommandButton {
    bool Visible = true;
    bool Enabled = true;
    int Left = 0, Top = 0, Width = 0, Height = 0;
    std::string Caption;
};

// Names a control for the focus: "txtCell" with 5 is txtCell(5); index -1
// for a control that is not part of an array.
struct ControlRef {
    std::string name;
    int index = -1;
    bool operator==(const ControlRef&) const = default;
    bool empty() const { return name.empty(); }
    std::string ToString() const {
        if (name.empty()) return "";
        return index < 0 ? name : name + "(" + std::to_string(index) + ")";
    }
};
