// The sound effects and the music device over Qt Multimedia. Runs without a
// sound server: the effects must then stay silent and harmless, and a song's
// time still runs; with one, the song is heard too.

#include <QAudioDevice>
#include <QElapsedTimer>
#include <QFile>
#include <QMediaDevices>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <cmath>
#include <memory>

#include "qt/sound/QtMusicDevice.h"
#include "qt/sound/QtSoundEffects.h"

namespace {

const std::string kAlias = "MusicFile";

qint16 SampleAt(const QByteArray& data, qint64 index) {
    return qFromLittleEndian<qint16>(data.constData() + 2 * index);
}

QString SongPath(int n) { return QFINDTESTDATA(QStringLiteral("../../resources/Music/tess%1.mp3").arg(n)); }

bool HaveSoundDevice() { return !QMediaDevices::defaultAudioOutput().isNull(); }

}  // namespace

class tst_Audio : public QObject {
    Q_OBJECT

private slots:
    void effectResources_data();
    void effectResources();
    void effectLevelsMatch();
    void effectsNeverBlock();

    void missingSongIsAnErrorAndSilence();
    void songsLoadWithTheirLength_data();
    void songsLoadWithTheirLength();
    void playStopAndClose();
    void positionReachesLengthAtTheEnd();
    void partialPlayHaltsAtItsMark();
    void silentSongKeepsItsTime();
    void volumeRangeAndSides();
    void oneDeviceAtATime();
    void damagedSongFailsQuietly();
};

// --------------------------------------------------------------------------
// Sound effects

void tst_Audio::effectResources_data() {
    QTest::addColumn<int>("effect");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<int>("channels");
    QTest::newRow("SoundPuzzleStart") << 101 << 2.6 << 1;
    QTest::newRow("SoundMessage") << 102 << 0.76 << 1;
    QTest::newRow("SoundDigitOk") << 103 << 0.24 << 1;
    QTest::newRow("SoundHintFill") << 104 << 0.20 << 1;
    QTest::newRow("SoundSolved") << 105 << 1.1 << 2;
    QTest::newRow("SoundNavClick") << 106 << 0.05 << 1;
    QTest::newRow("SoundPopupOpen") << 107 << 0.34 << 1;
}

void tst_Audio::effectResources() {
    QFETCH(int, effect);
    QFETCH(double, seconds);
    QFETCH(int, channels);

    const auto wave = QtSoundEffects::LoadResource(effect);
    QVERIFY2(wave, "missing or not a PCM wave");
    QFile file(QtSoundEffects::ResourcePath(effect));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray raw = file.readAll();
    QCOMPARE(qFromLittleEndian<quint32>(raw.constData() + 4), quint32(raw.size() - 8));

    QCOMPARE(wave->formatTag, 1);
    QCOMPARE(wave->bitsPerSample, 16);
    QCOMPARE(wave->sampleRate, 44100);
    QCOMPARE(wave->channels, channels);
    QVERIFY2(std::abs(wave->Seconds() - seconds) <= 0.1 * seconds + 0.005,
             qPrintable(QString::number(wave->Seconds())));

    // Faded at both ends, never clipped, never near silent.
    const qint64 n = wave->data.size() / 2;
    int peak = 0;
    for (qint64 i = 0; i < n; ++i) peak = std::max(peak, std::abs(int(SampleAt(wave->data, i))));
    QVERIFY2(peak < 32000, qPrintable(QString::number(peak)));
    QVERIFY2(peak > 3000, qPrintable(QString::number(peak)));
    for (int ch = 0; ch < channels; ++ch) {
        QVERIFY(std::abs(SampleAt(wave->data, ch)) < 64);
        QVERIFY(std::abs(SampleAt(wave->data, n - channels + ch)) < 64);
    }
}

