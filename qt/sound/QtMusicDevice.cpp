// The music device over libmpg123 and QAudioSink, answering as the game's device commands expect.
#include "qt/sound/QtMusicDevice.h"
#include "qt/sound/Sink.h"
#include "qt/sound/SinkWatch.h"

#include <QAudio>
#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QMediaDevices>
#include <QString>
#include <QTimer>

#include <mpg123.h>

#include <algorithm>
#include <climits>

namespace {

struct DecoderDeleter {
    void operator()(mpg123_handle* h) const {
        mpg123_close(h);
        mpg123_delete(h);
    }
};
using Decoder = std::unique_ptr<mpg123_handle, DecoderDeleter>;

// How much sound the sink is asked to hold. The server grants what suits the
// sink's own latency (a quarter of a second to a second); the feed tops it
// up four times over the buffer it got, at most every half second.
constexpr qint64 kBufferAskedUs = 1'000'000;
constexpr int kTopUpMaxMs = 500;
constexpr int kTopUpMinMs = 40;
// A stream starts playing once it holds this much (see SongFeed).
constexpr qint64 kStartAfterUs = 60'000;
// A sink that has played nothing for this long while it should play is
// given up and started anew (on the server's default output as it is then).
constexpr qint64 kStalledMs = 2000;
// A sink that went away is looked for again this often.
constexpr qint64 kRetryMs = 1000;
// A song without an exact length in its header is read through to count its
// frames (a few milliseconds for a song of ours) unless it is bigger than
// this; then its length is estimated from its bit rate.
constexpr qint64 kCountFramesUpTo = 64 * 1024 * 1024;

// A decoder for the song at `path`, its output fixed to 16-bit samples at
// the file's own rate and channels, and its length known. Null when the file
// is no song libmpg123 can play.
Decoder OpenDecoder(const QString& path, long& rate, int& channels, long& lengthMs) {
    static const bool initialised = (mpg123_init(), true);  // needed before libmpg123 1.27, harmless after
    (void)initialised;
    int err = MPG123_OK;
    Decoder h(mpg123_new(nullptr, &err));
    if (!h) return nullptr;
    mpg123_param(h.get(), MPG123_ADD_FLAGS, MPG123_QUIET, 0);
    mpg123_param(h.get(), MPG123_RESYNC_LIMIT, 8192, 0);  // a file of noise is refused soon
    if (mpg123_open(h.get(), QFile::encodeName(path).constData()) != MPG123_OK) return nullptr;
    int encoding = 0;
    if (mpg123_getformat(h.get(), &rate, &channels, &encoding) != MPG123_OK || rate <= 0 || channels < 1 ||
        channels > 2)
        return nullptr;
    mpg123_format_none(h.get());
    if (mpg123_format(h.get(), rate, channels, MPG123_ENC_SIGNED_16) != MPG123_OK) return nullptr;
    long exact = 0;
    double unused = 0;
    if ((mpg123_getstate(h.get(), MPG123_ACCURATE, &exact, &unused) != MPG123_OK || !exact) &&
        QFileInfo(path).size() <= kCountFramesUpTo && mpg123_scan(h.get()) != MPG123_OK)
        return nullptr;
    const off_t samples = mpg123_length(h.get());
    if (samples <= 0) return nullptr;
    lengthMs = long(std::min<qint64>(qint64(samples) * 1000 / rate, LONG_MAX));
    return h;
}

// Hands the sink the song's samples, decoded as the sink asks for them, up to
// a mark. The sink polls its source every 20 ms for as long as it has room
// for a read, and stops once the source answers "nothing yet"; a sink too
// full for a read polls on, until the server asks for more, which a server
// with long buffers does seldom and in large pieces. So each top-up fills the
// sink to a read short of the brim and then answers "nothing yet": the sink
// stops polling at once, the feed rests until the next top-up, and a playing
// song wakes the program a few times a second instead of fifty.
//
// The server starts a stream, and starts it again after running dry, once
// it holds what the stream's size says (or nearly a whole buffer, for a
// stream without one). The size given is a few reads' worth: a feed resting
// short of a whole buffer never waits for a server that waits for it.
class SongFeed : public QIODevice {
public:
    SongFeed(mpg123_handle* decoder, const QAudioFormat& format, QAudioSink* sink)
        : QIODevice(sink),
          decoder_(decoder),
          sink_(sink),
          frameBytes_(format.bytesPerFrame()),
          startBytes_(format.bytesForDuration(kStartAfterUs)) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    // Starts feeding at the decoder's place, with `left` bytes to the mark.
    void Begin(qint64 left) {
        left_ = left - left % frameBytes_;
        exhausted_ = left_ <= 0;
        resting_ = false;
    }
    void TopUp() {
        if (exhausted_) return;
        resting_ = false;
        emit readyRead();
    }

