#pragma once
// Where the main window may open: a stored place is kept only while the
// window can still be seen and dragged there.

#include <vector>

namespace place {

struct PixelRect {
    int x = 0, y = 0, w = 0, h = 0;
};

// The part of the window's top edge that must lie on one screen.
constexpr int kGripRows = 16;
constexpr int kGripColumns = 64;

// True when the top kGripRows rows of a window of the given width at (x, y)
// show at least kGripColumns columns on one of the screens.
bool GripOnScreen(int x, int y, int width, const std::vector<PixelRect>& screens);

}  // namespace place
