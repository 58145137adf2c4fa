// The sound effects over QAudioSink.
#include "qt/sound/QtSoundEffects.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QBuffer>
#include <QFile>
#include <QTimer>
#include <QtEndian>

#include <cstring>

#include "qt/sound/Sink.h"
#include "qt/sound/SinkWatch.h"

// The resources live in a static library; naming the initialiser keeps the
// linker from dropping them. Q_INIT_RESOURCE must be used outside namespaces.
static void InitSoundResources() {
    static const bool done = [] {
        Q_INIT_RESOURCE(sounds);
        return true;
    }();
    (void)done;
}

namespace {

quint16 U16(const char* p) { return qFromLittleEndian<quint16>(p); }
quint32 U32(const char* p) { return qFromLittleEndian<quint32>(p); }

// How long a server may take to play a sound it was handed, at most.
constexpr int kHeardWithinMs = 5000;

QAudioFormat::SampleFormat SampleFormatOf(const WavePcm& w) {
    switch (w.bitsPerSample) {
        case 8: return QAudioFormat::UInt8;
        case 16: return QAudioFormat::Int16;
        case 32: return QAudioFormat::Int32;
        default: return QAudioFormat::Unknown;  // 24-bit samples: Qt has no such format
    }
}

}  // namespace

QtSoundEffects::QtSoundEffects() : watch_(SinkWatch::Shared()) { InitSoundResources(); }

int QtSoundEffects::LoadedCount() const {
    int loaded = 0;
    for (int effect = FirstEffect; effect <= LastEffect; ++effect) {
        const auto wave = LoadResource(effect);
        loaded += wave && SampleFormatOf(*wave) != QAudioFormat::Unknown ? 1 : 0;
    }
    return loaded;
}

const WavePcm* QtSoundEffects::Sample(int effect) {
    const std::size_t i = std::size_t(effect - FirstEffect);
    if (!read_[i]) {
        read_[i] = true;
        samples_[i] = LoadResource(effect);
        if (samples_[i] && SampleFormatOf(*samples_[i]) == QAudioFormat::Unknown) samples_[i].reset();
    }
    return samples_[i] ? &*samples_[i] : nullptr;
}

void QtSoundEffects::StopCurrent() {
    sound::Discard(current_);
    current_ = nullptr;
    currentEffect_ = 0;
}

QtSoundEffects::~QtSoundEffects() {
    StopCurrent();
    for (const QPointer<QAudioSink>& sink : finishing_) sound::Discard(sink.data());
}

void QtSoundEffects::Play(int effect) {
    if (effect < FirstEffect || effect > LastEffect) return;
    ++started_;
    // A new effect replaces the one still sounding. One that has had its
    // time is left to end on the server's side: a server with long buffers
    // plays a sound a while after it was handed over, and a sink let go
    // takes its sound with it.
    if (current_ && since_.elapsed() < currentMs_) StopCurrent();
    current_ = nullptr;
    const WavePcm* wave = Sample(effect);
    // On the output the server plays on now; none (the server restarting,
    // the default sink just gone) and the effect goes unheard.
    const QAudioDevice output = watch_->Output();
    if (!wave || output.isNull()) return;

    QAudioFormat format;
    format.setSampleRate(wave->sampleRate);
    format.setChannelCount(wave->channels);
    format.setSampleFormat(SampleFormatOf(*wave));
    auto* sink = new QAudioSink(output, format);
    // The sound's size tells the sink when it has it all: the server starts
    // playing then, whatever it would wait for otherwise.
    auto* source = new QBuffer(sink);
    source->setData(wave->data);  // shared, not copied
    source->open(QIODevice::ReadOnly);
    sink->start(source);
    if (sink->state() == QAudio::StoppedState) {  // no server after all
        sound::Discard(sink);
        return;
    }
    current_ = sink;
    currentEffect_ = effect;
    currentMs_ = qint64(wave->Seconds() * 1000);
    since_.start();
    // Once it has surely been heard (the longest buffer a server keeps is a
    // couple of seconds), its sink goes.
    finishing_.removeAll(nullptr);
    finishing_.append(sink);
    QTimer::singleShot(int(currentMs_) + kHeardWithinMs, sink, [this, sink] {
        if (current_ == sink) {
            current_ = nullptr;
            currentEffect_ = 0;
        }
        finishing_.removeAll(sink);
        sound::Discard(sink);
    });
}

int QtSoundEffects::Playing() const {
    return current_ && since_.elapsed() < currentMs_ ? currentEffect_ : 0;
}

std::optional<WavePcm> QtSoundEffects::ParseWave(const QByteArray& file) {
    const char* d = file.constData();
    const qint64 size = file.size();
    if (size < 12 || std::memcmp(d, "RIFF", 4) != 0 || std::memcmp(d + 8, "WAVE", 4) != 0) return std::nullopt;

    WavePcm out;
    bool haveFormat = false;
    bool haveData = false;
    qint64 pos = 12;
    while (pos + 8 <= size) {
        const char* id = d + pos;
        const qint64 length = U32(d + pos + 4);
        const qint64 body = pos + 8;
        if (body + length > size) return std::nullopt;  // a chunk running past the end of the file
        if (std::memcmp(id, "fmt ", 4) == 0) {
            if (length < 16) return std::nullopt;
            const char* f = d + body;
            out.formatTag = U16(f);
            out.channels = U16(f + 2);
            out.sampleRate = int(U32(f + 4));
            const int blockAlign = U16(f + 12);
            out.bitsPerSample = U16(f + 14);
            // WAVE_FORMAT_EXTENSIBLE names the real format in its sub-format.
            if (out.formatTag == 0xFFFE && length >= 40) out.formatTag = U16(f + 24);
            if (out.channels < 1 || out.channels > 8 || out.sampleRate < 1000 || out.sampleRate > 384000)
                return std::nullopt;
            if (out.bitsPerSample != 8 && out.bitsPerSample != 16 && out.bitsPerSample != 24 && out.bitsPerSample != 32)
                return std::nullopt;
            if (blockAlign != out.FrameBytes()) return std::nullopt;
            haveFormat = true;
        } else if (std::memcmp(id, "data", 4) == 0 && !haveData) {
            out.data = file.mid(body, length);
            haveData = true;
        }
        pos = body + length + (length & 1);  // chunks are padded to even sizes
    }
    if (!haveFormat || !haveData || out.formatTag != 1) return std::nullopt;
    out.data.truncate(int(out.Frames() * out.FrameBytes()));
    if (out.data.isEmpty()) return std::nullopt;
    return out;
}

QString QtSoundEffects::ResourcePath(int effect) { return QStringLiteral(":/sounds/%1.wav").arg(effect); }

std::optional<WavePcm> QtSoundEffects::LoadResource(int effect) {
    InitSoundResources();
    QFile file(ResourcePath(effect));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return ParseWave(file.readAll());
}