    bool isSequential() const override { return true; }
    // What the server waits for before it plays (see above).
    qint64 size() const override { return std::min(left_, startBytes_); }
    bool atEnd() const override { return exhausted_; }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        if (exhausted_ || resting_) return 0;
        // Room for less than two reads, and a read's worth held: rest here.
        const qint64 room = sink_->bytesFree();
        if (room < 2 * maxSize && sink_->bufferSize() - room >= maxSize) {
            resting_ = true;
            return 0;
        }
        const qint64 want = std::min(maxSize - maxSize % frameBytes_, left_);
        size_t done = 0;
        const int rc = want > 0 ? mpg123_read(decoder_, reinterpret_cast<unsigned char*>(data), size_t(want), &done)
                                : MPG123_DONE;
        done -= done % size_t(frameBytes_);
        left_ -= qint64(done);
        // The end of the file, a damaged stretch the decoder gives up on, or the mark.
        if (left_ <= 0 || (rc != MPG123_OK && rc != MPG123_NEW_FORMAT)) exhausted_ = true;
        return qint64(done);
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    mpg123_handle* decoder_;
    QAudioSink* sink_;
    const int frameBytes_;
    const qint64 startBytes_;
    qint64 left_ = 0;
    bool exhausted_ = true;
    bool resting_ = false;
};

}  // namespace

struct QtMusicDevice::Device {
    std::string alias;
    Decoder decoder;  // null for a file that cannot be played
    QAudioFormat format;
    long length = -1;
    int volume = 1000;
    std::shared_ptr<SinkWatch> watch = SinkWatch::Shared();

    // Where the song is: `at` while halted; while running, `at` is where this
    // stretch of the run began, and the time since comes from the sink or,
    // without one, from the clock. A run without a sink (the volume at 0, no
    // output, the server gone) still goes on in time; a sink that comes back
    // takes over at the clock's place.
    long at = 0;
    long stopAt = -1;  // where a partial play halts, -1 for the end
    bool running = false;
    QElapsedTimer clock;
    QAudioSink* sink = nullptr;
    SongFeed* feed = nullptr;  // owned by the sink
    QByteArray output;         // the output the sink plays on
    QTimer topUp;
    // The sink's watch: how far it had played when last asked, since when
    // it has played nothing more, and since the last try to make a sink.
    qint64 played = 0;
    QElapsedTimer sincePlayed;
    QElapsedTimer sinceTry;
    // Since the feed handed over the song's last samples, and how far the
    // sink had played then: from there the song ends by the clock (the sink
    // counts what it has played only up to its own latency short of the end).
    QElapsedTimer sinceLast;
    qint64 playedAtLast = 0;

    ~Device() { sound::Discard(sink); }

    bool Silent() const { return volume == 0; }
    long Mark() const { return stopAt >= 0 ? stopAt : length; }

    long Here() const {
        if (!running) return at;
        const qint64 since = sink ? SinkPlayed() : clock.elapsed();
        return long(std::min<qint64>(at + since, Mark()));
    }

    qint64 SinkPlayed() const {
        // A sink that has stopped says 0; what it played before stays played.
        const qint64 counted = std::max<qint64>(sink->processedUSecs() / 1000, played);
        return sinceLast.isValid() ? std::max(counted, playedAtLast + sinceLast.elapsed()) : counted;
    }

