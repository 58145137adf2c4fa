#pragma once
// Long work of the game on a thread of its own, while the window's thread
// waits in an event loop: the window repaints, the desktop's pings are
// answered, and a close stops the work. The player's input waits, and the
// busy pointer shows.

#include "forms/Ports.h"

class QtBackground : public IBackground {
public:
    bool Run(const std::function<void()>& work, const std::function<void()>& stop) override;

    // Whether a work is running now.
    static bool Busy();
    // The window is closing: the running work is asked to stop, and Run
    // returns false once it has.
    static void StopForClose();
};
