// Long work on a thread of its own.
#include "qt/ports/QtBackground.h"

#include <QApplication>
#include <QEventLoop>
#include <QThread>

#include <memory>

#include "qt/ports/InputHold.h"

namespace {

// The running work's stop and whether it was used; one work at a time, as
// the input it would come from waits.
const std::function<void()>* gStop = nullptr;
bool gStopped = false;

}  // namespace

bool QtBackground::Run(const std::function<void()>& work, const std::function<void()>& stop) {
    if (gStop) {  // not expected: the input that asks for work waits meanwhile
        work();
        return true;
    }
    QEventLoop loop;
    std::unique_ptr<QThread> thread(QThread::create(work));
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    gStop = &stop;
    gStopped = false;
    {
        InputHold hold;
        QApplication::setOverrideCursor(Qt::WaitCursor);
        thread->start();
        loop.exec();
        thread->wait();
        QApplication::restoreOverrideCursor();
    }
    gStop = nullptr;
    return !gStopped;
}

bool QtBackground::Busy() { return gStop != nullptr; }

void QtBackground::StopForClose() {
    if (!gStop || gStopped) return;
    gStopped = true;
    (*gStop)();
}
