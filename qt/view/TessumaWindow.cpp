// The main window: the window-system side of the main form.
#include "qt/view/TessumaWindow.h"

#include <algorithm>

#include <QApplication>
#include <QCloseEvent>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGuiApplication>
#include <QScreen>

#include "forms/frmTessuma.h"
#include "forms/frmUpdate.h"
#include "forms/modMain.h"
#include "qt/ports/Extras.h"
#include "qt/ports/QtBackground.h"
#include "qt/view/FormView.h"
#include "qt/view/UpdateDialog.h"

TessumaWindow::TessumaWindow(Program& program) : program_(program) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setWindowTitle("Tessuma Sudoku");
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    // Only what changed is drawn again: a clock tick repaints the clock.
    setViewportUpdateMode(QGraphicsView::MinimalViewportUpdate);
    setBackgroundBrush(QColor(24, 38, 60));
    setAlignment(Qt::AlignCenter);
    auto* scene = new QGraphicsScene(this);
    scene->setSceneRect(0, 0, 640, 480);
    setScene(scene);
    setFixedSize(640, 480);
}

TessumaWindow::~TessumaWindow() {
    if (overrideCursor_) QApplication::restoreOverrideCursor();
}

void TessumaWindow::EnsureView() {
    if (view_ || !program_.MainForm) return;
    view_ = new FormView(program_);
    proxy_ = scene()->addWidget(view_);
    proxy_->setPos(0, 0);
    // Hands the form the exposed part alone instead of its whole face.
    proxy_->setFlag(QGraphicsItem::ItemUsesExtendedStyleOption);
    connect(view_, &FormView::ModelChanged, this, &TessumaWindow::FollowModel);
    view_->setFocus();
}

void TessumaWindow::FollowModel() {
    if (!program_.Running) {
        Unload();
        return;
    }
    frmTessuma& f = *program_.MainForm;
    if (closePending_ && !extras::DownloadActive() && !QtBackground::Busy() && !QApplication::activeModalWidget()) {
        closePending_ = false;
        f.cmdClose_Click();
        if (view_) view_->AfterModel();
        return;
    }
    // The update window follows its model: shown while it is visible.
    const bool updateShown = program_.UpdateForm && program_.UpdateForm->Visible;
    if (updateShown && !update_) SetOwner("frmUpdate");
    if (update_ && update_->isVisible() != updateShown) {
        if (updateShown) {
            // Its inside centred on the game (setGeometry: the window
            // manager keeps the inside where it is asked to be).
            const QPoint c = mapToGlobal(QPoint(width() / 2, height() / 2));
            update_->setGeometry(
                QRect(QPoint(c.x() - update_->width() / 2, c.y() - update_->height() / 2), update_->size()));
            update_->show();
            update_->raise();
        } else {
            update_->hide();
        }
    }
    if (!fullScreen_ && !isMinimized()) {
        const QPoint want(f.Left / 15, f.Top / 15);
        if (pos() != want) move(want);
    }
}

void TessumaWindow::Show() {
    EnsureView();
    if (program_.MainForm) {
        const frmTessuma& f = *program_.MainForm;
        move(f.Left / 15, f.Top / 15);
    }
    if (fullScreen_)
        GoFullScreen();
    else
        show();
    if (view_) {
        view_->AfterModel();
        activateWindow();
        view_->setFocus();
    }
}

std::int32_t TessumaWindow::SetOwner(const std::string& ownedForm) {
    // The update window gets the main window as its owner, which keeps it
    // above the game without making it modal.
    if (ownedForm != "frmUpdate" || update_) return 0;
    update_ = new UpdateDialog(program_, this);
    connect(update_, &UpdateDialog::ModelChanged, this, [this] {
        if (view_)
            view_->AfterModel();
        else
            FollowModel();
    });
    return 0;
}

void TessumaWindow::Repaint() {
    if (view_) view_->repaint();
}

void TessumaWindow::Minimize() { showMinimized(); }

void TessumaWindow::MousePointerChanged(int pointer) {
    if (pointer == 11 && !overrideCursor_) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        overrideCursor_ = true;
    } else if (pointer != 11 && overrideCursor_) {
        QApplication::restoreOverrideCursor();
        overrideCursor_ = false;
    }
}

void TessumaWindow::Unload() {
    if (unloading_) return;
    unloading_ = true;
    hide();
    QApplication::quit();
}

void TessumaWindow::SetFullScreenMode(bool full) {
    if (full == fullScreen_) return;
    fullScreen_ = full;
    if (full) {
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        if (isVisible()) GoFullScreen();
    } else {
        if (isVisible()) showNormal();
        setFixedSize(640, 480);
        FollowModel();
    }
    FitScene();
}

void TessumaWindow::FitScene() {
    // Evenly scaled to fill the window, the aspect kept, centred.
    const QSize area = viewport()->size();
    const double scale = std::min(area.width() / 640.0, area.height() / 480.0);
    resetTransform();
    if (scale > 0) this->scale(scale, scale);
    centerOn(320, 240);
}

void TessumaWindow::GoFullScreen() {
    // Without a window manager to honour the request, the window takes the
    // screen's whole area itself.
    QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen();
    if (s) setGeometry(s->geometry());
    showFullScreen();
    if (s) setGeometry(s->geometry());
    FitScene();
}

void TessumaWindow::resizeEvent(QResizeEvent* e) {
    QGraphicsView::resizeEvent(e);
    if (fullScreen_) {
        FitScene();
    } else {
        resetTransform();
        centerOn(320, 240);
    }
}

void TessumaWindow::changeEvent(QEvent* e) {
    QGraphicsView::changeEvent(e);
    // Coming back from the task bar, the window takes its place again.
    if (e->type() == QEvent::WindowStateChange && !isMinimized() && program_.MainForm)
        program_.MainForm->SetWindowState(0);
}

void TessumaWindow::focusInEvent(QFocusEvent* e) {
    QGraphicsView::focusInEvent(e);
    // A popup menu or a message box takes the keyboard from the form, and
    // the scene forgets which of its items had it: the form takes it back.
    if (view_ && proxy_ && scene()->focusItem() != proxy_) view_->setFocus(e->reason());
}

void TessumaWindow::closeEvent(QCloseEvent* e) {
    // The desktop's close (Alt+F4, the task bar) takes the game's own close
    // path, with its question about an unsaved game.
    if (unloading_ || !program_.Running || !program_.MainForm) {
        e->accept();
        return;
    }
    e->ignore();
    if (extras::DownloadActive()) {
        closePending_ = true;
        return;
    }
    // A search of the solver is stopped; the close follows once the form is
    // back from it.
    if (QtBackground::Busy()) {
        closePending_ = true;
        QtBackground::StopForClose();
        return;
    }
    program_.MainForm->cmdClose_Click();
    if (view_) view_->AfterModel();
}
