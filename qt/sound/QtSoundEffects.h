#pragma once
// The game's seven sound effects, played through QAudioSink.
//
// The effects are PCM WAVE files compiled into the program
// (":/sounds/101.wav" to ":/sounds/107.wav"), each read the first time it is
// played and played from memory after that. Each sound gets a sink of its
// own on the output the sound server plays on at that moment, so it follows
// the server when that restarts or the player picks another output. The sink
// is told how long the sound is: a server running with long buffers waits
// for a buffer's worth of sound before it plays, and a sound shorter than
// that (the 50 ms click) would otherwise never start. A new effect stops the
// one still playing: nothing is queued and nothing is mixed. Play() returns
// at once. Without a sound device the game goes on in silence. Whether
// sounds are switched on is the caller's business. Create it after the
// application object and destroy it before.

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QString>

#include <array>
#include <memory>
#include <optional>

#include "forms/Ports.h"

class QAudioSink;
class SinkWatch;

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

    // How many of the seven effects are PCM waves that the player takes.
    int LoadedCount() const;
    // The effect sounding now, or 0.
    int Playing() const;
    // How many effects were handed to a player so far.
    int Started() const { return started_; }

private:
    // An effect's samples, read on its first play and kept; nothing for one
    // that can't be played.
    const WavePcm* Sample(int effect);
    void StopCurrent();

    std::array<std::optional<WavePcm>, LastEffect - FirstEffect + 1> samples_;
    std::array<bool, LastEffect - FirstEffect + 1> read_{};
    std::shared_ptr<SinkWatch> watch_;  // which output to play on
    QAudioSink* current_ = nullptr;     // the sink of the effect sounding now
    QList<QPointer<QAudioSink>> finishing_;  // every sink still at the server, current_ too
    int currentEffect_ = 0;
    qint64 currentMs_ = 0;              // its length
    QElapsedTimer since_;               // since it started
    int started_ = 0;
};
