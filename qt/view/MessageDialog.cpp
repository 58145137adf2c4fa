// The message box window that shows frmMessage.
#include "qt/view/MessageDialog.h"

#include "qt/view/InputCodes.h"

#include <QCloseEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include "forms/frmMessage.h"
#include "qt/view/Look.h"
#include "qt/view/X11Hints.h"

namespace {

// The close mark in the box's top right corner, in the box's own pixels.
const QRect kCloseMark(368, 5, 18, 18);

}  // namespace

// Tells the box when its window is destroyed by another program: the modal
// loop would otherwise wait for a box that no longer exists.
class MessageDialog::WindowGone : public QAbstractNativeEventFilter {
public:
    explicit WindowGone(MessageDialog* box) : box_(box) { QCoreApplication::instance()->installNativeEventFilter(this); }
    ~WindowGone() override { QCoreApplication::instance()->removeNativeEventFilter(this); }
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override {
        if (type != "xcb_generic_event_t" || !box_->testAttribute(Qt::WA_WState_Created)) return false;
        const auto* e = static_cast<const xcb_generic_event_t*>(message);
        if ((e->response_type & 0x7f) != XCB_DESTROY_NOTIFY) return false;
        const auto* d = reinterpret_cast<const xcb_destroy_notify_event_t*>(e);
        if (d->window == static_cast<xcb_window_t>(box_->winId()))
            QMetaObject::invokeMethod(box_, [b = box_] { b->CloseBySystem(); }, Qt::QueuedConnection);
        return false;
    }

private:
    MessageDialog* box_;
};

MessageDialog::MessageDialog(frmMessage& model, QWidget* owner)
    : QDialog(owner, Qt::Tool | Qt::FramelessWindowHint), model_(model), scale_(look::FormScale(owner)) {
    // Drawn nowhere, but named for task switchers and screen readers.
    setWindowTitle(QStringLiteral("Tessuma Sudoku"));
    gone_ = new WindowGone(this);
    setFixedSize(qRound(392 * scale_), qRound(160 * scale_));
    setModal(true);
    setMouseTracking(true);
    if (model_.txtName.Visible) {
        name_ = new QLineEdit(this);
        const QRect r = Px(model_.txtName.Left, model_.txtName.Top, model_.txtName.Width, model_.txtName.Height);
        name_->setGeometry(QRect((QPointF(r.topLeft()) * scale_).toPoint(), (QSizeF(r.size()) * scale_).toSize()));
        name_->setMaxLength(model_.txtName.MaxLength);
        name_->setFont(look::Verdana(11.25 * scale_, true));
        name_->setFrame(true);
        name_->setStyleSheet(
            "QLineEdit { background: #FEFED6; border: 1px solid #B55E0B; border-radius: 3px; padding: 0 4px; }");
        name_->setText(QString::fromStdString(model_.txtName.Text));
        name_->installEventFilter(this);
        connect(name_, &QLineEdit::textEdited, this,
                [this](const QString& t) { model_.txtName_Change(t.toStdString(), name_->cursorPosition()); });
        // The caret goes to the end, as the queued Ctrl+End asks.
        model_.DeliverQueuedKeys();
        name_->setCursorPosition(model_.txtName.SelStart);
        name_->setFocus();
    }
    // Placed when shown (see showEvent).
}

MessageDialog::~MessageDialog() { delete gone_; }

void MessageDialog::showEvent(QShowEvent* e) {
    // Before the window is mapped: a fixed tool window, out of the task bar,
    // centred on its owner.
    x11hints::MakeFixedToolWindow(this);
    // The inside of the box, not its frame, is centred: placed by its inside
    // (setGeometry, never move), the window manager keeps it there.
    if (QWidget* owner = parentWidget()) {
        const QPoint c = owner->mapToGlobal(QPoint(owner->width() / 2, owner->height() / 2));
        setGeometry(QRect(QPoint(c.x() - width() / 2, c.y() - height() / 2), size()));
    }
    QDialog::showEvent(e);
}

void MessageDialog::changeEvent(QEvent* e) {
    QDialog::changeEvent(e);
    // A modal box out of the task bar could not be found again once
    // minimised: it comes straight back.
    if (e->type() == QEvent::WindowStateChange && isMinimized())
        QTimer::singleShot(0, this, [this] {
            setWindowState(windowState() & ~Qt::WindowMinimized);
            showNormal();
        });
}

QRect MessageDialog::Px(int leftTw, int topTw, int widthTw, int heightTw) {
    return QRect(leftTw / 15, topTw / 15, widthTw / 15, heightTw / 15);
}

