// The measuring hooks of the benchmarked twin: first frame, deal, memory.
#include "BenchHooks.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "forms/frmTessuma.h"
#include "qt/view/FormView.h"
#include "qt/view/TessumaWindow.h"

namespace {

long long MonotonicNs() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<long long>(ts.tv_sec) * 1000000000LL + ts.tv_nsec;
}

// VmRSS and VmHWM of this process, in kB.
void PrintMemory(const char* when) {
    long rss = -1, hwm = -1;
    if (FILE* f = std::fopen("/proc/self/status", "r")) {
        char line[256];
        while (std::fgets(line, sizeof line, f)) {
            if (std::strncmp(line, "VmRSS:", 6) == 0) rss = std::atol(line + 6);
            if (std::strncmp(line, "VmHWM:", 6) == 0) hwm = std::atol(line + 6);
        }
        std::fclose(f);
    }
    std::printf("tessuma-bench: %s rss-kb %ld hwm-kb %ld\n", when, rss, hwm);
    std::fflush(stdout);
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
            std::printf("tessuma-bench: first-frame-ns %lld\n", now);
            PrintMemory("start");
            if (level_ < 0) return Quit();
            stage_ = Stage::Waiting;
            // The player takes a moment before choosing a level.
            QTimer::singleShot(300, this, [this] { Deal(); });
        } else if (stage_ == Stage::Dealt) {
            std::printf("tessuma-bench: deal-ns %lld\n", now - dealt_);
            PrintMemory("deal");
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
    const char* on = std::getenv("TESSUMA_BENCH_FIRST_FRAME");
    if (!on || std::strcmp(on, "1") != 0 || !qApp) return;
    int level = -1;
    if (const char* deal = std::getenv("TESSUMA_BENCH_DEAL"); deal && *deal) {
        level = std::atoi(deal);
        if (level < 0 || level > 3) level = 0;
    }
    qApp->installEventFilter(new Hook(level));
}

}  // namespace benchhooks
