// The extras module's table of entry points.
#include "qt/extras/Printing.h"
#include "qt/extras/QtDownloader.h"
#include "qt/ports/Extras.h"

extern "C" __attribute__((visibility("default"))) const ExtrasApi* tessuma_extras_api() {
    static const ExtrasApi api{
        [] { return std::unique_ptr<IDownloader>(std::make_unique<QtDownloader>()); },
        &QtDownloader::Active,
        &printing::PrintPage,
        &printing::PageSetupDialog,
        &printing::PrintDialog,
        &printing::DrawSvg,
    };
    return &api;
}
