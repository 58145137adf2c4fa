#include "forms/frmTessuma.h"

#include <filesystem>
#include <system_error>

#include "audio/modMusic.h"
#include "core/vb.h"

// Songs and the volume slider. The songs play one after the other, around
// and around; the thumb's position on its 75 pixels of track is the only
// store of the volume.

namespace {

constexpr const char* kAlias = "MusicFile";
constexpr float kThumbMax = 75.0f;

// Also takes a position that is no number at all back to the left end.
float ClampThumb(float left) {
    if (!(left > 0.0f)) return 0.0f;
    if (left >= kThumbMax) return kThumbMax;
    return left;
}

// A step of Alt+- or Alt+=: back to the grid of five, then one step on.
float VolumeStep(float left, int step) {
    const std::int32_t n = vb::CLng(left) % 5;
    const std::int32_t p = vb::CLng(static_cast<double>(left) - n) + step;
    return ClampThumb(static_cast<float>(p));
}

}  // namespace

// Goes to the next song. A song file that is missing ends the music here:
// the device stays closed, so the end of a song is never seen again.
void frmTessuma::NextSong() {
    ++SongIndex;
    if (SongIndex > SongLast) SongIndex = 0;
    if (ports.music) {
        // Nothing to stop or close before the first song; those answers go.
        modMusic::MusicStop(*ports.music, kAlias);
        modMusic::MusicClose(*ports.music, kAlias);
    }
    SongPath = ports.programDir + "/Music/tess" + vb::Str(SongIndex) + ".mp3";
    std::error_code ec;
    if (!std::filesystem::is_regular_file(SongPath, ec)) return;
    if (!ports.music) return;
    modMusic::MusicOpen(*ports.music, kAlias, SongPath, "MPEGVideo");
    ApplyVolume();
    modMusic::MusicPlay(*ports.music, kAlias, "", "");
}

// Four times a second: has the song reached its end? The length is asked
// anew every time.
void frmTessuma::tmrSongCheck_Timer() {
    if (!ports.music) return;
    std::int32_t length = 0;
    if (modMusic::MusicAtEnd(*ports.music, kAlias, length)) NextSong();
}

// The thumb's 0..75 to the device's 0..100: the factor 1.33 reaches 100
// only through the rounding.
void frmTessuma::ApplyVolume() {
    const std::int32_t volume = vb::CLng(static_cast<double>(imgVolume.Left) * 1.33);
    if (ports.music) modMusic::MusicSetVolume(*ports.music, kAlias, "all", volume);
}

// Any movement over the thumb, X in twips. With the left button held the
// thumb follows the pointer from the point where it was grabbed; without,
// that point is noted. Either way the volume is sent again.
void frmTessuma::imgVolume_MouseMove(int Button, int Shift, float X, float Y) {
    const int twips = ports.screen ? ports.screen->TwipsPerPixelX() : 15;
    const float x = static_cast<float>(static_cast<double>(X) / (twips > 0 ? twips : 15));
    if (Button == 1) {
        imgVolume.Left = imgVolume.Left + x - LastX;
    } else {
        LastX = x;
    }
    imgVolume.Left = ClampThumb(imgVolume.Left);
    ApplyVolume();
}

void frmTessuma::cmdHiddenMinus_Click() {
    imgVolume.Left = VolumeStep(imgVolume.Left, -5);
    ApplyVolume();
}

void frmTessuma::cmdHiddenPlus_Click() {
    imgVolume.Left = VolumeStep(imgVolume.Left, 5);
    ApplyVolume();
}
