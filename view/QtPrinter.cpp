#include "view/QtPrinter.h"

#include <QDateTime>
#include <QDir>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QWidget>

#include "view/TessumaWindow.h"
#include "view/FormView.h"

std::string QtPrinter::PdfPath() {
    QString dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (dir.isEmpty()) dir = QDir::homePath();
    QDir().mkpath(dir);
    const QString name = "Tessuma Sudoku " + QDateTime::currentDateTime().toString("yyyy-MM-dd hh.mm.ss") + ".pdf";
    return QDir(dir).filePath(name).toStdString();
}

std::string QtPrinter::PrintForm() {
    // The form as it stands now, one to one.
    QWidget* form = &window_;
    if (auto* w = dynamic_cast<TessumaWindow*>(&window_); w && w->View()) form = w->View();
    form->repaint();
    const QPixmap shot = form->grab();

    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    QPrinter printer(QPrinter::HighResolution);
    std::string pdf;
    if (info.isNull()) {
        pdf = PdfPath();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(pdf));
    } else {
        printer.setPrinterName(info.printerName());
    }
    printer.setDocName("Tessuma Sudoku");
    QPainter p;
    if (!p.begin(&printer)) return pdf.empty() ? "" : pdf;
    // One pixel of the form to one point of paper: the size it had on the
    // screen it was drawn for.
    const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
    const double scale = printer.resolution() / 96.0;
    const QSizeF size(shot.width() / shot.devicePixelRatio() * scale, shot.height() / shot.devicePixelRatio() * scale);
    p.drawPixmap(QRectF(QPointF(0, 0), size.boundedTo(page.size())), shot, shot.rect());
    p.end();
    return pdf;
}
