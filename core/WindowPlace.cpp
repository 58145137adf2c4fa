// Where a stored window place lands: on a screen, or centred on the first.
#include "core/WindowPlace.h"

#include <algorithm>

bool place::GripOnScreen(int x, int y, int width, const std::vector<PixelRect>& screens) {
    // 64-bit sums: stored places can be anything a settings file holds.
    const long long left = x, top = y, right = left + width, bottom = top + kGripRows;
    for (const PixelRect& s : screens) {
        const long long w = std::min<long long>(right, 0LL + s.x + s.w) - std::max<long long>(left, s.x);
        const long long h = std::min<long long>(bottom, 0LL + s.y + s.h) - std::max<long long>(top, s.y);
        if (w >= kGripColumns && h >= kGripShownRows) return true;
    }
    return false;
}
