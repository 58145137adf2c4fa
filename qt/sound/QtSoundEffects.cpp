// The sound effects over QSoundEffect.
#include "qt/sound/QtSoundEffects.h"

#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>
#include <QtEndian>

#include <cstring>

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

}  // namespace

namespace {

QUrl EffectUrl(int effect) { return QUrl(QStringLiteral("qrc") + QtSoundEffects::ResourcePath(effect)); }

}  // namespace

QtSoundEffects::QtSoundEffects() { InitSoundResources(); }

QtSoundEffects::~QtSoundEffects() = default;

int QtSoundEffects::LoadedCount() const {
    int loaded = 0;
    for (int effect = FirstEffect; effect <= LastEffect; ++effect) loaded += LoadResource(effect) ? 1 : 0;
    return loaded;
}

void QtSoundEffects::Play(int effect) {
    if (effect < FirstEffect || effect > LastEffect) return;
    // The effect's sample goes into Qt's cache on its first play, and its
    // keeper holds it there from then on. An effect not heard yet holds no
    // memory (all seven held about half a megabyte from the start).
    auto& keeper = cache_[effect - FirstEffect];
    if (!keeper) {
        keeper = std::make_unique<QSoundEffect>();
        keeper->setSource(EffectUrl(effect));
    }
    // A new effect replaces the one still sounding.
    current_.reset();
    current_ = std::make_unique<QSoundEffect>(QMediaDevices::defaultAudioOutput());
    current_->setSource(EffectUrl(effect));
    current_->play();  // starts as soon as the cached sample is taken up
    currentEffect_ = effect;
    ++started_;
}

int QtSoundEffects::Playing() const { return current_ && current_->isPlaying() ? currentEffect_ : 0; }

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