void tst_Audio::effectLevelsMatch() {
    // The loudest 50 ms of each effect: no effect may jump out over the others.
    double quietest = 0.0, loudest = -200.0;
    for (int effect = QtSoundEffects::FirstEffect; effect <= QtSoundEffects::LastEffect; ++effect) {
        const auto wave = QtSoundEffects::LoadResource(effect);
        QVERIFY(wave);
        const qint64 frames = wave->Frames();
        const qint64 window = std::min<qint64>(frames, 2205);
        std::vector<double> power(size_t(frames + 1), 0.0);
        for (qint64 f = 0; f < frames; ++f) {
            double p = 0.0;
            for (int ch = 0; ch < wave->channels; ++ch) {
                const double s = SampleAt(wave->data, f * wave->channels + ch) / 32768.0;
                p += s * s / wave->channels;
            }
            power[size_t(f + 1)] = power[size_t(f)] + p;
        }
        double best = 0.0;
        for (qint64 f = window; f <= frames; ++f)
            best = std::max(best, (power[size_t(f)] - power[size_t(f - window)]) / double(window));
        const double db = 10.0 * std::log10(best);
        quietest = std::min(quietest, db);
        loudest = std::max(loudest, db);
    }
    QVERIFY2(loudest - quietest < 8.0, qPrintable(QStringLiteral("%1 .. %2 dB").arg(quietest).arg(loudest)));
    QVERIFY2(loudest < -8.0 && quietest > -26.0, qPrintable(QStringLiteral("%1 .. %2 dB").arg(quietest).arg(loudest)));
}

void tst_Audio::effectsNeverBlock() {
    auto fx = std::make_unique<QtSoundEffects>();
    QCOMPARE(fx->LoadedCount(), 7);

    // Every effect back to back, with numbers that are no effect among them:
    // each starts (or is refused) at once, none waits for the one before.
    for (int effect : {101, 102, 103, 104, 105, 106, 107, 0, -1, 100, 108, 101}) fx->Play(effect);
    QCOMPARE(fx->Started(), 8);
    // Gone in the middle of a sound: no hang, no crash.
    fx.reset();
}

// --------------------------------------------------------------------------
// Music device

void tst_Audio::missingSongIsAnErrorAndSilence() {
    QtMusicDevice music;
    const int open = music.Open(kAlias, "/nonexistent/Music/tess1.mp3");
    QCOMPARE(open, int(QtMusicDevice::FileNotFound));
    QVERIFY(!music.IsOpen());
    QVERIFY(!music.ErrorText(open).empty());
    QVERIFY(music.ErrorText(open) != music.ErrorText(QtMusicDevice::DeviceNotOpen));

    QCOMPARE(music.Length(kAlias), -1L);
    QCOMPARE(music.Position(kAlias), -1L);
    QCOMPARE(music.Play(kAlias, 0, -1), int(QtMusicDevice::DeviceNotOpen));
    QCOMPARE(music.Stop(kAlias), int(QtMusicDevice::DeviceNotOpen));
    QCOMPARE(music.Close(kAlias), int(QtMusicDevice::DeviceNotOpen));
    QCOMPARE(music.SetVolume(kAlias, "all", 500), int(QtMusicDevice::DeviceNotOpen));
    QCOMPARE(music.Open(kAlias, ""), int(QtMusicDevice::FileNotFound));
    QCOMPARE(music.Open(kAlias, QDir::tempPath().toStdString()), int(QtMusicDevice::FileNotFound));
    QCOMPARE(music.Open("", SongPath(0).toStdString()), int(QtMusicDevice::MissingAlias));
    QVERIFY(!music.IsOpen());
}

void tst_Audio::songsLoadWithTheirLength_data() {
    QTest::addColumn<int>("song");
    QTest::newRow("tess0") << 0;
    QTest::newRow("tess1") << 1;
    QTest::newRow("tess2") << 2;
}

void tst_Audio::songsLoadWithTheirLength() {
    QFETCH(int, song);
    const QString path = SongPath(song);
    QVERIFY2(!path.isEmpty(), "song file not found");
    QVERIFY2(QFileInfo(path).size() < 2500 * 1024, "song file too big");

    QtMusicDevice music;
    QCOMPARE(music.Open(kAlias, path.toStdString()), 0);
    QTRY_VERIFY_WITH_TIMEOUT(music.Length(kAlias) > 0, 10000);
    const long length = music.Length(kAlias);
    QVERIFY2(length >= 90000 && length <= 150000, qPrintable(QString::number(length)));
    QCOMPARE(music.Position(kAlias), 0L);
}

