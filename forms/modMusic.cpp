// modMusic: the song commands the game sends to the music device.
#include "forms/modMusic.h"

#include <climits>

#include "core/vb.h"
#include "forms/Ports.h"

namespace modMusic {

namespace {

std::string Result(IMusicDevice& device, int code) { return code == 0 ? "Success" : device.ErrorText(code); }

// A position given as text: its leading number, rounded.
long PositionOf(const std::string& text) { return static_cast<long>(vb::CLng(vb::Val(text))); }

std::int32_t Clamp32(long value) {
    if (value < INT32_MIN) return INT32_MIN;
    if (value > INT32_MAX) return INT32_MAX;
    return static_cast<std::int32_t>(value);
}

}  // namespace

std::string MusicOpen(IMusicDevice& device, const std::string& alias, const std::string& path,
                      const std::string& deviceType) {
    (void)deviceType;
    return Result(device, device.Open(alias, path));
}

std::string MusicPlay(IMusicDevice& device, const std::string& alias, const std::string& from, const std::string& to) {
    const std::string start = from.empty() ? "0" : from;
    const std::string end = to.empty() ? vb::Str(MusicLength(device, alias)) : to;
    return Result(device, device.Play(alias, PositionOf(start), PositionOf(end)));
}

std::string MusicClose(IMusicDevice& device, const std::string& alias) { return Result(device, device.Close(alias)); }

std::string MusicStop(IMusicDevice& device, const std::string& alias) { return Result(device, device.Stop(alias)); }

std::int32_t MusicLength(IMusicDevice& device, const std::string& alias) {
    const long length = device.Length(alias);
    return length < 0 ? -1 : Clamp32(length);
}

std::int32_t MusicPosition(IMusicDevice& device, const std::string& alias) {
    const long position = device.Position(alias);
    return position < 0 ? -1 : Clamp32(position);
}

bool MusicAtEnd(IMusicDevice& device, const std::string& alias, std::int32_t& length) {
    if (length == 0) length = MusicLength(device, alias);
    const std::int32_t position = MusicPosition(device, alias);
    if (length == -1 || position == -1) return false;
    return position >= length;
}

std::string MusicSetVolume(IMusicDevice& device, const std::string& alias, const std::string& side,
                           std::int32_t volume) {
    if (volume < 0 || volume > 100) return "out of volume";
    const std::string lower = vb::LCase(side);
    const bool oneSide = lower == "left" || lower == "right";
    return Result(device, device.SetVolume(alias, oneSide ? side : "all", volume * 10));
}

}  // namespace modMusic
