#pragma once
// Prints the form as it stands to the default printer, with no dialog: the
// view draws it straight onto the page at the printer's resolution (digits
// and captions as text), centred on the printer's own paper, one form pixel
// to a 96th of an inch, smaller only when the paper is smaller. The page is
// made as a PDF and handed to the print system, which says whether the
// queue took it. With no printer installed the PDF goes to the player's
// documents folder instead. The printing itself is the extras module's.

#include "forms/Ports.h"

class QWidget;

class QtPrinter : public IPrinter {
public:
    explicit QtPrinter(QWidget& window) : window_(window) {}
    PrintResult PrintForm() override;

private:
    QWidget& window_;
};
