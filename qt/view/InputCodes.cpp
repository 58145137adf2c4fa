// Translating Qt's input into the game's key, shift and button codes.
#include "qt/view/InputCodes.h"

namespace input {

int VirtualKey(const QKeyEvent* e) {
    const int k = e->key();
    const bool keypad = e->modifiers() & Qt::KeypadModifier;
    if (k >= Qt::Key_0 && k <= Qt::Key_9) return (keypad ? 96 : 48) + (k - Qt::Key_0);
    if (k >= Qt::Key_A && k <= Qt::Key_Z) return 65 + (k - Qt::Key_A);
    switch (k) {
        case Qt::Key_Return:
        case Qt::Key_Enter: return 13;
        case Qt::Key_Escape: return 27;
        case Qt::Key_Space: return 32;
        case Qt::Key_Left: return 37;
        case Qt::Key_Up: return 38;
        case Qt::Key_Right: return 39;
        case Qt::Key_Down: return 40;
        case Qt::Key_Backspace: return 8;
        case Qt::Key_Tab: return 9;
        case Qt::Key_Delete: return 46;
        case Qt::Key_Insert: return keypad ? 96 : 45;
        case Qt::Key_End: return keypad ? 97 : 35;
        case Qt::Key_PageDown: return keypad ? 99 : 34;
        case Qt::Key_PageUp: return keypad ? 105 : 33;
        case Qt::Key_Home: return keypad ? 103 : 36;
        case Qt::Key_Clear: return keypad ? 101 : 12;
        case Qt::Key_F9: return 120;
        // Punctuation for the access keys Alt+-, Alt+=, Alt+, and Alt+.
        case Qt::Key_Minus:
        case Qt::Key_Underscore: return 189;
        case Qt::Key_Equal:
        case Qt::Key_Plus: return 187;
        case Qt::Key_Comma:
        case Qt::Key_Less: return 188;
        case Qt::Key_Period:
        case Qt::Key_Greater: return 190;
        default: break;
    }
    if (k >= Qt::Key_F1 && k <= Qt::Key_F12) return 112 + (k - Qt::Key_F1);
    return 0;
}

int ButtonCode(Qt::MouseButton b) {
    switch (b) {
        case Qt::LeftButton: return 1;
        case Qt::RightButton: return 2;
        case Qt::MiddleButton: return 4;
        default: return 0;
    }
}

int Buttons(Qt::MouseButtons b) {
    return (b & Qt::LeftButton ? 1 : 0) | (b & Qt::RightButton ? 2 : 0) | (b & Qt::MiddleButton ? 4 : 0);
}

int ShiftCode(Qt::KeyboardModifiers m) {
    return (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) | (m & Qt::AltModifier ? 4 : 0);
}

std::string TypedText(const QKeyEvent* e) {
    const QString t = e->text();
    if (t.size() == 1 && t[0].isPrint() && t[0].unicode() < 128)
        return std::string(1, static_cast<char>(t[0].unicode()));
    return {};
}

}  // namespace input
