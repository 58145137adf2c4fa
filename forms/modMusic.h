#pragma once
// modMusic: the music commands of the game over the music device. One song
// is open at most, under an alias that the caller chooses ("MusicFile").
//
// Every command that answers with text gives "Success" when the device took
// it, and otherwise the device's own words for the failure. No caller has to
// look at them: a song that cannot play is silence, never a message.

#include <cstdint>
#include <string>

class IMusicDevice;

namespace modMusic {

// Opens the file at `path` under `alias`. The device type ("MPEGVideo") is
// the caller's description of the file; the device finds out by itself.
std::string MusicOpen(IMusicDevice& device, const std::string& alias, const std::string& path,
                      const std::string& deviceType);

// Plays from `from` to `to`, both in the device's unit, and returns at once.
// An empty `from` is the start ("0"), an empty `to` the length of the song.
std::string MusicPlay(IMusicDevice& device, const std::string& alias, const std::string& from, const std::string& to);

std::string MusicClose(IMusicDevice& device, const std::string& alias);
std::string MusicStop(IMusicDevice& device, const std::string& alias);

// Length and position of the open song in one unit; -1 when the device
// cannot tell (nothing open under that alias).
std::int32_t MusicLength(IMusicDevice& device, const std::string& alias);
std::int32_t MusicPosition(IMusicDevice& device, const std::string& alias);

// True when the song has reached its end. A `length` of 0 is fetched from
// the device first and handed back; a length or position of -1 is never
// the end.
bool MusicAtEnd(IMusicDevice& device, const std::string& alias, std::int32_t& length);

// Sets the volume, 0 to 100, sent to the device as 0 to 1000. "left" or
// "right", in any case, set that side and go to the device as spelled here;
// any other side means both. Outside 0..100 nothing is sent and the answer
// is "out of volume".
std::string MusicSetVolume(IMusicDevice& device, const std::string& alias, const std::string& side,
                           std::int32_t volume);

}  // namespace modMusic
