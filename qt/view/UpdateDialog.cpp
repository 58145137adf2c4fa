// The update window that shows frmUpdate.
#include "qt/view/UpdateDialog.h"

#include <QCloseEvent>
#include <QMouseEvent>
#include <QPainter>

#include "forms/frmUpdate.h"
#include "forms/modMain.h"
#include "qt/view/Look.h"

UpdateDialog::UpdateDialog(Program& program, QWidget* owner)
    : QDialog(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      program_(program) {
    setModal(false);
    setFixedSize(392, 160);
    setMouseTracking(true);
    setWindowTitle(QString::fromStdString(program_.UpdateFormInstance().Caption));
}

QRect UpdateDialog::LinkRect() const { return QRect(112, 114, 256, 28); }

void UpdateDialog::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    const QPixmap& bg = look::Control("update_bg");
    if (!bg.isNull())
        p.drawPixmap(rect(), bg);
    else
        p.fillRect(rect(), QColor(254, 254, 236));
    const frmUpdate& f = program_.UpdateFormInstance();
    p.setFont(look::Japan(15));
    p.setPen(look::Bgr(0xB55E0B));
    p.drawText(QRect(112, 16, 256, 26), Qt::AlignCenter, QString::fromStdString(f.Label2.Caption));
    p.setFont(look::Verdana(9.5, true));
    p.setPen(look::Bgr(0x2600C0));
    p.drawText(QRect(112, 44, 256, 20), Qt::AlignCenter, QString::fromStdString(f.lblStatus.Caption));
    p.setFont(look::Verdana(8.5));
    p.setPen(QColor(50, 50, 50));
    p.drawText(QRect(118, 66, 244, 44), Qt::AlignCenter | Qt::TextWordWrap, QString::fromStdString(f.Label1.Caption));
    p.setFont(look::Japan(17, true, true));
    p.setPen(look::Bgr(f.lblDownload.ForeColor));
    p.drawText(LinkRect(), Qt::AlignCenter, QString::fromStdString(f.lblDownload.Caption));
}

void UpdateDialog::mouseMoveEvent(QMouseEvent* e) {
    setCursor(LinkRect().contains(e->position().toPoint()) ? look::Hand() : QCursor(Qt::ArrowCursor));
}

void UpdateDialog::mouseReleaseEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton || !LinkRect().contains(e->position().toPoint())) return;
    program_.UpdateFormInstance().lblDownload_Click();
    emit ModelChanged();
}

void UpdateDialog::closeEvent(QCloseEvent* e) {
    frmUpdate& f = program_.UpdateFormInstance();
    if (f.Visible) f.CloseBySystem();
    e->accept();
    emit ModelChanged();
}
