// The floor for any Qt program: a bare window of the game's size that paints
// one colour. The whole-program benchmark starts it beside the game.
#include <QApplication>
#include <QPainter>
#include <QWidget>

class Plain : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), QColor(0x2a, 0x6f, 0x97)); }
};

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    Plain w;
    w.setWindowTitle("floor");
    w.resize(640, 480);
    w.show();
    return app.exec();
}
