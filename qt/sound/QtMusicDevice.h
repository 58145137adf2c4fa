#pragma once
// The music device: MP3 songs decoded by libmpg123 and played through a
// QAudioSink.
//
// One song is open at most, under the alias the caller gives (aliases are
// compared without regard to case). Positions and lengths are milliseconds.
// The length is known as soon as Open() has succeeded. When a song has played
// to its end, Position() gives exactly Length(), so that a caller testing
// "position >= length" sees the end. A missing file fails at Open(); a
// damaged one opens, but Length() stays -1 and Play() reports it. Nothing
// here ever shows a message; results are codes, and ErrorText() turns them
// into words.
//
// Where nothing can be heard (no audio device, the volume at 0, or the sound
// server gone mid-song) nothing is decoded: the song's time runs on a clock,
// so it still ends when it would have, and is heard again from that place
// once the volume comes up.

#include <memory>
#include <string>

#include "forms/Ports.h"

class QtMusicDevice : public IMusicDevice {
public:
    enum Error : int {
        Success = 0,
        DeviceNotOpen = 263,  // no song open under that alias
        MissingAlias = 267,
        FileNotFound = 275,
        OutOfRange = 282,  // a volume or a position outside its range
        DeviceBusy = 288,  // a song is open already under another alias
        AliasInUse = 289,
        CannotPlay = 296,  // the file is damaged or of a kind that cannot be played
    };

    QtMusicDevice();
    ~QtMusicDevice() override;
    QtMusicDevice(const QtMusicDevice&) = delete;
    QtMusicDevice& operator=(const QtMusicDevice&) = delete;

    int Open(const std::string& alias, const std::string& path) override;
    // Plays from `from` to `to` milliseconds and returns at once. A `to`
    // below 0 or at or past the length means the end of the song.
    int Play(const std::string& alias, long from, long to) override;
    // Halts the song where it is.
    int Stop(const std::string& alias) override;
    int Close(const std::string& alias) override;
    long Length(const std::string& alias) override;
    long Position(const std::string& alias) override;
    // volume 0..1000. Qt has no balance, so "left" and "right" set the whole
    // volume like "all" does.
    int SetVolume(const std::string& alias, const std::string& side, int volume) override;
    std::string ErrorText(int code) override;

    // The 0..1000 volume on Qt's linear 0..1 scale. The steps follow the ear
    // (a logarithmic curve), as one expects of a volume control.
    static float OutputVolumeFor(int volume);
    // The volume of the open device on Qt's scale, or -1 with none open.
    float OutputVolume() const;
    // Whether a song is open (under any alias).
    bool IsOpen() const;
    // Whether the open song is being decoded into an audio device right now.
    bool Sounding() const;

private:
    struct Device;
    Device* Find(const std::string& alias) const;

    std::unique_ptr<Device> dev_;
};