    void DropSink() {
        topUp.stop();
        sound::Discard(sink);
        sink = nullptr;
        feed = nullptr;
    }

    // Ends the run at the place it has reached.
    void Halt() {
        at = Here();
        running = false;
        DropSink();
    }

    void Run() {
        running = true;
        clock.start();
        sinceTry.start();
        if (!Silent() && !StartSink()) DropSink();
    }

    bool StartSink() {
        const QAudioDevice out = watch->Output();
        if (out.isNull()) return false;
        const off_t sample = off_t(qint64(at) * format.sampleRate() / 1000);
        if (mpg123_seek(decoder.get(), sample, SEEK_SET) < 0) return false;
        sink = new QAudioSink(out, format);
        sink->setBufferSize(format.bytesForDuration(kBufferAskedUs));
        sink->setVolume(OutputVolumeFor(volume));
        feed = new SongFeed(decoder.get(), format, sink);
        feed->Begin(format.bytesForDuration(qint64(Mark() - at) * 1000));
        sink->start(feed);
        if (sink->state() == QAudio::StoppedState) return false;  // the server is not there after all
        output = out.id();
        played = 0;
        sincePlayed.start();
        sinceLast.invalidate();
        QObject::connect(sink, &QAudioSink::stateChanged, sink, [this](QAudio::State state) {
            if (state == QAudio::StoppedState && sink && sink->error() != QAudio::NoError) Lost();
        });
        const qint64 grantedMs = format.durationForBytes(sink->bufferSize()) / 1000;
        topUp.setInterval(int(std::clamp<qint64>(grantedMs / 4, kTopUpMinMs, kTopUpMaxMs)));
        topUp.start();
        return true;
    }

    // The sink stopped playing (the server went away, the stream failed, it
    // played nothing for too long): the clock takes over from what was heard,
    // and a sink is looked for again before long.
    void Lost() {
        if (!sink) return;
        at = long(std::min<qint64>(at + SinkPlayed(), Mark()));
        clock.start();
        sinceTry.start();
        DropSink();
    }

    // Four times a second while a song plays (the game asks where it is),
    // and whenever the server's outputs change: a sink that plays nothing, or
    // on an output that is no longer the default, is started anew; a run
    // that lost its sink gets one again once there is an output.
    void Watch() {
        if (!running || Silent() || !decoder) return;
        if (sink) {
            const qint64 now = SinkPlayed();
            if (now > played) {
                played = now;
                sincePlayed.start();
            }
            if (feed->atEnd()) {
                if (!sinceLast.isValid()) {
                    playedAtLast = now;
                    sinceLast.start();
                }
                sincePlayed.start();  // nothing more to play is no stall
            }
            const QAudioDevice out = watch->Output();
            const bool moved = out.isNull() || out.id() != output;
            if (moved || sincePlayed.elapsed() >= kStalledMs) {
                Lost();
                if (!moved) return;  // a stalled sink rests a while first
                sinceTry.invalidate();
            }
        }
        if (!sink && (!sinceTry.isValid() || sinceTry.elapsed() >= kRetryMs)) {
            at = Here();
            clock.start();
            sinceTry.start();
            if (!StartSink()) DropSink();
        }
    }
};

QtMusicDevice::QtMusicDevice() = default;

QtMusicDevice::~QtMusicDevice() = default;

QtMusicDevice::Device* QtMusicDevice::Find(const std::string& alias) const {
    if (!dev_ || alias.empty()) return nullptr;
    if (alias == dev_->alias) return dev_.get();  // the usual case, asked four times a second
    if (QString::fromStdString(alias).compare(QString::fromStdString(dev_->alias), Qt::CaseInsensitive) != 0)
        return nullptr;
    return dev_.get();
}

