#pragma once
// Window-manager hints that Qt has no flag for, set on a top-level window
// before it is mapped. Nothing happens off X11.

class QWidget;

namespace x11hints {

// A small fixed tool window with an empty caption: kept out of the task
// bar and the pager, and asking the window manager for move and close only
// (some managers, openbox among them, offer minimise to every window all
// the same).
void MakeFixedToolWindow(QWidget* window);

}  // namespace x11hints
