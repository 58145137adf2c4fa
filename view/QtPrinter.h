#pragma once
// Prints the window's inside one-to-one to the default printer, with no
// dialog. With no printer installed the page goes to a PDF file in the
// player's documents folder instead.

#include "platform/Ports.h"

class QWidget;

class QtPrinter : public IPrinter {
public:
    explicit QtPrinter(QWidget& window) : window_(window) {}
    std::string PrintForm() override;
    // Where a page goes when there is no printer (for tests).
    static std::string PdfPath();

private:
    QWidget& window_;
};
