// The update check's download, over QNetworkAccessManager, bounded in size and time.
#include "qt/extras/QtDownloader.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QTimer>
#include <QUrl>

#include "qt/ports/InputHold.h"

namespace {

int gActive = 0;

}  // namespace

bool QtDownloader::Active() { return gActive > 0; }

bool QtDownloader::Download(const std::string& url, const std::string& localPath) {
    const QUrl u(QString::fromStdString(url));
    if (!u.isValid() || (u.scheme() != "http" && u.scheme() != "https")) return false;
    QNetworkAccessManager manager;
    QNetworkRequest request(u);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setTransferTimeout(timeoutMs_);
    QNetworkReply* reply = manager.get(request);
    // No more than one byte past the limit is ever held.
    reply->setReadBufferSize(maxBytes_ + 1);
    bool tooLarge = false;
    QEventLoop loop;
    auto refuseIfTooLarge = [&] {
        const QVariant announced = reply->header(QNetworkRequest::ContentLengthHeader);
        if ((announced.isValid() && announced.toLongLong() > maxBytes_) || reply->bytesAvailable() > maxBytes_) {
            tooLarge = true;
            reply->abort();
            loop.quit();
        }
    };
    QObject::connect(reply, &QNetworkReply::metaDataChanged, &loop, refuseIfTooLarge);
    QObject::connect(reply, &QNetworkReply::readyRead, &loop, refuseIfTooLarge);
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeoutMs_ + 1000, &loop, &QEventLoop::quit);
    // The check is synchronous for the game: the player's input waits, timers
    // and the window system's requests go on.
    {
        InputHold hold;
        ++gActive;
        loop.exec();
        --gActive;
    }
    bool ok = false;
    if (!tooLarge && reply->isFinished() && reply->error() == QNetworkReply::NoError &&
        reply->bytesAvailable() <= maxBytes_) {
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (status == 0 || (status >= 200 && status < 300)) {
            QSaveFile out(QString::fromStdString(localPath));
            if (out.open(QIODevice::WriteOnly)) {
                out.write(reply->readAll());
                ok = out.commit();
            }
        }
    } else {
        reply->abort();
    }
    reply->deleteLater();
    return ok;
}
