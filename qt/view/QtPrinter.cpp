// The print port: the window's form, drawn by the extras module's printing.
#include "qt/view/QtPrinter.h"

#include "qt/ports/Extras.h"
#include "qt/view/FormView.h"
#include "qt/view/TessumaWindow.h"

PrintResult QtPrinter::PrintForm() {
    FormView* view = nullptr;
    if (auto* w = dynamic_cast<TessumaWindow*>(&window_)) view = w->View();
    const ExtrasApi* api = view ? extras::Api() : nullptr;
    if (!api) return {PrintResult::PrinterFailed, ""};
    return api->printPage([view](QPainter& p) { view->PaintForm(p); });
}
