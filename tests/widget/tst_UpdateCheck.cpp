// The update check over the real network layer, against a small HTTP server
// that the test runs on 127.0.0.1.

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include "forms/frmTessuma.h"
#include "forms/frmUpdate.h"
#include "forms/modMain.h"
#include "qt/ports/QtDownloader.h"
#include "qt/ports/QtFiles.h"
#include "sim/World.h"

namespace {

// Answers every request with one fixed response.
class TinyHttpServer : public QObject {
public:
    TinyHttpServer() {
        connect(&server_, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* s = server_.nextPendingConnection()) {
                connect(s, &QTcpSocket::readyRead, s, [this, s] {
                    request_ += s->readAll();
                    if (!request_.contains("\r\n\r\n")) return;
                    ++requests;
                    s->write(response);
                    s->disconnectFromHost();
                });
                connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
            }
        });
        server_.listen(QHostAddress::LocalHost, 0);
    }
    QString Url(const QString& path) const {
        return QString("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path);
    }
    void Serve(int status, const QByteArray& body) {
        response = "HTTP/1.1 " + QByteArray::number(status) + (status == 200 ? " OK" : " Not Found") +
                   "\r\nContent-Type: text/plain\r\nContent-Length: " + QByteArray::number(body.size()) +
                   "\r\nConnection: close\r\n\r\n" + body;
    }
    QByteArray response;
    int requests = 0;

private:
    QTcpServer server_;
    QByteArray request_;
};

}  // namespace

class tst_UpdateCheck : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;
    std::unique_ptr<QtDownloader> downloader;
    std::unique_ptr<Program> program;
    TinyHttpServer server;
    QtFiles files;
    QTemporaryDir scratch;

    void Start(const QString& url) {
        world = std::make_unique<World>();
        downloader = std::make_unique<QtDownloader>(5000);
        world->use.download = downloader.get();
        world->use.files = &files;
        Ports ports = world->MakePorts();
        ports.scratchDir = scratch.path().toStdString();
        ports.versionUrl = url.toStdString();
        program = std::make_unique<Program>(ports);
        program->Main();
        QVERIFY(program->Running);
    }

private slots:
    void cleanup() {
        program.reset();
        downloader.reset();
        world.reset();
    }

    void sameVersionIsNewest() {
        server.Serve(200, "20,\"http://127.0.0.1/setup.exe\"\r\n");
        Start(server.Url("/tessuma/tessver.txt"));
        program->MainForm->CheckForUpdate();
        QCOMPARE(world->messages.count, 1);
        QCOMPARE(QString::fromStdString(world->messages.lastText), QString("You have newest\r\nTessuma Sudoku."));
        QVERIFY(!program->UpdateForm || !program->UpdateForm->Visible);
        // The local copy of the version file is gone again.
        QVERIFY(!QFile::exists(scratch.filePath("tessver.txt")));
    }

    void newerVersionOffersTheDownload() {
        server.Serve(200, "21,\"http://127.0.0.1/tessuma/setup.zip\"\r\n");
        Start(server.Url("/tessuma/tessver.txt"));
        program->MainForm->CheckForUpdate();
        QCOMPARE(world->messages.count, 0);
        QVERIFY(program->UpdateForm && program->UpdateForm->Visible);
        QCOMPARE(QString::fromStdString(program->UpdateUrl), QString("http://127.0.0.1/tessuma/setup.zip"));
        program->UpdateForm->lblDownload_Click();
        QCOMPARE(world->shell.targets.size(), std::size_t(1));
        QVERIFY(!program->Running);
    }

    void missingFileCannotConnect() {
        server.Serve(404, "no such file");
        Start(server.Url("/tessuma/tessver.txt"));
        program->MainForm->CheckForUpdate();
        QCOMPARE(world->messages.count, 1);
        QVERIFY(QString::fromStdString(world->messages.lastText).startsWith("No can connect.\r\n"));
    }

    void closedPortCannotConnect() {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
        const quint16 port = probe.serverPort();
        probe.close();
        Start(QString("http://127.0.0.1:%1/tessuma/tessver.txt").arg(port));
        program->MainForm->CheckForUpdate();
        QCOMPARE(world->messages.count, 1);
        QVERIFY(QString::fromStdString(world->messages.lastText).startsWith("No can connect."));
    }

    void onlyWebAddressesAreFetched() {
        QtDownloader d(1000);
        QVERIFY(!d.Download("file:///etc/passwd", (QDir::tempPath() + "/tessuma-never.txt").toStdString()));
        QVERIFY(!QFile::exists(QDir::tempPath() + "/tessuma-never.txt"));
    }
};

QTEST_MAIN(tst_UpdateCheck)
#include "tst_UpdateCheck.moc"
