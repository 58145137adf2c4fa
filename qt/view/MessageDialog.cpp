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

#include "forms/frmMessage.h"
#include "qt/view/Look.h"
#include "qt/view/X11Hints.h"

MessageDialog::MessageDialog(frmMessage& model, QWidget* owner)
    : QDialog(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      model_(model) {
    setWindowTitle(QString());
    setFixedSize(392, 160);
    setModal(true);
    setMouseTracking(true);
    if (model_.txtName.Visible) {
        name_ = new QLineEdit(this);
        name_->setGeometry(Px(model_.txtName.Left, model_.txtName.Top, model_.txtName.Width, model_.txtName.Height));
        name_->setMaxLength(model_.txtName.MaxLength);
        name_->setFont(look::Verdana(11.25, true));
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

QRect MessageDialog::Px(int leftTw, int topTw, int widthTw, int heightTw) const {
    return QRect(leftTw / 15, topTw / 15, widthTw / 15, heightTw / 15);
}

void MessageDialog::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    const QPixmap& bg = look::Control("message_bg");
    if (!bg.isNull())
        p.drawPixmap(rect(), bg);
    else
        p.fillRect(rect(), QColor(254, 254, 236));
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

void MessageDialog::mouseMoveEvent(QMouseEvent* e) {
    bool over = false;
    for (const Label* l : {&model_.lblYes, &model_.lblNo, &model_.lblOkay})
        if (l->Visible &&
            Px(l->Left, l->Top, l->Width, l->Height).adjusted(-20, -4, 20, 4).contains(e->position().toPoint()))
            over = true;
    setCursor(over ? look::Hand() : QCursor(Qt::ArrowCursor));
}

void MessageDialog::mouseReleaseEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    const QPoint pt = e->position().toPoint();
    auto hit = [&](const Label& l) {
        return l.Visible && Px(l.Left, l.Top, l.Width, l.Height).adjusted(-20, -4, 20, 4).contains(pt);
    };
    if (name_) model_.txtName_Change(name_->text().toStdString(), name_->cursorPosition());
    if (hit(model_.lblYes))
        model_.lblYes_Click();
    else if (hit(model_.lblNo))
        model_.lblNo_Click();
    else if (hit(model_.lblOkay))
        model_.lblOkay_Click();
    AfterModel();
}

void MessageDialog::closeEvent(QCloseEvent* e) {
    if (!model_.Unloaded) {
        if (name_) model_.txtName_Change(name_->text().toStdString(), name_->cursorPosition());
        model_.CloseBySystem();
    }
    e->accept();
    QDialog::closeEvent(e);
}

void MessageDialog::reject() {
    // Esc answers nothing; only the close button ends the box.
}

void QtMessageHost::RunModal(frmMessage& form) {
    MessageDialog dialog(form, owner_ ? owner_->window() : nullptr);
    dialog.exec();
    if (!form.Unloaded) form.CloseBySystem();
}
