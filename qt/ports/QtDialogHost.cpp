// The file, colour, font, page and folder dialogs, over Qt's.
#include "qt/ports/QtDialogHost.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QMessageBox>

#include "qt/ports/Extras.h"

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// "Tessuma Saved Games (*.tsm)" with the pattern "*.tsm" as Qt writes a
// filter; several patterns are separated by ";" in the game's form.
QString QtFilter(const std::pair<std::string, std::string>& f) {
    QString patterns = Q(f.second);
    patterns.replace(';', ' ');
    QString description = Q(f.first);
    if (description.contains('(')) description = description.left(description.indexOf('(')).trimmed();
    return description + " (" + patterns + ")";
}

}  // namespace

FileDialogResult QtDialogHost::FileDialog(const FileDialogRequest& req) {
    QFileDialog dialog(owner_, Q(req.title), Q(req.initialDir));
    QStringList filters;
    for (const auto& f : req.filters) filters << QtFilter(f);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (req.filterIndex >= 1 && req.filterIndex <= filters.size())
        dialog.selectNameFilter(filters[req.filterIndex - 1]);
    switch (req.kind) {
        case FileDialogRequest::Open:
            dialog.setAcceptMode(QFileDialog::AcceptOpen);
            dialog.setFileMode(req.multiSelect ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
            break;
        case FileDialogRequest::OpenNew:
            dialog.setAcceptMode(QFileDialog::AcceptOpen);
            dialog.setFileMode(QFileDialog::AnyFile);
            break;
        case FileDialogRequest::Save:
            dialog.setAcceptMode(QFileDialog::AcceptSave);
            dialog.setFileMode(QFileDialog::AnyFile);
            // The game asks its own question before replacing a file.
            dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
            break;
    }
    FileDialogResult r;
    while (true) {
        if (dialog.exec() != QDialog::Accepted) return r;  // a plain cancel: code 0
        // With the create prompt the save dialog asks before it names a file
        // that isn't there yet; "no" goes back to the dialog.
        if (req.kind != FileDialogRequest::Save || !req.createPrompt || dialog.selectedFiles().isEmpty()) break;
        const QString chosen = dialog.selectedFiles().first();
        if (QFileInfo::exists(chosen)) break;
        const auto answer = QMessageBox::question(owner_, dialog.windowTitle(),
                                                  chosen + "\nThis file does not exist.\nDo you want to create it?",
                                                  QMessageBox::Yes | QMessageBox::No);
        if (answer == QMessageBox::Yes) break;
    }
    for (const QString& f : dialog.selectedFiles()) {
        if (static_cast<int>(f.toUtf8().size()) > req.maxFileNameBuffer && !req.multiSelect) {
            r.errorCode = 12291;  // the name doesn't fit the buffer
            r.paths.clear();
            return r;
        }
        r.paths.push_back(f.toStdString());
    }
    r.ok = !r.paths.empty();
    const int chosen = filters.indexOf(dialog.selectedNameFilter());
    r.filterIndex = chosen >= 0 ? chosen + 1 : req.filterIndex;
    return r;
}

std::optional<std::int32_t> QtDialogHost::ChooseColor(std::int32_t initial) {
    const auto v = static_cast<std::uint32_t>(initial);
    const QColor start(static_cast<int>(v & 0xFF), static_cast<int>((v >> 8) & 0xFF),
                       static_cast<int>((v >> 16) & 0xFF));
    const QColor c = QColorDialog::getColor(start, owner_);
    if (!c.isValid()) return std::nullopt;
    return static_cast<std::int32_t>(c.red() | (c.green() << 8) | (c.blue() << 16));
}

std::optional<IDialogHost::FontChoice> QtDialogHost::ChooseFont() {
    bool ok = false;
    const QFont f = QFontDialog::getFont(&ok, owner_);
    if (!ok) return std::nullopt;
    FontChoice c;
    c.faceName = f.family().toStdString();
    c.sizePoints = static_cast<int>(f.pointSizeF() + 0.5);
    c.bold = f.bold();
    c.italic = f.italic();
    return c;
}

// The page and print dialogs come with printing, in the extras module.
bool QtDialogHost::PageSetupDialog(PageSetup& setup) {
    const ExtrasApi* api = extras::Api();
    return api && api->pageSetupDialog(owner_, setup);
}

bool QtDialogHost::PrintDialog() {
    const ExtrasApi* api = extras::Api();
    return api && api->printDialog(owner_);
}

std::optional<std::string> QtDialogHost::BrowseForFolder(const std::string& title) {
    const QString dir = QFileDialog::getExistingDirectory(owner_, Q(title));
    if (dir.isEmpty()) return std::nullopt;
    return dir.toStdString();
}
