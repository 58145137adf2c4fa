// The real settings store (QSettings on an INI file) when the file is not
// what the game wrote: garbage bytes, values of the wrong kind (QSettings'
// own @Variant and @ByteArray forms, lists, huge numbers), a file cut off in
// the middle, and a file that can't be read at all. The game starts with
// the defaults of whatever it can't use, closes without harm, and the file
// it leaves holds values it can read again.

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

#include <memory>
#include <string>

#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "qt/ports/QtSettingsStore.h"
#include "sim/World.h"

namespace {

// A game on the real store at `ini`, with the simulated world for the rest.
struct Game {
    World w;
    QtSettingsStore store;
    std::unique_ptr<Program> p;
    explicit Game(const QString& ini) : store(ini.toStdString()) {
        w.use.settings = &store;
        p = std::make_unique<Program>(w.MakePorts());
        p->Main();
    }
    frmTessuma& f() { return *p->MainForm; }
};

void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), bytes.size());
}

}  // namespace

class tst_Faults : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir_;
    QString Ini(const char* name) const { return dir_.filePath(name); }

    // The options of a first start on a 1024 by 768 screen.
    static void ExpectDefaults(frmTessuma& f) {
        QCOMPARE(f.chkClickring.Value, 1);
        QCOMPARE(f.chkSkin.Value, 1);
        QCOMPARE(f.chkSounds.Value, 1);
        QCOMPARE(f.imgVolume.Left, 75.0f);
        QVERIFY(f.OptionsShown);
        QCOMPARE(f.Left, 2880);
        QCOMPARE(f.Top, 2160);
        QCOMPARE(f.LastHelpPage, std::int16_t(0));
        QVERIFY(!f.cmdRestoreDown.Visible);
    }

    // Starts, looks at the high scores and the help, and closes.
    static void PlayAndClose(Game& g) {
        QVERIFY(g.p->Running);
        g.f().cmdSideNav_Click(5);
        g.f().cmdSideNav_Click(5);
        g.f().cmdSideNav_Click(6);
        g.f().cmdOK_Click();
        g.f().cmdClose_Click();
        QVERIFY(!g.p->Running);
    }

private slots:
    void initTestCase() { QVERIFY(dir_.isValid()); }

    void garbageBytesGiveTheDefaults() {
        const QString ini = Ini("garbage.ini");
        QByteArray junk;
        for (int i = 0; i < 4096; ++i) junk.append(char((i * 7919 + 13) % 256));
        junk.append("\n[Options\nClickring\n=\n\xff\xfe[Data]\n0=\x01\x02\n");
        WriteFile(ini, junk);
        {
            Game g(ini);
            ExpectDefaults(g.f());
            PlayAndClose(g);
        }
        // What the close wrote reads back as the game's own values.
        QSettings back(ini, QSettings::IniFormat);
        QCOMPARE(back.value("Options/Clickring").toString(), QString("1"));
        QCOMPARE(back.value("Options/Volume").toString(), QString("75"));
        QCOMPARE(back.value("ScreenPos/Left").toString(), QString("2880"));
        QCOMPARE(back.value("Data/0").toString().section(',', 1), QString("funkalicious"));
    }

    void valuesOfTheWrongKindGiveTheDefaults() {
        const QString ini = Ini("kinds.ini");
        WriteFile(ini,
                  "[Options]\n"
                  "Clickring=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\xff\\xff)\n"
                  "Skin=@Rect(1 2 3 4)\n"
                  "Sounds=@ByteArray(\\0\\x1)\n"
                  "Volume=1, 2, 3\n"
                  "ShowOptions=@Size(\n"
                  "LastHelpPage=99999999999999999999\n"
                  "[ScreenPos]\n"
                  "Left=1e999\n"
                  "Top=-\n"
                  "Maximized=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\x1)\n"
                  "[Data]\n"
                  "0=@Variant(\\0\\0\\0\\n\\xff\\xff\\xff\\xff)\n"
                  "1=\"12000,\\xd8\\0\"\n"
                  "2=4500,\xc3\x28\xa0\xa1\n"
                  "LastSavedName=@Invalid()\n");
        Game g(ini);
        frmTessuma& f = g.f();
        QCOMPARE(f.chkClickring.Value, 1);
        QCOMPARE(f.chkSkin.Value, 1);
        QCOMPARE(f.chkSounds.Value, 1);
        QCOMPARE(f.Left, 2880);
        QCOMPARE(f.Top, 2160);
        QVERIFY(!f.cmdRestoreDown.Visible);
        // "1, 2, 3" is a list to QSettings; the store joins it, and the
        // volume reads by its leading number.
        QCOMPARE(f.imgVolume.Left, 1.0f);
        PlayAndClose(g);
    }

    void aFileCutOffInTheMiddle() {
        const QString ini = Ini("cut.ini");
        WriteFile(ini, "[Options]\nClickring=0\nSkin=0\nSou");
        Game g(ini);
        QCOMPARE(g.f().chkClickring.Value, 0);
        QCOMPARE(g.f().chkSkin.Value, 0);
        QCOMPARE(g.f().chkSounds.Value, 1);
        PlayAndClose(g);
        QSettings back(ini, QSettings::IniFormat);
        QCOMPARE(back.value("Options/Sounds").toString(), QString("1"));
        QCOMPARE(back.value("Options/Clickring").toString(), QString("0"));
    }

    // A folder where the file should be: nothing can be read or written,
    // for root neither. The game runs on the defaults and closes.
    void aFileThatCantBeReadGivesTheDefaults() {
        const QString ini = Ini("folder.ini");
        QVERIFY(QDir().mkpath(ini));
        {
            Game g(ini);
            ExpectDefaults(g.f());
            PlayAndClose(g);
        }
        QVERIFY(QFileInfo(ini).isDir());
    }

    // A file without read permission; root reads everything, so this one
    // needs an ordinary user.
    void aFileWithoutPermissionGivesTheDefaults() {
        if (::geteuid() == 0) QSKIP("root reads every file; the folder case stands in for it");
        const QString ini = Ini("locked.ini");
        WriteFile(ini, "[Options]\nClickring=0\n");
        QVERIFY(QFile::setPermissions(ini, QFileDevice::Permissions()));
        Game g(ini);
        ExpectDefaults(g.f());
        PlayAndClose(g);
        QFile::setPermissions(ini, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    }
};

QTEST_GUILESS_MAIN(tst_Faults)
#include "tst_Faults.moc"
