#pragma once
// The platform's common dialogs on Qt: file names, colour, font, page setup,
// printer and folder choice.

#include "forms/Ports.h"

class QWidget;

class QtDialogHost : public IDialogHost {
public:
    explicit QtDialogHost(QWidget* owner = nullptr) : owner_(owner) {}
    void SetOwner(QWidget* owner) { owner_ = owner; }

    FileDialogResult FileDialog(const FileDialogRequest& req) override;
    std::optional<std::int32_t> ChooseColor(std::int32_t initial) override;
    std::optional<FontChoice> ChooseFont() override;
    bool PageSetupDialog(PageSetup& setup) override;
    bool PrintDialog() override;
    std::optional<std::string> BrowseForFolder(const std::string& title) override;

private:
    QWidget* owner_;
};
