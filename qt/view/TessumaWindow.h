#pragma once
// The game's one top-level window: borderless, 640 by 480, painted by the
// form view. When the game switches to its full-screen display mode, the
// same 640 by 480 scene is shown full screen, scaled up evenly.

#include <QGraphicsView>

#include "forms/Ports.h"

class FormView;
class Program;
class QGraphicsProxyWidget;
class UpdateDialog;

class TessumaWindow : public QGraphicsView, public IWindow {
    Q_OBJECT
public:
    explicit TessumaWindow(Program& program);
    ~TessumaWindow() override;

    // IWindow
    void Show() override;
    void Repaint() override;
    void Minimize() override;
    void MousePointerChanged(int pointer) override;
    void Unload() override;
    std::int32_t SetOwner(const std::string& ownedForm) override;

    // The display mode changed: full screen for 640 by 480, else normal.
    void SetFullScreenMode(bool full);
    FormView* View() const { return view_; }

protected:
    void resizeEvent(QResizeEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void changeEvent(QEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;

private:
    void EnsureView();
    void GoFullScreen();
    void FitScene();
    void FollowModel();
    Program& program_;
    FormView* view_ = nullptr;
    QGraphicsProxyWidget* proxy_ = nullptr;
    UpdateDialog* update_ = nullptr;
    bool fullScreen_ = false;
    bool unloading_ = false;
    bool overrideCursor_ = false;
    // The desktop asked to close while the model was busy (the update check
    // waiting for its answer): the close runs once the model is free.
    bool closePending_ = false;
};
