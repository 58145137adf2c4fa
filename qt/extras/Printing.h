#pragma once
// The extras module's printing: a page drawn by the caller, as a PDF handed
// to the default queue (or kept in the documents folder when there is no
// printer), the page and print dialogs, and the pictures' drawings on paper.

#include <QString>
#include <functional>
#include <string>

#include "forms/Ports.h"

class QPageSize;
class QPainter;
class QRectF;
class QWidget;

namespace printing {

// Draws the form in form pixels (640 by 480) with the painter it is given.
using PaintPage = std::function<void(QPainter&)>;

PrintResult PrintPage(const PaintPage& paint);
// Where a page goes when there is no printer.
std::string PdfPath();
// Draws one page into a PDF file on the given paper; false when the file
// could not be written.
bool WritePage(const PaintPage& paint, const QString& path, const QPageSize& paper);

bool PageSetupDialog(QWidget* owner, IDialogHost::PageSetup& setup);
bool PrintDialog(QWidget* owner);
// Draws the SVG picture at `path` into `target`; false when there is none.
bool DrawSvg(QPainter& p, const QString& path, const QRectF& target);

}  // namespace printing
