#pragma once
// The Qt face of frmMessage: a small pale box, modal over the main window.
// Key releases and clicks go to the model; the box closes when the model
// says it is unloaded. It draws its own frame, with a close mark in its
// corner and no minimise or maximise button under any window manager, and
// it is moved by a drag on its background.

#include <QDialog>

#include "forms/Ports.h"

class QLineEdit;
class frmMessage;

class MessageDialog : public QDialog {
    Q_OBJECT
public:
    MessageDialog(frmMessage& model, QWidget* owner);
    ~MessageDialog() override;

protected:
    void showEvent(QShowEvent* e) override;
    void changeEvent(QEvent* e) override;
    void paintEvent(QPaintEvent*) override;
    void keyReleaseEvent(QKeyEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void reject() override;  // Esc closes nothing

private:
    void AfterModel();
    // The system's close: the box's own close mark, the window manager's
    // close (Alt+F4, a close asked by another program), its window gone.
    void CloseBySystem();
    bool OverClose(const QPoint& formPoint) const;
    // A control's place in the box's own pixels, unscaled.
    static QRect Px(int leftTw, int topTw, int widthTw, int heightTw);
    // A point of the window in the box's own pixels.
    QPoint Unscaled(const QPointF& p) const { return (p / scale_).toPoint(); }
    frmMessage& model_;
    QLineEdit* name_ = nullptr;
    double scale_ = 1.0;  // the form's scale in the main window
    bool closeHovered_ = false;
    class WindowGone;
    WindowGone* gone_ = nullptr;
};

class QtMessageHost : public IMessageHost {
public:
    explicit QtMessageHost(QWidget* owner = nullptr) : owner_(owner) {}
    void SetOwner(QWidget* owner) { owner_ = owner; }
    void RunModal(frmMessage& form) override;

private:
    QWidget* owner_;
};
