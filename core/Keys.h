#pragma once
// The virtual key codes the game's handlers take, and the walk of the arrow
// keys over the board. The Qt layer maps its keys onto these codes in one
// place (the view's key mapping); scenarios name them by number.

namespace keys {

inline constexpr int kBack = 8, kTab = 9, kEnter = 13, kEsc = 27, kSpace = 32, kEnd = 35, kHome = 36, kLeft = 37,
                     kUp = 38, kRight = 39, kDown = 40, kDelete = 46, kX = 88, kNumpad0 = 96, kNumpad9 = 105, kF9 = 120,
                     kN = 78, kO = 79, kY = 89;

inline constexpr int kOemPlus = 187, kOemComma = 188, kOemMinus = 189, kOemPeriod = 190;

// The Shift argument of a key handler.
inline constexpr int kShiftMask = 1, kCtrlMask = 2, kAltMask = 4;

inline bool IsArrow(int key) { return key >= kLeft && key <= kDown; }

// The next cell of an arrow key. Left and Right run through the board as one
// line of 81 cells; leaving the board at the top goes on one column to the
// left at the bottom, leaving it at the bottom one column to the right at the
// top, so that Up or Down alone visits every cell.
int NextCell(int prev, int key);

// The character an access key of that key code is written with in a
// caption ("&Load" has 'l'), or '\0' for a key no caption can name.
char AccessChar(int key);

}  // namespace keys
