#pragma once
// modScreenRes: switches every attached display to a mode of the given size.

#include "forms/Ports.h"

namespace modScreenRes {

void SetDisplayMode(IDisplayMode& display, ISystemMessageBox* sysbox, int Width, int Height);

}  // namespace modScreenRes