void MessageDialog::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.scale(scale_, scale_);
    const QRect whole(0, 0, 392, 160);
    const QPixmap& bg = look::Control("message_bg");
    if (!bg.isNull())
        p.drawPixmap(whole, bg);
    else
        p.fillRect(whole, QColor(254, 254, 236));
    // The message fits its label: smaller type for a long one, and a path
    // too long for a line is broken where it must be.
    const Label& m = model_.lblMessage;
    // A little air under the last line.
    const QRect box = Px(m.Left, m.Top, m.Width, m.Height).adjusted(0, 0, 0, -3);
    const QString text = QString::fromStdString(m.Caption).replace("\r\n", "\n");
    int flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
    QFont font = look::FitFont(look::Verdana(11.25, true), box, flags, text, 0.7);
    if (QFontMetricsF(font).boundingRect(box, flags, text).width() > box.width() + 0.5) {
        flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWrapAnywhere;
        font = look::FitFont(look::Verdana(11.25, true), box, flags, text, 0.7);
    }
    p.setFont(font);
    p.setPen(QColor(40, 40, 40));
    p.drawText(box, flags, text);
    // The close mark: a round purple button with a white cross.
    const QRectF mark = QRectF(kCloseMark).adjusted(1.5, 1.5, -1.5, -1.5);
    p.setPen(Qt::NoPen);
    p.setBrush(closeHovered_ ? QColor(224, 64, 224) : QColor(192, 0, 192));
    p.drawEllipse(mark);
    p.setPen(QPen(Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap));
    const QRectF cross = mark.adjusted(5, 5, -5, -5);
    p.drawLine(cross.topLeft(), cross.bottomRight());
    p.drawLine(cross.topRight(), cross.bottomLeft());
    for (const Label* l : {&model_.lblYes, &model_.lblNo, &model_.lblOkay}) {
        if (!l->Visible) continue;
        p.setFont(look::Japan(20.25, true, true));
        p.setPen(look::Bgr(l->ForeColor));
        p.drawText(Px(l->Left, l->Top, l->Width, l->Height).adjusted(-20, -4, 20, 4), Qt::AlignCenter,
                   QString::fromStdString(l->Caption));
    }
}

void MessageDialog::AfterModel() {
    if (model_.Unloaded)
        accept();
    else
        update();
}

bool MessageDialog::eventFilter(QObject* watched, QEvent* event) {
    // The field keeps the caret where the model has it (after the name, as
    // the queued Ctrl+End asks), also when the box's showing hands it the
    // focus in a way that would select the whole name.
    if (watched == name_ && event->type() == QEvent::FocusIn) {
        QTimer::singleShot(0, name_, [this] {
            if (name_->hasSelectedText()) name_->setCursorPosition(name_->cursorPosition());
        });
        return false;
    }
    // The box sees keys before its controls: releases in the name field go
    // to the model as well.
    if (watched == name_ && event->type() == QEvent::KeyRelease) {
        auto* e = static_cast<QKeyEvent*>(event);
        if (!e->isAutoRepeat()) {
            model_.txtName_Change(name_->text().toStdString(), name_->cursorPosition());
            model_.Form_KeyUp(input::VirtualKey(e), 0);
            AfterModel();
        }
        return false;
    }
    if (watched == name_ && event->type() == QEvent::KeyPress) {
        auto* e = static_cast<QKeyEvent*>(event);
        if (e->key() == Qt::Key_Escape || e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) return true;
    }
    return QDialog::eventFilter(watched, event);
}

void MessageDialog::keyReleaseEvent(QKeyEvent* e) {
    if (e->isAutoRepeat()) return;
    model_.Form_KeyUp(input::VirtualKey(e), 0);
    AfterModel();
}

bool MessageDialog::OverClose(const QPoint& formPoint) const { return kCloseMark.contains(formPoint); }

void MessageDialog::mousePressEvent(QMouseEvent* e) {
    // A press on the background moves the box, through the window system.
    const QPoint pt = Unscaled(e->position());
    bool onLabel = OverClose(pt);
    for (const Label* l : {&model_.lblYes, &model_.lblNo, &model_.lblOkay})
        if (l->Visible && Px(l->Left, l->Top, l->Width, l->Height).adjusted(-20, -4, 20, 4).contains(pt)) onLabel = true;
    if (e->button() == Qt::LeftButton && !onLabel && windowHandle()) windowHandle()->startSystemMove();
}

void MessageDialog::leaveEvent(QEvent* e) {
    QDialog::leaveEvent(e);
    if (closeHovered_) {
        closeHovered_ = false;
        update(rect());
    }
}

void MessageDialog::mouseMoveEvent(QMouseEvent* e) {
    const bool onClose = OverClose(Unscaled(e->position()));
    if (onClose != closeHovered_) {
        closeHovered_ = onClose;
        update(rect());
    }
    bool over = onClose;
    for (const Label* l : {&model_.lblYes, &model_.lblNo, &model_.lblOkay})
        if (l->Visible &&
            Px(l->Left, l->Top, l->Width, l->Height).adjusted(-20, -4, 20, 4).contains(Unscaled(e->position())))
            over = true;
    setCursor(over ? look::Hand() : QCursor(Qt::ArrowCursor));
}

void MessageDialog::mouseReleaseEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    const QPoint pt = Unscaled(e->position());
    auto hit = [&](const Label& l) {
        return l.Visible && Px(l.Left, l.Top, l.Width, l.Height).adjusted(-20, -4, 20, 4).contains(pt);
    };
    if (OverClose(pt)) {
        CloseBySystem();
        return;
    }
    if (name_) model_.txtName_Change(name_->text().toStdString(), name_->cursorPosition());
    if (hit(model_.lblYes))
        model_.lblYes_Click();
    else if (hit(model_.lblNo))
        model_.lblNo_Click();
    else if (hit(model_.lblOkay))
        model_.lblOkay_Click();
    AfterModel();
}

void MessageDialog::CloseBySystem() {
    if (!model_.Unloaded) {
        if (name_) model_.txtName_Change(name_->text().toStdString(), name_->cursorPosition());
        model_.CloseBySystem();
    }
    done(QDialog::Accepted);
}

void MessageDialog::closeEvent(QCloseEvent* e) {
    // The system's close answers as the model says. QDialog's own would ask
    // reject(), which answers nothing here, and keep the box open.
    e->accept();
    CloseBySystem();
}

void MessageDialog::reject() {
    // Esc answers nothing; only the close button ends the box.
}

void QtMessageHost::RunModal(frmMessage& form) {
    MessageDialog dialog(form, owner_ ? owner_->window() : nullptr);
    dialog.exec();
    if (!form.Unloaded) form.CloseBySystem();
}
