#pragma once
// Qt's keys, modifiers and mouse buttons as the game's handlers take them:
// the one place where the Qt layer translates input into codes.

#include <QKeyEvent>
#include <QMouseEvent>

namespace input {

// The virtual key code of a key event; 0 for keys the game never sees.
int VirtualKey(const QKeyEvent* e);
// Shift 1, Ctrl 2, Alt 4.
int ShiftCode(Qt::KeyboardModifiers m);
// Left 1, right 2, middle 4: one button, or the set of buttons held.
int ButtonCode(Qt::MouseButton b);
int Buttons(Qt::MouseButtons b);
// The printable ASCII character a key event types, or "" for none.
std::string TypedText(const QKeyEvent* e);

}  // namespace input
