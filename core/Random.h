#pragma once
// The game's one random generator: Rnd() gives a single-precision value in
// [0, 1). Seeded once at start-up from the time of day.

class IRandom {
public:
    virtual ~IRandom() = default;
    virtual float Rnd() = 0;
    // Seeds the generator from the seconds since midnight.
    virtual void Randomize(float seconds_since_midnight) = 0;
};
