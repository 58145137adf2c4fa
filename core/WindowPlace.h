#pragma once
// Where the main window may open: a stored place is kept only while the
// window can still be seen and dragged there.

#include <vector>

namespace place {

struct PixelRect {
    int x = 0, y = 0, w = 0, h = 0;
};

// The part of the window's top edge that must lie on one screen: at least
// kGripShownRows of its top kGripRows rows, over at least kGripColumns.
// A window a few rows above the screen can still be taken by its top.
constexpr int kGripRows = 16;
constexpr int kGripShownRows = 8;
constexpr int kGripColumns = 64;

// True when at least kGripShownRows of the top kGripRows rows of a window of
// the given width at (x, y) show at least kGripColumns columns on one of the
// screens.
bool GripOnScreen(int x, int y, int width, const std::vector<PixelRect>& screens);

}  // namespace place
