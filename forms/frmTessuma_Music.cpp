// Songs and the volume slider. The songs play one after the other, around
// and around; the thumb's position on its 75 pixels of track is the only
// store of the volume.

#include "forms/frmTessuma.h"

#include "core/Volume.h"
#include "core/vb.h"
#include "forms/modMusic.h"

namespace {

constexpr const char* kAlias = "MusicFile";

}  // namespace

// Goes to the next song. A song file that is missing ends the music here:
// the device stays closed, so the end of a song is never seen again.
void frmTessuma::NextSong() {
    ++songsStarted_;
    ++SongIndex;
    if (SongIndex > SongLast) SongIndex = 0;
    // Nothing to stop or close before the first song; those answers go.
    modMusic::MusicStop(ports.music, kAlias);
    modMusic::MusicClose(ports.music, kAlias);
    SongPath = ports.programDir + "/Music/tess" + vb::Str(SongIndex) + ".mp3";
    if (!ports.files.IsFile(SongPath)) return;
    modMusic::MusicOpen(ports.music, kAlias, SongPath, "MPEGVideo");
    ApplyVolume();
    modMusic::MusicPlay(ports.music, kAlias, "", "");
}

// Four times a second: has the song reached its end? The length is asked
// anew every time.
void frmTessuma::tmrSongCheck_Timer() {
    std::int32_t length = 0;
    if (modMusic::MusicAtEnd(ports.music, kAlias, length)) NextSong();
}

bool frmTessuma::SongCheckTick() {
    const std::uint64_t before = songsStarted_;
    tmrSongCheck_Timer();
    return songsStarted_ != before;
}

void frmTessuma::ApplyVolume() {
    const std::int32_t volume = volume::DeviceVolume(imgVolume.Left);
    modMusic::MusicSetVolume(ports.music, kAlias, "all", volume);
}

// Any movement over the thumb, X in twips. With the left button held the
// thumb follows the pointer from the point where it was grabbed; without,
// that point is noted. Either way the volume is sent again.
void frmTessuma::imgVolume_MouseMove(int Button, int Shift, float X, float Y) {
    const int twips = ports.screen.TwipsPerPixelX();
    const float x = static_cast<float>(static_cast<double>(X) / (twips > 0 ? twips : 15));
    if (Button == 1) {
        imgVolume.Left = imgVolume.Left + x - LastX;
    } else {
        LastX = x;
    }
    imgVolume.Left = volume::ClampThumb(imgVolume.Left);
    ApplyVolume();
}

void frmTessuma::cmdHiddenMinus_Click() {
    imgVolume.Left = volume::Step(imgVolume.Left, -5);
    ApplyVolume();
}

void frmTessuma::cmdHiddenPlus_Click() {
    imgVolume.Left = volume::Step(imgVolume.Left, 5);
    ApplyVolume();
}
