// Printing the board to the default queue, or to a PDF when there is none.
#include "qt/view/QtPrinter.h"

#include <cups/cups.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "qt/view/FormView.h"
#include "qt/view/TessumaWindow.h"

std::string QtPrinter::PdfPath() {
    QString dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (dir.isEmpty()) dir = QDir::homePath();
    QDir().mkpath(dir);
    const QString name = "Tessuma Sudoku " + QDateTime::currentDateTime().toString("yyyy-MM-dd hh.mm.ss") + ".pdf";
    return QDir(dir).filePath(name).toStdString();
}

bool QtPrinter::WritePage(FormView& view, const QString& path, const QPageSize& paper) {
    // The page is drawn in form pixels, 96 to the inch, where the game's
    // point sizes mean what they mean on the screen. The PDF keeps the text
    // as text and the pictures at their full resolution, so nothing on the
    // paper is limited by this unit.
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setResolution(96);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    printer.setDocName("Tessuma Sudoku");
    printer.setCreator("Tessuma Sudoku");
    printer.setPageSize(paper);
    printer.setPageOrientation(QPageLayout::Portrait);
    printer.setFullPage(true);
    QPainter p;
    if (!p.begin(&printer)) return false;
    // The form at 96 pixels an inch, centred on the paper; within half-inch
    // margins it shrinks to fit a small sheet.
    const double dpi = printer.resolution();
    const QRectF sheet = printer.pageLayout().fullRectPixels(printer.resolution());
    const double margin = dpi / 2;
    const QSizeF form(640, 480);
    const double scale = std::min(
        {dpi / 96.0, (sheet.width() - 2 * margin) / form.width(), (sheet.height() - 2 * margin) / form.height()});
    p.translate(sheet.center() - QPointF(form.width() * scale / 2, form.height() * scale / 2));
    p.scale(scale, scale);
    view.PaintForm(p);
    return p.end() && QFileInfo(path).size() > 0;
}

PrintResult QtPrinter::PrintForm() {
    FormView* view = nullptr;
    if (auto* w = dynamic_cast<TessumaWindow*>(&window_)) view = w->View();
    if (!view) return {PrintResult::PrinterFailed, ""};

    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) {
        const std::string pdf = PdfPath();
        // The paper of the player's part of the world: Letter where inches rule.
        const QPageSize paper(QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                                                 : QPageSize::A4);
        const bool written = WritePage(*view, QString::fromStdString(pdf), paper);
        if (!written) QFile::remove(QString::fromStdString(pdf));
        return {written ? PrintResult::ToFile : PrintResult::FileFailed, written ? pdf : ""};
    }

    // The page on the queue's own paper, handed to the print system, which
    // answers whether the queue took it.
    QTemporaryDir scratch;
    if (!scratch.isValid()) return {PrintResult::PrinterFailed, ""};
    const QString page = scratch.filePath("page.pdf");
    QPageSize paper = info.defaultPageSize();
    if (!paper.isValid()) paper = QPageSize(QPageSize::A4);
    if (!WritePage(*view, page, paper)) return {PrintResult::PrinterFailed, ""};
    const QByteArray queue = info.printerName().toLocal8Bit();
    const QByteArray file = page.toLocal8Bit();
    const int job = cupsPrintFile(queue.constData(), file.constData(), "Tessuma Sudoku", 0, nullptr);
    return {job > 0 ? PrintResult::Printed : PrintResult::PrinterFailed, ""};
}
