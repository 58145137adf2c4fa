// The volume slider's arithmetic.
#include "core/Volume.h"

#include "core/vb.h"

namespace volume {

float ClampThumb(float left) {
    if (!(left > 0.0f)) return 0.0f;
    if (left >= kThumbMax) return kThumbMax;
    return left;
}

float Step(float left, int step) {
    const std::int32_t n = vb::CLng(left) % 5;
    const std::int32_t p = vb::CLng(static_cast<double>(left) - n) + step;
    return ClampThumb(static_cast<float>(p));
}

std::int32_t DeviceVolume(float left) { return vb::CLng(static_cast<double>(left) * 1.33); }

float StoredThumb(double stored) {
    double v = vb::RoundHalfEven(stored);
    if (v < 0) v = 0;
    if (v > 75) v = 75;
    return static_cast<float>(v);
}

}  // namespace volume
