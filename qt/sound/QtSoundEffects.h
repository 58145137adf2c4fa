#pragma once
// The game's seven sound effects, played by Qt Multimedia's own effect
// player, QSoundEffect.
//
// The effects are PCM WAVE files compiled into the program
// (":/sounds/101.wav" to ":/sounds/107.wav"), each loaded into Qt's sample
// cache the first time it is played and played from memory after that. Each
// sound gets a player of its own, made for the default output of the moment:
// on PulseAudio a QSoundEffect played a second time misses every other start
// (it still reports playing long after its sound ended), while a fresh player
// on the cached sample never does, and it follows the sound server when that
// restarts. A new effect stops the one still playing: nothing is queued and
// nothing is mixed. Play() returns at once. Without a sound device the game goes on in silence.
// Whether sounds are switched on is the caller's business. Create it after
// the application object and destroy it before.

#include <QByteArray>
#include <QString>

#include <array>
#include <memory>
#include <optional>

#include "forms/Ports.h"

class QSoundEffect;

// The samples of one RIFF WAVE file with plain PCM data.
struct WavePcm {
    int formatTag = 0;  // 1 for PCM
    int channels = 0;
    int sampleRate = 0;
    int bitsPerSample = 0;
    QByteArray data;  // interleaved little-endian samples, whole frames only

    int FrameBytes() const { return channels * bitsPerSample / 8; }
    qint64 Frames() const { return FrameBytes() > 0 ? data.size() / FrameBytes() : 0; }
    double Seconds() const { return sampleRate > 0 ? double(Frames()) / sampleRate : 0.0; }
};

class QtSoundEffects : public ISoundEffects {
public:
    static constexpr int FirstEffect = 101;
    static constexpr int LastEffect = 107;

    QtSoundEffects();
    ~QtSoundEffects() override;

    // Starts the effect (101..107) and returns at once; other numbers are ignored.
    void Play(int effect) override;

    // Reads a RIFF WAVE image. Nothing when it is not PCM or is damaged:
    // missing chunks, sizes past the end, no whole frame of data.
    static std::optional<WavePcm> ParseWave(const QByteArray& file);
    // The effect's WAVE file from the program's resources, parsed.
    static std::optional<WavePcm> LoadResource(int effect);
    static QString ResourcePath(int effect);

    // How many of the seven effects are plain PCM waves that the player takes.
    int LoadedCount() const;
    // The effect sounding now, or 0.
    int Playing() const;
    // How many effects were handed to a player so far.
    int Started() const { return started_; }

private:
    // One loaded player per effect played so far, never played itself: it
    // keeps the sample in Qt's cache, so that a new player starts at once.
    std::array<std::unique_ptr<QSoundEffect>, LastEffect - FirstEffect + 1> cache_;
    std::unique_ptr<QSoundEffect> current_;
    int currentEffect_ = 0;
    int started_ = 0;
};
