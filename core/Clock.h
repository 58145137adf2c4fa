#pragma once
// The game clock and the falling score as values: the text of the clock, one
// tick, the five-minute penalty and the score at a clock reading.

#include <cstdint>
#include <string>

namespace gameclock {

// The clock's highest count; reaching it puts the clock back to 0.
inline constexpr std::int32_t kWrap = INT32_MAX;

// "m:ss" under an hour, "h:mm:ss" from the hour on.
std::string Text(std::int32_t seconds);

// The clock one second on. A clock at or past its highest count (only a
// direct setting can put it there) wraps like one that reaches it.
std::int32_t Tick(std::int32_t seconds);

// A hint's five minutes: 299 seconds here, the 300th by the tick that
// follows; never past the wrap.
std::int32_t AfterPenalty(std::int32_t seconds);

// The score falls from the base to 0 in an hour. The factor is 0.0002777,
// not 1/3600, so a running game never shows the full base score.
std::int32_t ScoreAt(std::int32_t baseScore, std::int32_t seconds);

// Quarter turns of a newly dealt board for a draw r in [0, 1).
int DealTurns(float r);

}  // namespace gameclock