void tst_Audio::playStopAndClose() {
    QtMusicDevice music;
    QCOMPARE(music.Open(kAlias, SongPath(0).toStdString()), 0);
    // Playing before the song is known is fine; it starts once it is.
    QCOMPARE(music.Play(kAlias, 0, -1), 0);
    QTRY_VERIFY_WITH_TIMEOUT(music.Position(kAlias) > 200, 10000);
    QVERIFY(music.Position(kAlias) <= music.Length(kAlias));

    QCOMPARE(music.Stop(kAlias), 0);
    const long stoppedAt = music.Position(kAlias);
    QTest::qWait(400);
    QCOMPARE(music.Position(kAlias), stoppedAt);

    // The alias is not case-sensitive.
    QCOMPARE(music.Play("musicfile", 0, -1), 0);
    QCOMPARE(music.Close("MUSICFILE"), 0);
    QVERIFY(!music.IsOpen());
    QCOMPARE(music.Length(kAlias), -1L);
    QCOMPARE(music.Close(kAlias), int(QtMusicDevice::DeviceNotOpen));

    // Gone while playing.
    auto other = std::make_unique<QtMusicDevice>();
    QCOMPARE(other->Open(kAlias, SongPath(1).toStdString()), 0);
    QCOMPARE(other->Play(kAlias, 0, -1), 0);
    QTest::qWait(200);
    other.reset();
}

void tst_Audio::positionReachesLengthAtTheEnd() {
    QtMusicDevice music;
    QCOMPARE(music.Open(kAlias, SongPath(2).toStdString()), 0);
    QTRY_VERIFY_WITH_TIMEOUT(music.Length(kAlias) > 0, 10000);
    const long length = music.Length(kAlias);

    QCOMPARE(music.Play(kAlias, length - 500, -1), 0);
    QTRY_COMPARE_WITH_TIMEOUT(music.Position(kAlias), length, 10000);
    QCOMPARE(music.Length(kAlias), length);

    // Played again from the start, the end is behind us.
    QCOMPARE(music.Play(kAlias, 0, -1), 0);
    QVERIFY(music.Position(kAlias) < length);
    QTRY_VERIFY_WITH_TIMEOUT(music.Position(kAlias) > 0, 10000);
    QVERIFY(music.Position(kAlias) < length);

    QCOMPARE(music.Play(kAlias, length + 1, -1), int(QtMusicDevice::OutOfRange));
    QCOMPARE(music.Play(kAlias, -1, -1), int(QtMusicDevice::OutOfRange));
    QCOMPARE(music.Play(kAlias, 2000, 1000), int(QtMusicDevice::OutOfRange));
}

void tst_Audio::partialPlayHaltsAtItsMark() {
    QtMusicDevice music;
    QCOMPARE(music.Open(kAlias, SongPath(1).toStdString()), 0);
    QTRY_VERIFY_WITH_TIMEOUT(music.Length(kAlias) > 0, 10000);
    QCOMPARE(music.Play(kAlias, 1000, 1400), 0);
    QTRY_COMPARE_WITH_TIMEOUT(music.Position(kAlias), 1400L, 10000);
    QTest::qWait(300);
    QCOMPARE(music.Position(kAlias), 1400L);
}

// With nothing to hear (the volume at 0, or no audio device) the song is not
// decoded, but its time goes on: it still ends when it would have, and is
// heard again from where it got to.
void tst_Audio::silentSongKeepsItsTime() {
    QtMusicDevice music;
    QCOMPARE(music.Open(kAlias, SongPath(2).toStdString()), 0);
    QCOMPARE(music.SetVolume(kAlias, "all", 0), 0);
    QTRY_VERIFY_WITH_TIMEOUT(music.Length(kAlias) > 0, 10000);
    const long length = music.Length(kAlias);
    QCOMPARE(music.Play(kAlias, length - 300, -1), 0);
    QVERIFY(!music.Sounding());
    QTRY_COMPARE_WITH_TIMEOUT(music.Position(kAlias), length, 10000);

    QCOMPARE(music.Play(kAlias, 1000, -1), 0);
    QTRY_VERIFY_WITH_TIMEOUT(music.Position(kAlias) > 1100, 10000);
    QCOMPARE(music.Stop(kAlias), 0);
    const long stoppedAt = music.Position(kAlias);
    QCOMPARE(music.Play(kAlias, stoppedAt, -1), 0);
    QCOMPARE(music.SetVolume(kAlias, "all", 500), 0);  // heard again: on from there
    QCOMPARE(music.Sounding(), HaveSoundDevice());
    QTRY_VERIFY_WITH_TIMEOUT(music.Position(kAlias) > stoppedAt + 100, 10000);
    QVERIFY(music.Position(kAlias) < length);
}

