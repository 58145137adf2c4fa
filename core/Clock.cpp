// The game clock and the falling score.
#include "core/Clock.h"

#include <cmath>

#include "core/vb.h"

namespace gameclock {

namespace {

// A number with at least two digits, as the format "0#" writes it.
std::string TwoDigits(long long n) {
    std::string s = vb::Str(n < 0 ? -n : n);
    if (s.size() < 2) s.insert(0, "0");
    return n < 0 ? "-" + s : s;
}

// Int() of a quotient: the largest whole number not above it.
long long IntDiv(long long a, long long b) {
    long long q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
    return q;
}

}  // namespace

std::string Text(std::int32_t seconds) {
    const long long t = seconds;
    const long long secs = t % 60;
    const long long minutes = IntDiv(t % 3600, 60);
    if (t < 3600) return vb::Str(minutes) + ":" + TwoDigits(secs);
    return vb::Str(IntDiv(t, 3600)) + ":" + TwoDigits(minutes) + ":" + TwoDigits(secs);
}

std::int32_t Tick(std::int32_t seconds) { return seconds >= kWrap - 1 ? 0 : seconds + 1; }

std::int32_t AfterPenalty(std::int32_t seconds) {
    const long long later = static_cast<long long>(seconds) + 299;
    return later >= kWrap - 1 ? kWrap - 1 : static_cast<std::int32_t>(later);
}

std::int32_t ScoreAt(std::int32_t baseScore, std::int32_t seconds) {
    if (seconds >= 3600) return 0;
    const double left = static_cast<double>(3600LL - static_cast<long long>(seconds));
    return vb::CLng(static_cast<double>(baseScore) * (left * 0.0002777));
}

int DealTurns(float r) {
    const int turns = static_cast<int>(std::floor(r * 4.0f));
    return ((turns % 4) + 4) % 4;
}

}  // namespace gameclock
