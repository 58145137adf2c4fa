// Runs work once the window's first frame is on the screen.
#include "qt/view/FirstFrame.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace {

constexpr int kSettleMs = 30;

// Watches the paint events of the window and its children. The work runs a
// moment after the first of them: the frame has been handed to the window
// system by then, and whatever else was waiting for that frame has run.
class FirstFrameWatch : public QObject {
public:
    FirstFrameWatch(QWidget* window, std::function<void()> work, int latestMs)
        : QObject(qApp), window_(window), work_(std::move(work)) {
        qApp->installEventFilter(this);
        QTimer::singleShot(latestMs, this, [this] { Run(); });
    }

    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() == QEvent::Paint && !queued_) {
            auto* w = qobject_cast<QWidget*>(o);
            if (w && window_ && w->window() == window_) {
                queued_ = true;
                QTimer::singleShot(kSettleMs, this, [this] { Run(); });
            }
        }
        return false;
    }

private:
    void Run() {
        if (done_) return;
        done_ = true;
        qApp->removeEventFilter(this);
        // Work for a window that has gone meanwhile goes with it.
        if (work_ && window_) work_();
        deleteLater();
    }

    QPointer<QWidget> window_;
    std::function<void()> work_;
    bool queued_ = false;
    bool done_ = false;
};

}  // namespace

void AfterFirstFrame(QWidget* window, std::function<void()> work, int latestMs) {
    new FirstFrameWatch(window, std::move(work), latestMs);
}