void tst_Audio::volumeRangeAndSides() {
    QCOMPARE(QtMusicDevice::OutputVolumeFor(0), 0.0f);
    QCOMPARE(QtMusicDevice::OutputVolumeFor(1000), 1.0f);
    // Every step of the slider is heard (the curve tops out just short of 1000).
    float last = -1.0f;
    for (int v = 0; v <= 1000; v += 10) {
        const float out = QtMusicDevice::OutputVolumeFor(v);
        QVERIFY2(v < 990 ? out > last : out >= last, qPrintable(QString::number(v)));
        last = out;
    }
    // Follows the ear: the middle of the slider is well under half the amplitude.
    QVERIFY(QtMusicDevice::OutputVolumeFor(500) < 0.5f);
    QVERIFY(QtMusicDevice::OutputVolumeFor(500) > 0.02f);

    QtMusicDevice music;
    QCOMPARE(music.OutputVolume(), -1.0f);
    QCOMPARE(music.Open(kAlias, SongPath(0).toStdString()), 0);
    QCOMPARE(music.OutputVolume(), 1.0f);
    QCOMPARE(music.SetVolume(kAlias, "all", 0), 0);
    QCOMPARE(music.OutputVolume(), 0.0f);
    QCOMPARE(music.SetVolume(kAlias, "all", 660), 0);
    QCOMPARE(music.OutputVolume(), QtMusicDevice::OutputVolumeFor(660));
    QCOMPARE(music.SetVolume(kAlias, "all", 1001), int(QtMusicDevice::OutOfRange));
    QCOMPARE(music.SetVolume(kAlias, "all", -1), int(QtMusicDevice::OutOfRange));
    QCOMPARE(music.OutputVolume(), QtMusicDevice::OutputVolumeFor(660));
    QCOMPARE(music.SetVolume(kAlias, "Left", 330), 0);
    QCOMPARE(music.OutputVolume(), QtMusicDevice::OutputVolumeFor(330));
    QCOMPARE(music.SetVolume(kAlias, "right", 1000), 0);
    QCOMPARE(music.OutputVolume(), 1.0f);
    QCOMPARE(music.SetVolume("Other", "all", 500), int(QtMusicDevice::DeviceNotOpen));
}

void tst_Audio::oneDeviceAtATime() {
    QtMusicDevice music;
    QCOMPARE(music.Open(kAlias, SongPath(0).toStdString()), 0);
    QCOMPARE(music.Open(kAlias, SongPath(1).toStdString()), int(QtMusicDevice::AliasInUse));
    QCOMPARE(music.Open("Second", SongPath(1).toStdString()), int(QtMusicDevice::DeviceBusy));
    QCOMPARE(music.Close("Second"), int(QtMusicDevice::DeviceNotOpen));
    QVERIFY(music.IsOpen());
    QCOMPARE(music.Close(kAlias), 0);
    QCOMPARE(music.Open("Second", SongPath(1).toStdString()), 0);
    QTRY_VERIFY_WITH_TIMEOUT(music.Length("Second") > 0, 10000);
    QCOMPARE(music.Length(kAlias), -1L);
}

void tst_Audio::damagedSongFailsQuietly() {
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    for (const QByteArray& content : {QByteArray("this is no song at all\n").repeated(400), QByteArray()}) {
        const QString path = dir.filePath(QStringLiteral("tess0.mp3"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();

        QtMusicDevice music;
        QCOMPARE(music.Open(kAlias, path.toStdString()), 0);
        QTRY_COMPARE_WITH_TIMEOUT(music.Play(kAlias, 0, -1), int(QtMusicDevice::CannotPlay), 10000);
        QCOMPARE(music.Length(kAlias), -1L);
        QCOMPARE(music.Position(kAlias), -1L);
        QCOMPARE(music.SetVolume(kAlias, "all", 500), 0);
        QCOMPARE(music.Stop(kAlias), 0);
        QCOMPARE(music.Close(kAlias), 0);
    }
}

QTEST_MAIN(tst_Audio)
#include "tst_Audio.moc"
