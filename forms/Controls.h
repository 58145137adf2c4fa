#pragma once
// The controls of the form models: plain fields holding exactly the
// properties that the game's rules read and write. Positions are pixels of
// the form's own scale unless a comment says twips.

#include <climits>
#include <cstdint>
#include <string>

#include "core/vb.h"

// Each kind of control declared once, as a list of its properties:
// PROP(Type, name, default, kind, lo, hi), kind being how a scenario reads
// and writes it (Text, Bool, Int within lo..hi, Colour, Float). The structs
// below and the scenario language's property paths are made from these lists.

#define TEXTFIELD_PROPS(PROP)                                                      \
    PROP(std::string, Text, , Text, 0, 0)                                          \
    PROP(bool, Visible, true, Bool, 0, 0)                                          \
    PROP(bool, Locked, false, Bool, 0, 0)                                          \
    PROP(std::int32_t, ForeColor, vb::kColorEntered, Colour, INT32_MIN, INT32_MAX) \
    PROP(bool, TabStop, true, Bool, 0, 0)                                          \
    PROP(int, Left, 0, Int, INT32_MIN, INT32_MAX)                                  \
    PROP(int, Top, 0, Int, INT32_MIN, INT32_MAX)                                   \
    PROP(int, Width, 0, Int, INT32_MIN, INT32_MAX)                                 \
    PROP(int, Height, 0, Int, INT32_MIN, INT32_MAX)                                \
    PROP(int, MaxLength, 1, Int, 0, 65535)                                         \
    PROP(int, SelStart, 0, Int, 0, 65535) /* the caret */

#define LABEL_PROPS(PROP)                                          \
    PROP(std::string, Caption, , Text, 0, 0)                       \
    PROP(bool, Visible, true, Bool, 0, 0)                          \
    PROP(std::int32_t, ForeColor, 0, Colour, INT32_MIN, INT32_MAX) \
    PROP(int, MousePointer, vb::kPointerDefault, Int, 0, 99)       \
    PROP(int, Left, 0, Int, INT32_MIN, INT32_MAX)                  \
    PROP(int, Top, 0, Int, INT32_MIN, INT32_MAX)                   \
    PROP(int, Width, 0, Int, INT32_MIN, INT32_MAX)                 \
    PROP(int, Height, 0, Int, INT32_MIN, INT32_MAX)

// A picture box or image. `Picture` is the resource number of the bitmap it
// shows (101, 175, 201..., or 0 for none); `Glyph` names a small picture of
// the ring or the mark picker ("markchoice4").
#define PICTUREBOX_PROPS(PROP)                       \
    PROP(bool, Visible, false, Bool, 0, 0)           \
    PROP(int, Left, 0, Int, INT32_MIN, INT32_MAX)    \
    PROP(int, Top, 0, Int, INT32_MIN, INT32_MAX)     \
    PROP(int, Width, 0, Int, INT32_MIN, INT32_MAX)   \
    PROP(int, Height, 0, Int, INT32_MIN, INT32_MAX)  \
    PROP(int, Picture, 0, Int, INT32_MIN, INT32_MAX) \
    PROP(std::string, Glyph, , Text, 0, 0)

// The volume thumb keeps its position as a single-precision number.
#define THUMB_PROPS(PROP)                           \
    PROP(bool, Visible, true, Bool, 0, 0)           \
    PROP(float, Left, 75.0f, Float, 0, 0)           \
    PROP(int, Top, 1, Int, INT32_MIN, INT32_MAX)    \
    PROP(int, Width, 14, Int, INT32_MIN, INT32_MAX) \
    PROP(int, Height, 14, Int, INT32_MIN, INT32_MAX)

#define CHECKBOX_PROPS(PROP)                                                     \
    PROP(int, Value, 0, Int, 0, 2)                                               \
    PROP(bool, Visible, true, Bool, 0, 0)                                        \
    PROP(std::int32_t, BackColor, vb::kColorCream, Colour, INT32_MIN, INT32_MAX) \
    PROP(int, Left, 0, Int, INT32_MIN, INT32_MAX)                                \
    PROP(int, Top, 0, Int, INT32_MIN, INT32_MAX)                                 \
    PROP(int, Width, 14, Int, INT32_MIN, INT32_MAX)                              \
    PROP(int, Height, 19, Int, INT32_MIN, INT32_MAX)

#define TIMER_PROPS(PROP)                  \
    PROP(bool, Enabled, false, Bool, 0, 0) \
    PROP(int, Interval, 0, Int, 0, 65535)

#define MENUITEM_PROPS(PROP)                 \
    PROP(std::string, Caption, , Text, 0, 0) \
    PROP(bool, Enabled, true, Bool, 0, 0)    \
    PROP(bool, Visible, true, Bool, 0, 0)

// A button of the game: an owner-drawn hover button on the form, or one of
// the hidden command buttons that exist for their access keys.
#define COMMANDBUTTON_PROPS(PROP)                   \
    PROP(bool, Visible, true, Bool, 0, 0)           \
    PROP(bool, Enabled, true, Bool, 0, 0)           \
    PROP(int, Left, 0, Int, INT32_MIN, INT32_MAX)   \
    PROP(int, Top, 0, Int, INT32_MIN, INT32_MAX)    \
    PROP(int, Width, 0, Int, INT32_MIN, INT32_MAX)  \
    PROP(int, Height, 0, Int, INT32_MIN, INT32_MAX) \
    PROP(std::string, Caption, , Text, 0, 0)

// Every kind of control with its list.
#define CONTROL_KINDS(KIND)            \
    KIND(TextField, TEXTFIELD_PROPS)   \
    KIND(Label, LABEL_PROPS)           \
    KIND(PictureBox, PICTUREBOX_PROPS) \
    KIND(Thumb, THUMB_PROPS)           \
    KIND(CheckBox, CHECKBOX_PROPS)     \
    KIND(Timer, TIMER_PROPS)           \
    KIND(MenuItem, MENUITEM_PROPS)     \
    KIND(CommandButton, COMMANDBUTTON_PROPS)

#define TESSUMA_FIELD(Type, name, init, kind, lo, hi) Type name{init};
#define TESSUMA_CONTROL_STRUCT(Kind, PROPS) \
    struct Kind {                           \
        PROPS(TESSUMA_FIELD)                \
    };
CONTROL_KINDS(TESSUMA_CONTROL_STRUCT)
#undef TESSUMA_CONTROL_STRUCT
#undef TESSUMA_FIELD

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
