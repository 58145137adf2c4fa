#pragma once
// The Qt face of frmUpdate: a small window owned by the main window, above
// it but not modal, so the game goes on behind it.

#include <QDialog>

class Program;

class UpdateDialog : public QDialog {
    Q_OBJECT
public:
    UpdateDialog(Program& program, QWidget* owner);

signals:
    // The model changed (the link was clicked, the window closed).
    void ModelChanged();

protected:
    void paintEvent(QPaintEvent*) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    QRect LinkRect() const;
    Program& program_;
};
