#pragma once
// The volume slider's thumb: its 75 pixels of track are the only store of
// the volume.

#include <cstdint>

namespace volume {

inline constexpr float kThumbMax = 75.0f;

// Back onto the track; a position that is no number at all goes to the left end.
float ClampThumb(float left);

// A step of Alt+- or Alt+=: back to the grid of five, then one step on.
float Step(float left, int step);

// The thumb's 0..75 to the device's 0..100: the factor 1.33 reaches 100
// only through the rounding.
std::int32_t DeviceVolume(float left);

// A stored volume as the thumb takes it: 0..75.
float StoredThumb(double stored);

}  // namespace volume
