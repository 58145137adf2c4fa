// modScreenRes: the display mode of the maximised game.
#include "forms/modScreenRes.h"

namespace modScreenRes {

void SetDisplayMode(IDisplayMode& display, ISystemMessageBox* sysbox, int Width, int Height) {
    // Walks the display devices from number 0. The walk's last pass runs on
    // what the record still holds, so the last device is changed twice.
    IDisplayMode::Device record;
    for (int i = 0;; ++i) {
        const auto found = display.Enumerate(i);
        if (found) record = *found;
        const std::uint32_t state = record.stateFlags & 0xFFFF;
        if (state == 1 || state == 4 || state == 5) {
            const int result = display.Change(record.name, Width, Height);
            if (result == -1 && sysbox) sysbox->Show("Mode not supported on " + record.description, "Error", 4096);
        }
        if (!found) break;
    }
}

}  // namespace modScreenRes
