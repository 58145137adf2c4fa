#pragma once
// The Qt face of frmMessage: a small pale box, modal over the main window.
// Key releases and clicks go to the model; the box closes when the model
// says it is unloaded.

#include <QDialog>

#include "forms/Ports.h"

class QLineEdit;
class frmMessage;

class MessageDialog : public QDialog {
    Q_OBJECT
public:
    MessageDialog(frmMessage& model, QWidget* owner);

protected:
    void showEvent(QShowEvent* e) override;
    void changeEvent(QEvent* e) override;
    void paintEvent(QPaintEvent*) override;
    void keyReleaseEvent(QKeyEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void reject() override;  // Esc closes nothing

private:
    void AfterModel();
    QRect Px(int leftTw, int topTw, int widthTw, int heightTw) const;
    frmMessage& model_;
    QLineEdit* name_ = nullptr;
};

class QtMessageHost : public IMessageHost {
public:
    explicit QtMessageHost(QWidget* owner = nullptr) : owner_(owner) {}
    void SetOwner(QWidget* owner) { owner_ = owner; }
    void RunModal(frmMessage& form) override;

private:
    QWidget* owner_;
};
