#include "audio/QtSoundEffects.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QFile>
#include <QIODevice>
#include <QMediaDevices>
#include <QMetaObject>
#include <QThread>
#include <QTimer>
#include <QtEndian>

#include <atomic>
#include <cstring>

// The resources live in a static library; naming the initialiser keeps the
// linker from dropping them. Q_INIT_RESOURCE must be used outside namespaces.
static void InitSoundResources()
{
    static const bool done = [] {
        Q_INIT_RESOURCE(sounds);
        return true;
    }();
    (void)done;
}

namespace {

constexpr int kSinkRate = 44100;
constexpr int kSinkChannels = 2;
// How much sound the sink holds ahead: also how long the tail of a replaced
// effect can still be heard.
constexpr int kSinkBufferMicroseconds = 80000;
// A sink that has run dry is closed after this long without a new effect.
constexpr int kIdleCloseMs = 2000;

QAudioFormat SinkFormat()
{
    QAudioFormat f;
    f.setSampleRate(kSinkRate);
    f.setChannelCount(kSinkChannels);
    f.setSampleFormat(QAudioFormat::Int16);
    return f;
}

quint16 U16(const char* p) { return qFromLittleEndian<quint16>(p); }
quint32 U32(const char* p) { return qFromLittleEndian<quint32>(p); }

// Hands the current effect to the sink. Unbuffered, so that replacing the
// effect takes effect at the sink's next read.
class EffectStream : public QIODevice {
public:
    void Replace(const QByteArray& pcm)
    {
        data_ = pcm;
        pos_ = 0;
    }
    bool AtEnd() const { return pos_ >= data_.size(); }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return data_.size() - pos_ + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char* out, qint64 max) override
    {
        const qint64 n = qMin(max, qint64(data_.size()) - pos_);
        if (n <= 0)
            return 0;
        std::memcpy(out, data_.constData() + pos_, size_t(n));
        pos_ += n;
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray data_;
    qint64 pos_ = 0;
};

}  // namespace

// Owns the sink; lives in the audio thread, where all its work runs.
class EffectPlayer : public QObject {
public:
    std::atomic<int> playing{0};
    std::atomic<int> started{0};

    ~EffectPlayer() override
    {
        // The sink still refers to the stream: it has to go first.
        if (sink_) {
            disconnect(sink_, nullptr, this, nullptr);
            sink_->stop();
            delete sink_;
        }
    }

    void Start(int effect, const QByteArray& pcm, const QAudioDevice& device)
    {
        if (!stream_) {
            stream_ = new EffectStream;
            stream_->setParent(this);
            stream_->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
            idle_ = new QTimer(this);
            idle_->setSingleShot(true);
            idle_->setInterval(kIdleCloseMs);
            connect(idle_, &QTimer::timeout, this, [this] {
                if (sink_)
                    sink_->stop();
            });
        }
        idle_->stop();
        // A new default device, or a sink that broke: start over with a fresh one.
        if (sink_ && (device_ != device || (sink_->state() == QAudio::StoppedState &&
                                            sink_->error() != QAudio::NoError))) {
            sink_->stop();
            delete sink_;
            sink_ = nullptr;
        }
        if (!sink_) {
            device_ = device;
            sink_ = new QAudioSink(device, SinkFormat(), this);
            sink_->setBufferSize(SinkFormat().bytesForDuration(kSinkBufferMicroseconds));
            connect(sink_, &QAudioSink::stateChanged, this, [this](QAudio::State state) { OnState(state); });
        }
        stream_->Replace(pcm);
        playing = effect;
        if (sink_->state() == QAudio::StoppedState)
            sink_->start(stream_);
        if (sink_->state() == QAudio::StoppedState) {
            playing = 0;  // no sound this time; the game does not care
            return;
        }
        ++started;
    }

private:
    void OnState(QAudio::State state)
    {
        switch (state) {
        case QAudio::IdleState:
            if (stream_->AtEnd()) {
                playing = 0;
                idle_->start();
            }
            break;
        case QAudio::ActiveState:
            idle_->stop();
            break;
        case QAudio::StoppedState:
            playing = 0;
            break;
        default:
            break;
        }
    }

    QAudioSink* sink_ = nullptr;
    QAudioDevice device_;
    EffectStream* stream_ = nullptr;
    QTimer* idle_ = nullptr;
};

