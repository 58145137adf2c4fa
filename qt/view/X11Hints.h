#pragma once
// Window-manager hints that Qt has no flag for, set on a top-level window
// before it is mapped. Nothing happens off X11.

class QWidget;

namespace x11hints {

// A small fixed tool window that draws its own frame: kept out of the task
// bar and the pager, undecorated, and offering the window manager move and
// close only (a manager's frame would offer minimise whatever the hints say).
void MakeFixedToolWindow(QWidget* window);

}  // namespace x11hints
