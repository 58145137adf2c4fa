// The single-instance lock: one running game per desktop session, and a game
// that crashed must not keep the next one out. The other game is a real
// process here: this test program started again in holder mode, which takes
// the lock and waits to be killed.

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "qt/ports/QtPlatform.h"

namespace {

const char kHoldArg[] = "--hold-lock";

// Holder mode: take the lock, tell the parent, and wait to be killed.
int HoldLock(const char* path) {
    QtInstanceLock lock(path);
    if (lock.AnotherInstanceRunning()) {
        std::puts("refused");
        return 3;
    }
    std::puts("locked");
    std::fflush(stdout);
    for (;;) pause();
}

// The pid that a lock file names, or 0 if the file is not a lock.
qint64 HolderPid(const QString& path) {
    QLockFile probe(path);
    qint64 pid = 0;
    QString host, app;
    return probe.getLockInfo(&pid, &host, &app) ? pid : 0;
}

}  // namespace

class tst_InstanceLock : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;

    QString LockPath() const { return dir_.filePath(QStringLiteral("tessuma-sudoku.lock")); }

    // Starts this program as a second game holding the lock at `path`, and
    // returns once it has the lock.
    std::unique_ptr<QProcess> StartHolder(const QString& path) {
        auto p = std::make_unique<QProcess>();
        p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p->start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(kHoldArg), path});
        if (!p->waitForStarted(10000)) return nullptr;
        while (!p->canReadLine())
            if (!p->waitForReadyRead(10000)) return nullptr;
        if (p->readLine().trimmed() != "locked") return nullptr;
        return p;
    }

private slots:
    void init() { QFile::remove(LockPath()); }

    void aFreeLockIsTakenAndHeld() {
        {
            QtInstanceLock first(LockPath().toStdString());
            QVERIFY(!first.AnotherInstanceRunning());
            QCOMPARE(HolderPid(LockPath()), QCoreApplication::applicationPid());
            // Asking again is harmless: the lock is ours already.
            QVERIFY(!first.AnotherInstanceRunning());
            QtInstanceLock second(LockPath().toStdString());
            QVERIFY(second.AnotherInstanceRunning());
        }
        // Released with the object, as at the end of a normal run.
        QVERIFY(!QFile::exists(LockPath()));
    }

    void aRunningGameRefusesTheSecondStart() {
        auto holder = StartHolder(LockPath());
        QVERIFY(holder);
        for (int attempt = 0; attempt < 2; ++attempt) {
            QtInstanceLock second(LockPath().toStdString());
            QVERIFY(second.AnotherInstanceRunning());
        }
        // The refused start left the running game's lock alone.
        QCOMPARE(HolderPid(LockPath()), holder->processId());
        QCOMPARE(holder->state(), QProcess::Running);
        holder->kill();
        holder->waitForFinished(10000);
    }

    void aGameKilledHardLeavesNoBlockingLock() {
        auto holder = StartHolder(LockPath());
        QVERIFY(holder);
        const qint64 deadPid = holder->processId();
        holder->kill();  // SIGKILL: no destructor runs, the file stays behind
        QVERIFY(holder->waitForFinished(10000));
        QCOMPARE(holder->exitStatus(), QProcess::CrashExit);
        QVERIFY(QFile::exists(LockPath()));
        QCOMPARE(HolderPid(LockPath()), deadPid);

        QtInstanceLock next(LockPath().toStdString());
        QVERIFY(!next.AnotherInstanceRunning());
        QCOMPARE(HolderPid(LockPath()), QCoreApplication::applicationPid());

        // And the game that took over is protected in its turn.
        QtInstanceLock third(LockPath().toStdString());
        QVERIFY(third.AnotherInstanceRunning());
    }

    // Lock files that name no game of this machine: left empty or garbled by
    // a crash or a full disk, or copied with a home folder from another
    // machine. None may keep the player out, now or on a later start.
    void aLockOfNoGameHereIsTakenOver_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("garbage") << QByteArray("\x01\xfe not a lock\n");
        QTest::newRow("other host") << QByteArray("1\ntessuma\nsome-other-machine\n");
    }
    void aLockOfNoGameHereIsTakenOver() {
        QFETCH(QByteArray, content);
        QFile file(LockPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        QVERIFY(file.flush());
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime));
        file.close();
        {
            QtInstanceLock next(LockPath().toStdString());
            QVERIFY(!next.AnotherInstanceRunning());
            QCOMPARE(HolderPid(LockPath()), QCoreApplication::applicationPid());
        }
        QVERIFY(!QFile::exists(LockPath()));
    }

    // An empty lock file that was made a moment ago is a game starting now
    // that hasn't written its name yet.
    void aLockBeingWrittenKeepsTheSecondStartOut() {
        QFile file(LockPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QtInstanceLock second(LockPath().toStdString());
        QVERIFY(second.AnotherInstanceRunning());
        QVERIFY(QFile::exists(LockPath()));
    }

    void aLockThatCannotBeWrittenLetsTheGameRun() {
        const QString path = dir_.filePath(QStringLiteral("no such folder/tessuma-sudoku.lock"));
        QtInstanceLock lock(path.toStdString());
        QVERIFY(!lock.AnotherInstanceRunning());
    }

    void theLockLivesInTheSessionsRuntimeFolder() {
        QTemporaryDir runtime;  // made private (0700), as the session's folder is
        QVERIFY(runtime.isValid());
        const QByteArray saved = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        const std::string path = QtInstanceLock::DefaultLockPath();
        qputenv("XDG_RUNTIME_DIR", saved);
        QCOMPARE(QString::fromStdString(path), runtime.filePath(QStringLiteral("tessuma-sudoku.lock")));
    }
};

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], kHoldArg) == 0) return HoldLock(argv[2]);
    QCoreApplication app(argc, argv);
    tst_InstanceLock test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_InstanceLock.moc"
