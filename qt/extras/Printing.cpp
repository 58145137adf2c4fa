// Printing the board to the default queue, or to a PDF when there is none;
// the page and print dialogs; the pictures' drawings on paper.
#include "qt/extras/Printing.h"

#include <cups/cups.h>

#include <QBuffer>
#include <QDateTime>
#include <QFile>
#include <QHash>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QSvgRenderer>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace printing {

std::string PdfPath() {
    QString dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (dir.isEmpty()) dir = QDir::homePath();
    QDir().mkpath(dir);
    const QString name = "Tessuma Sudoku " + QDateTime::currentDateTime().toString("yyyy-MM-dd hh.mm.ss") + ".pdf";
    return QDir(dir).filePath(name).toStdString();
}

bool WritePage(const PaintPage& paint, const QString& path, const QPageSize& paper) {
    // The page is made in memory, then the file is replaced whole or not at
    // all: a disk that fills up half-way through leaves no file behind, and
    // nothing is said of one. (The PDF engine does not pass on a device's
    // write errors, so it is not given the file itself.)
    QByteArray page;
    {
        QBuffer out(&page);
        out.open(QIODevice::WriteOnly);
        // The page is drawn in form pixels, 96 to the inch, where the game's
        // point sizes mean what they mean on the screen. The PDF keeps the
        // text as text and the pictures at their full resolution, so nothing
        // on the paper is limited by this unit.
        QPdfWriter pdf(&out);
        pdf.setResolution(96);
        pdf.setTitle("Tessuma Sudoku");
        pdf.setCreator("Tessuma Sudoku");
        pdf.setPageLayout(QPageLayout(paper, QPageLayout::Portrait, QMarginsF()));
        QPainter p;
        if (!p.begin(&pdf)) return false;
        // The form at 96 pixels an inch, centred on the paper; within
        // half-inch margins it shrinks to fit a small sheet.
        const double dpi = pdf.resolution();
        const QRectF sheet = pdf.pageLayout().fullRectPixels(pdf.resolution());
        const double margin = dpi / 2;
        const QSizeF form(640, 480);
        const double scale = std::min(
            {dpi / 96.0, (sheet.width() - 2 * margin) / form.width(), (sheet.height() - 2 * margin) / form.height()});
        p.translate(sheet.center() - QPointF(form.width() * scale / 2, form.height() * scale / 2));
        p.scale(scale, scale);
        paint(p);
        if (!p.end()) return false;
    }
    if (page.isEmpty()) return false;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(page) == page.size() && file.commit();
}

PrintResult PrintPage(const PaintPage& paint) {
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) {
        const std::string pdf = PdfPath();
        // The paper of the player's part of the world: Letter where inches rule.
        const QPageSize paper(QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                                                 : QPageSize::A4);
        const bool written = WritePage(paint, QString::fromStdString(pdf), paper);
        return {written ? PrintResult::ToFile : PrintResult::FileFailed, written ? pdf : ""};
    }

    // The page on the queue's own paper, handed to the print system, which
    // answers whether the queue took it.
    QTemporaryDir scratch;
    if (!scratch.isValid()) return {PrintResult::PrinterFailed, ""};
    const QString page = scratch.filePath("page.pdf");
    QPageSize paper = info.defaultPageSize();
    if (!paper.isValid()) paper = QPageSize(QPageSize::A4);
    if (!WritePage(paint, page, paper)) return {PrintResult::PrinterFailed, ""};
    const QByteArray queue = info.printerName().toLocal8Bit();
    const QByteArray file = page.toLocal8Bit();
    const int job = cupsPrintFile(queue.constData(), file.constData(), "Tessuma Sudoku", 0, nullptr);
    return {job > 0 ? PrintResult::Printed : PrintResult::PrinterFailed, ""};
}

bool PageSetupDialog(QWidget* owner, IDialogHost::PageSetup& setup) {
    QPrinter printer;
    // Start from the margins given, in thousandths of an inch, and keep them
    // at or above their lower limits.
    QPageLayout start = printer.pageLayout();
    start.setUnits(QPageLayout::Inch);
    start.setMinimumMargins(
        QMarginsF(setup.minLeft / 1000.0, setup.minTop / 1000.0, setup.minRight / 1000.0, setup.minBottom / 1000.0));
    start.setMargins(QMarginsF(setup.left / 1000.0, setup.top / 1000.0, setup.right / 1000.0, setup.bottom / 1000.0));
    printer.setPageLayout(start);
    QPageSetupDialog dialog(&printer, owner);
    if (dialog.exec() != QDialog::Accepted) return false;
    const QPageLayout layout = printer.pageLayout();
    const QSizeF paper = layout.fullRect(QPageLayout::Inch).size();
    const QMarginsF m = layout.margins(QPageLayout::Inch);
    setup.paperWidth = static_cast<int>(paper.width() * 1000 + 0.5);
    setup.paperHeight = static_cast<int>(paper.height() * 1000 + 0.5);
    setup.left = static_cast<int>(m.left() * 1000 + 0.5);
    setup.right = static_cast<int>(m.right() * 1000 + 0.5);
    setup.top = static_cast<int>(m.top() * 1000 + 0.5);
    setup.bottom = static_cast<int>(m.bottom() * 1000 + 0.5);
    return true;
}

bool PrintDialog(QWidget* owner) {
    QPrinter printer;
    QPrintDialog dialog(&printer, owner);
    return dialog.exec() == QDialog::Accepted;
}

bool DrawSvg(QPainter& p, const QString& path, const QRectF& target) {
    static QHash<QString, QSvgRenderer*> cache;  // kept for the program's life
    auto it = cache.find(path);
    if (it == cache.end()) {
        auto* r = QFile::exists(path) ? new QSvgRenderer(path) : nullptr;
        if (r && !r->isValid()) {
            delete r;
            r = nullptr;
        }
        it = cache.insert(path, r);
    }
    if (!*it) return false;
    (*it)->render(&p, target);
    return true;
}

}  // namespace printing