int QtMusicDevice::Open(const std::string& alias, const std::string& path) {
    if (alias.empty()) return MissingAlias;
    if (dev_) return Find(alias) ? AliasInUse : DeviceBusy;
    const QString file = QString::fromStdString(path);
    if (file.isEmpty() || !QFileInfo(file).isFile()) return FileNotFound;

    auto dev = std::make_unique<Device>();
    dev->alias = alias;
    long rate = 0;
    int channels = 0;
    dev->decoder = OpenDecoder(file, rate, channels, dev->length);
    if (dev->decoder) {
        dev->format.setSampleRate(int(rate));
        dev->format.setChannelCount(channels);
        dev->format.setSampleFormat(QAudioFormat::Int16);
    } else {
        dev->length = -1;
    }
    Device* d = dev.get();
    QObject::connect(&dev->topUp, &QTimer::timeout, [d] {
        if (d->feed) d->feed->TopUp();
    });
    QObject::connect(dev->watch.get(), &SinkWatch::Changed, &dev->topUp, [d] { d->Watch(); });
    dev_ = std::move(dev);
    return Success;
}

int QtMusicDevice::Play(const std::string& alias, long from, long to) {
    Device* d = Find(alias);
    if (!d) return DeviceNotOpen;
    if (!d->decoder) return CannotPlay;
    if (from < 0 || (to >= 0 && to < from) || from > d->length) return OutOfRange;

    d->Halt();
    d->stopAt = (to < 0 || to >= d->length) ? -1 : to;
    d->at = from;
    if (from < d->length) d->Run();  // else nothing is left to play
    return Success;
}

int QtMusicDevice::Stop(const std::string& alias) {
    Device* d = Find(alias);
    if (!d) return DeviceNotOpen;
    if (d->running) d->Halt();
    return Success;
}

int QtMusicDevice::Close(const std::string& alias) {
    if (!Find(alias)) return DeviceNotOpen;
    dev_.reset();
    return Success;
}

long QtMusicDevice::Length(const std::string& alias) {
    Device* d = Find(alias);
    return d ? d->length : -1;
}

long QtMusicDevice::Position(const std::string& alias) {
    Device* d = Find(alias);
    if (!d || d->length < 0) return -1;
    d->Watch();
    const long here = d->Here();
    // At the mark a partial play halts, and a whole one has ended.
    if (d->running && here >= d->Mark()) d->Halt();
    return here;
}

int QtMusicDevice::SetVolume(const std::string& alias, const std::string& side, int volume) {
    Device* d = Find(alias);
    if (!d) return DeviceNotOpen;
    if (volume < 0 || volume > 1000) return OutOfRange;
    (void)side;  // no balance in Qt: every side sets the whole volume
    const bool wasSilent = d->Silent();
    d->volume = volume;
    if (d->sink) d->sink->setVolume(OutputVolumeFor(volume));
    if (wasSilent != d->Silent() && d->running && d->decoder) {
        // Falling silent, the clock takes over from where the song is; heard
        // again, the song goes on from the clock's place.
        d->Halt();
        d->Run();
    }
    return Success;
}

std::string QtMusicDevice::ErrorText(int code) {
    switch (code) {
        case Success: return "The specified command was carried out.";
        case DeviceNotOpen: return "The specified device is not open or is not recognized.";
        case MissingAlias: return "A device name or alias is required.";
        case FileNotFound: return "Cannot find the specified file. Make sure the path and file name are correct.";
        case OutOfRange: return "The specified parameter is out of range for the specified command.";
        case DeviceBusy: return "Another song is open already. Close it before opening a new one.";
        case AliasInUse: return "The specified alias is already being used. Use a unique alias.";
        case CannotPlay:
            return "The specified file cannot be played. It may be damaged or in a format that cannot be decoded.";
        default: return "Unknown error " + std::to_string(code) + ".";
    }
}

float QtMusicDevice::OutputVolumeFor(int volume) {
    const float v = float(std::clamp(volume, 0, 1000)) / 1000.0f;
    if (v <= 0.0f) return 0.0f;
    if (v >= 1.0f) return 1.0f;
    return QAudio::convertVolume(v, QAudio::LogarithmicVolumeScale, QAudio::LinearVolumeScale);
}

float QtMusicDevice::OutputVolume() const { return dev_ ? OutputVolumeFor(dev_->volume) : -1.0f; }

bool QtMusicDevice::IsOpen() const { return dev_ != nullptr; }

bool QtMusicDevice::Sounding() const { return dev_ && dev_->sink != nullptr; }
