// The music device over QMediaPlayer, answering as the game's device commands expect.
#include "qt/extras/QtMusicDevice.h"

#include <QAudio>
#include <QAudioDevice>
#include <QAudioOutput>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QString>
#include <QUrl>

#include <algorithm>

struct QtMusicDevice::Device {
    std::string alias;
    // The output is declared first so that the player, which uses it, goes first.
    std::unique_ptr<QAudioOutput> output;
    std::unique_ptr<QMediaPlayer> player;
    bool failed = false;        // the media could not be opened or decoded
    bool ended = false;         // played to the end of the song
    long stopAt = -1;           // where a partial play halts, -1 for the end
    bool haltedAtMark = false;  // a partial play reached stopAt
    long pendingFrom = -1;      // a start position asked for before the media was loaded
    qint64 reached = 0;         // the furthest place reported since the last play
    // Where nothing can be heard (no audio device, or the volume at 0) the
    // song is not decoded: its time runs on a clock from `clockFrom`, so the
    // song still ends when it would have.
    bool noDevice = false;
    int volume = 1000;
    bool clockRunning = false;
    long clockFrom = 0;
    QElapsedTimer clock;

    bool Silent() const { return noDevice || volume == 0; }
    // The place on the clock, halted at a partial play's mark.
    long ClockPosition() const {
        long at = clockFrom + (clockRunning ? long(clock.elapsed()) : 0);
        if (stopAt >= 0) at = std::min(at, stopAt);
        return at;
    }
    void StartClock(long from) {
        clockFrom = from;
        clockRunning = true;
        clock.start();
    }
    void StopClock() {
        clockFrom = ClockPosition();
        clockRunning = false;
    }

    bool Loaded() const {
        switch (player->mediaStatus()) {
            case QMediaPlayer::LoadedMedia:
            case QMediaPlayer::BufferingMedia:
            case QMediaPlayer::BufferedMedia:
            case QMediaPlayer::StalledMedia:
            case QMediaPlayer::EndOfMedia: return true;
            default: return false;
        }
    }

    ~Device() {
        // No more news from a player on its way out.
        QObject::disconnect(player.get(), nullptr, nullptr, nullptr);
        player->stop();
        player.reset();
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
    dev->noDevice = QMediaDevices::audioOutputs().isEmpty();
    dev->output = std::make_unique<QAudioOutput>();
    dev->player = std::make_unique<QMediaPlayer>();
    dev->player->setAudioOutput(dev->output.get());

    Device* d = dev.get();
    QMediaPlayer* player = d->player.get();
    QObject::connect(player, &QMediaPlayer::mediaStatusChanged, player, [d](QMediaPlayer::MediaStatus status) {
        switch (status) {
            case QMediaPlayer::LoadedMedia:
                if (d->pendingFrom > 0) d->player->setPosition(d->pendingFrom);
                d->pendingFrom = -1;
                break;
            case QMediaPlayer::EndOfMedia: {
                // A report of the end may arrive late, after the song was started
                // again from an earlier place: only a player near its end ends.
                // The player's own position may already be back at 0 by now, so
                // the furthest place reported since that start counts as well.
                const qint64 duration = d->player->duration();
                const qint64 at = std::max(d->player->position(), d->reached);
                if (duration <= 0 || at >= duration - 1500) d->ended = true;
                break;
            }
            case QMediaPlayer::InvalidMedia: d->failed = true; break;
            default: break;
        }
    });
    QObject::connect(player, &QMediaPlayer::errorOccurred, player, [d](QMediaPlayer::Error error, const QString&) {
        // Errors before the song is known mean it cannot be played at all;
        // later ones (a device lost mid-song) just leave it silent.
        if (error != QMediaPlayer::NoError && d->player->duration() <= 0) d->failed = true;
    });
    QObject::connect(player, &QMediaPlayer::positionChanged, player, [d](qint64 position) {
        d->reached = std::max(d->reached, position);
        if (d->stopAt >= 0 && !d->haltedAtMark && position >= d->stopAt) {
            d->haltedAtMark = true;
            d->player->pause();
        }
    });
    player->setSource(QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()));
    dev_ = std::move(dev);
    return Success;
}

int QtMusicDevice::Play(const std::string& alias, long from, long to) {
    Device* d = Find(alias);
    if (!d) return DeviceNotOpen;
    if (d->failed) return CannotPlay;
    const long length = Length(alias);
    if (from < 0 || (to >= 0 && to < from) || (length >= 0 && from > length)) return OutOfRange;

    d->stopAt = (to < 0 || (length >= 0 && to >= length)) ? -1 : to;
    d->haltedAtMark = false;
    d->ended = false;
    d->reached = from;
    if (length >= 0 && from == length) {
        d->ended = true;  // nothing left to play
        d->player->pause();
        d->StopClock();
        return Success;
    }
    if (d->Silent()) {
        d->StartClock(from);
        return Success;
    }
    if (d->Loaded()) {
        d->player->setPosition(from);
        d->pendingFrom = -1;
    } else {
        d->pendingFrom = from;
    }
    d->player->play();
    return Success;
}

int QtMusicDevice::Stop(const std::string& alias) {
    Device* d = Find(alias);
    if (!d) return DeviceNotOpen;
    if (d->player->playbackState() == QMediaPlayer::PlayingState) d->player->pause();
    if (d->clockRunning) d->StopClock();
    return Success;
}

int QtMusicDevice::Close(const std::string& alias) {
    if (!Find(alias)) return DeviceNotOpen;
    dev_.reset();
    return Success;
}

long QtMusicDevice::Length(const std::string& alias) {
    Device* d = Find(alias);
    if (!d || d->failed) return -1;
    const qint64 duration = d->player->duration();
    return duration > 0 ? long(duration) : -1;
}

long QtMusicDevice::Position(const std::string& alias) {
    const long length = Length(alias);
    if (length < 0) return -1;
    Device* d = Find(alias);
    if (d->ended) return length;  // the player stops a few milliseconds short of its own length
    if (d->Silent() || d->clockRunning) {
        const long at = std::min(d->ClockPosition(), length);
        if (at >= length) d->ended = true;
        return at;
    }
    if (d->haltedAtMark) return d->stopAt;
    return long(std::clamp<qint64>(d->player->position(), 0, length));
}

int QtMusicDevice::SetVolume(const std::string& alias, const std::string& side, int volume) {
    Device* d = Find(alias);
    if (!d) return DeviceNotOpen;
    if (volume < 0 || volume > 1000) return OutOfRange;
    (void)side;  // no balance in Qt: every side sets the whole volume
    d->output->setVolume(OutputVolumeFor(volume));
    const bool wasSilent = d->Silent();
    d->volume = volume;
    if (wasSilent == d->Silent() || d->ended) return Success;
    if (d->Silent() && d->player->playbackState() == QMediaPlayer::PlayingState) {
        // Falling silent: the clock takes over from where the song is.
        d->StartClock(long(d->player->position()));
        d->player->pause();
    } else if (!d->Silent() && d->clockRunning) {
        // Heard again: the song goes on from the clock's place.
        const long at = d->ClockPosition();
        d->clockRunning = false;
        d->reached = at;
        // Playing first, then the seek: a seek into a paused pipeline can
        // be lost when play() follows it at once, leaving the song silent.
        d->player->play();
        if (d->Loaded())
            d->player->setPosition(at);
        else
            d->pendingFrom = at;
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

float QtMusicDevice::OutputVolume() const { return dev_ ? dev_->output->volume() : -1.0f; }

bool QtMusicDevice::IsOpen() const { return dev_ != nullptr; }
