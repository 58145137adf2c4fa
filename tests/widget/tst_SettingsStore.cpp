// The settings file is the player's: one the game can't have written (far
// too large, or no plain file) is neither read nor lost. The game starts
// with its defaults and the file is kept beside the new one.

#include <sys/stat.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "qt/ports/QtSettingsStore.h"

class tst_SettingsStore : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    QString Ini() const { return dir_.filePath("settings.ini"); }

private slots:
    void init() {
        for (const QString& f : QDir(dir_.path()).entryList(QDir::Files | QDir::System)) QFile::remove(dir_.filePath(f));
    }

    void aHugeFileIsSetAsideWhole() {
        QByteArray huge;
        huge.reserve(3 << 20);
        huge += "[Options]\nSounds=0\n";
        while (huge.size() < (3 << 20)) huge += "Padding=" + QByteArray(120, 'x') + "\n";
        {
            QFile f(Ini());
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(huge);
        }
        {
            QtSettingsStore store(Ini().toStdString());
            QVERIFY(!store.Has("Tessuma", "Options", "Sounds"));  // the defaults, not the file
            store.Save("Tessuma", "Options", "Volume", "40");
        }
        // The player's file is kept as it was; the store goes on in a new one.
        QFile kept(Ini() + ".set-aside");
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QVERIFY(kept.readAll() == huge);
        QtSettingsStore again(Ini().toStdString());
        QCOMPARE(again.Get("Tessuma", "Options", "Volume"), std::string("40"));
        // A second bad file doesn't take the place of the first one kept.
        QVERIFY(QFile::resize(Ini(), 4 << 20));
        QtSettingsStore third(Ini().toStdString());
        QVERIFY(QFile::exists(Ini() + ".set-aside-2"));
        QCOMPARE(QFileInfo(Ini() + ".set-aside").size(), qint64(huge.size()));
    }

    // A pipe in the file's place would hold QSettings' read for good.
    void aPipeIsNotRead() {
        QVERIFY(::mkfifo(QFile::encodeName(Ini()).constData(), 0600) == 0);
        QtSettingsStore store(Ini().toStdString());
        store.Save("Tessuma", "Options", "Sounds", "1");
        QCOMPARE(store.Get("Tessuma", "Options", "Sounds"), std::string("1"));
    }

    // Where the file can't be moved aside (here its name leaves no room for
    // the longer one), it isn't read either, and the game keeps this
    // session's settings in memory.
    void aFileThatCannotBeMovedIsLeftAlone() {
        const QString ini = dir_.filePath(QString(250, 's') + ".ini");
        QFile f(ini);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("[Options]\nVolume=3\n");
        QVERIFY(f.resize(2 << 20));
        f.close();
        {
            QtSettingsStore store(ini.toStdString());
            QVERIFY(!store.Has("Tessuma", "Options", "Volume"));
            store.Save("Tessuma", "Options", "Volume", "10");
            QCOMPARE(store.Get("Tessuma", "Options", "Volume"), std::string("10"));
        }
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.size(), qint64(2 << 20));
        QVERIFY(f.readLine(64) == "[Options]\n");
    }
};

QTEST_GUILESS_MAIN(tst_SettingsStore)
#include "tst_SettingsStore.moc"
