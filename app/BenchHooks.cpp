// The measuring hook of the benchmarked twin: deal to painted board.
#include "BenchHooks.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <time.h>

#include <cstdio>
#include <cstdlib>

#include "forms/frmTessuma.h"
#include "qt/view/FormView.h"
#include "qt/view/TessumaWindow.h"

namespace {

long long MonotonicNs() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<long long>(ts.tv_sec) * 1000000000LL + ts.tv_nsec;
}

TessumaWindow* MainWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* t = qobject_cast<TessumaWindow*>(w)) return t;
    return nullptr;
}

// Watches the paint events of the main window. A frame counts once the
// event loop comes back after its paint: by then the backing store has been
// flushed to the window system.
class Hook : public QObject {
public:
    explicit Hook(int level) : QObject(qApp), level_(level) {}

    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() == QEvent::Paint && (stage_ == Stage::Starting || stage_ == Stage::Dealt) && !pending_) {
            auto* w = qobject_cast<QWidget*>(o);
            if (w && qobject_cast<TessumaWindow*>(w->window())) {
                pending_ = true;
                QTimer::singleShot(0, this, [this] { Painted(); });
            }
        }
        return false;
    }

private:
    enum class Stage { Starting, Waiting, Dealt, Done };

    void Painted() {
        const long long now = MonotonicNs();
        pending_ = false;
        if (stage_ == Stage::Starting) {
            stage_ = Stage::Waiting;
            // The player takes a moment before choosing a level.
            QTimer::singleShot(300, this, [this] { Deal(); });
        } else if (stage_ == Stage::Dealt) {
            std::printf("tessuma-bench: deal-ns %lld\n", now - dealt_);
            Quit();
        }
    }

    void Deal() {
        TessumaWindow* win = MainWindow();
        if (!win || !win->View()) return Quit();
        dealt_ = MonotonicNs();
        stage_ = Stage::Dealt;
        // What the level menu's entry does: the handler, then the view
        // follows the model.
        win->View()->Form().mnuDifficulty_Click(level_);
        win->View()->AfterModel();
    }

    void Quit() {
        stage_ = Stage::Done;
        std::fflush(stdout);
        QCoreApplication::exit(0);  // leaves the loop; quit() would close the window and ask to save
    }

    int level_;
    Stage stage_ = Stage::Starting;
    bool pending_ = false;
    long long dealt_ = 0;
};

}  // namespace

namespace benchhooks {

void Install() {
    const char* deal = std::getenv("TESSUMA_BENCH_DEAL");
    if (!deal || !*deal || !qApp) return;
    int level = std::atoi(deal);
    if (level < 0 || level > 3) level = 0;
    qApp->installEventFilter(new Hook(level));
}

}  // namespace benchhooks
