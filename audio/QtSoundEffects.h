#pragma once
// The game's seven sound effects, played through Qt Multimedia.
//
// The effects are WAVE files compiled into the program (":/sounds/101.wav" to
// ":/sounds/107.wav"). They are read and decoded once, at construction, and
// played from memory through one audio sink: a new effect cuts off the one
// still playing, nothing is queued and nothing is mixed. Play() only posts
// the request to a small audio thread and returns at once, so a sound goes on
// while the game thread is busy (the solver blocks it). Without a sound
// device, or with a sink that fails, the game goes on in silence. Whether
// sounds are switched on is the caller's business. Create it after the
// application object and destroy it before.

#include <QByteArray>
#include <QString>

#include <array>
#include <memory>
#include <optional>

#include "platform/Ports.h"

class QThread;
class EffectPlayer;

// The samples of one RIFF WAVE file with plain PCM data.
struct WavePcm {
    int formatTag = 0;       // 1 for PCM
    int channels = 0;
    int sampleRate = 0;
    int bitsPerSample = 0;
    QByteArray data;         // interleaved little-endian samples, whole frames only

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
    QtSoundEffects(const QtSoundEffects&) = delete;
    QtSoundEffects& operator=(const QtSoundEffects&) = delete;

    // Starts the effect (101..107) and returns at once; other numbers are ignored.
    void Play(int effect) override;

    // Reads a RIFF WAVE image. Nothing when it is not PCM or is damaged:
    // missing chunks, sizes past the end, no whole frame of data.
    static std::optional<WavePcm> ParseWave(const QByteArray& file);
    // The effect's WAVE file from the program's resources, parsed.
    static std::optional<WavePcm> LoadResource(int effect);
    static QString ResourcePath(int effect);

    // Brings 16-bit PCM at 44.1 kHz, mono or stereo, to the sink's format
    // (16 bit, 44.1 kHz, stereo); empty for anything else.
    static QByteArray ToSinkFormat(const WavePcm& pcm);

    // How many of the seven effects are ready to play.
    int LoadedCount() const;
    // The effect that was started last and may still be sounding, or 0 once
    // it has run out (or when nothing can play). Follows the audio thread.
    int Playing() const;
    // How many effects went to a sound device so far.
    int Started() const;

private:
    std::array<QByteArray, LastEffect - FirstEffect + 1> pcm_;  // in the sink's format
    QThread* thread_ = nullptr;
    EffectPlayer* player_ = nullptr;  // lives in thread_
};