QtSoundEffects::QtSoundEffects()
{
    for (int effect = FirstEffect; effect <= LastEffect; ++effect) {
        if (auto wave = LoadResource(effect))
            pcm_[effect - FirstEffect] = ToSinkFormat(*wave);
    }
    // Asking once here, on the game thread, also brings up the platform's
    // audio service before the first effect is wanted.
    (void)QMediaDevices::defaultAudioOutput();

    thread_ = new QThread;
    thread_->setObjectName(QStringLiteral("sound effects"));
    player_ = new EffectPlayer;
    player_->moveToThread(thread_);
    QObject::connect(thread_, &QThread::finished, player_, &QObject::deleteLater);
    thread_->start();
}

QtSoundEffects::~QtSoundEffects()
{
    thread_->quit();
    thread_->wait();
    delete thread_;
}

void QtSoundEffects::Play(int effect)
{
    if (effect < FirstEffect || effect > LastEffect)
        return;
    const QByteArray& pcm = pcm_[effect - FirstEffect];
    if (pcm.isEmpty())
        return;
    // Devices come and go (a headset plugged in); the list is cached by the
    // platform, so asking each time costs little.
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull() || !device.isFormatSupported(SinkFormat()))
        return;
    EffectPlayer* player = player_;
    QMetaObject::invokeMethod(
        player, [player, effect, pcm, device] { player->Start(effect, pcm, device); }, Qt::QueuedConnection);
}

std::optional<WavePcm> QtSoundEffects::ParseWave(const QByteArray& file)
{
    const char* d = file.constData();
    const qint64 size = file.size();
    if (size < 12 || std::memcmp(d, "RIFF", 4) != 0 || std::memcmp(d + 8, "WAVE", 4) != 0)
        return std::nullopt;

    WavePcm out;
    bool haveFormat = false;
    bool haveData = false;
    qint64 pos = 12;
    while (pos + 8 <= size) {
        const char* id = d + pos;
        const qint64 length = U32(d + pos + 4);
        const qint64 body = pos + 8;
        if (body + length > size)
            return std::nullopt;  // a chunk running past the end of the file
        if (std::memcmp(id, "fmt ", 4) == 0) {
            if (length < 16)
                return std::nullopt;
            const char* f = d + body;
            out.formatTag = U16(f);
            out.channels = U16(f + 2);
            out.sampleRate = int(U32(f + 4));
            const int blockAlign = U16(f + 12);
            out.bitsPerSample = U16(f + 14);
            // WAVE_FORMAT_EXTENSIBLE names the real format in its sub-format.
            if (out.formatTag == 0xFFFE && length >= 40)
                out.formatTag = U16(f + 24);
            if (out.channels < 1 || out.channels > 8 || out.sampleRate < 1000 || out.sampleRate > 384000)
                return std::nullopt;
            if (out.bitsPerSample != 8 && out.bitsPerSample != 16 && out.bitsPerSample != 24 &&
                out.bitsPerSample != 32)
                return std::nullopt;
            if (blockAlign != out.FrameBytes())
                return std::nullopt;
            haveFormat = true;
        } else if (std::memcmp(id, "data", 4) == 0 && !haveData) {
            out.data = file.mid(body, length);
            haveData = true;
        }
        pos = body + length + (length & 1);  // chunks are padded to even sizes
    }
    if (!haveFormat || !haveData || out.formatTag != 1)
        return std::nullopt;
    out.data.truncate(int(out.Frames() * out.FrameBytes()));
    if (out.data.isEmpty())
        return std::nullopt;
    return out;
}

QString QtSoundEffects::ResourcePath(int effect)
{
    return QStringLiteral(":/sounds/%1.wav").arg(effect);
}

std::optional<WavePcm> QtSoundEffects::LoadResource(int effect)
{
    InitSoundResources();
    QFile file(ResourcePath(effect));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return ParseWave(file.readAll());
}

QByteArray QtSoundEffects::ToSinkFormat(const WavePcm& pcm)
{
    if (pcm.formatTag != 1 || pcm.bitsPerSample != 16 || pcm.sampleRate != kSinkRate)
        return {};
    if (pcm.channels == kSinkChannels)
        return pcm.data;
    if (pcm.channels != 1)
        return {};
    const qint64 frames = pcm.Frames();
    QByteArray out(int(frames * 4), Qt::Uninitialized);
    const char* in = pcm.data.constData();
    char* o = out.data();
    for (qint64 i = 0; i < frames; ++i) {
        std::memcpy(o + 4 * i, in + 2 * i, 2);
        std::memcpy(o + 4 * i + 2, in + 2 * i, 2);
    }
    return out;
}

int QtSoundEffects::LoadedCount() const
{
    int n = 0;
    for (const QByteArray& pcm : pcm_)
        n += pcm.isEmpty() ? 0 : 1;
    return n;
}

int QtSoundEffects::Playing() const
{
    return player_->playing;
}

int QtSoundEffects::Started() const
{
    return player_->started;
}
