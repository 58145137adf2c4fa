// Widget tests of HoverCommand: drawn faces checked pixel by pixel, and the
// mouse, keyboard and property behaviour seen through its signals.

#include <QApplication>
#include <QPainter>
#include <QSignalSpy>
#include <QtTest>

#include "controls/HoverCommand.h"

namespace {

const QColor kFace(0xC0, 0xC0, 0xC0);
const QColor kLight(0xFF, 0xFF, 0xFF);
const QColor kMidlight(0xE0, 0xE0, 0xE0);
const QColor kDark(0x80, 0x80, 0x80);
const QColor kShadow(0x00, 0x00, 0x00);
const QColor kHighlight(0x00, 0x00, 0x80);

// A palette whose 3D colours are told apart easily.
QPalette TestPalette()
{
    QPalette pal;
    pal.setColor(QPalette::Button, kFace);
    pal.setColor(QPalette::Light, kLight);
    pal.setColor(QPalette::Midlight, kMidlight);
    pal.setColor(QPalette::Dark, kDark);
    pal.setColor(QPalette::Shadow, kShadow);
    pal.setColor(QPalette::Highlight, kHighlight);
    pal.setColor(QPalette::WindowText, Qt::black);
    pal.setColor(QPalette::Window, QColor(0x20, 0x40, 0x60));
    return pal;
}

// A bitmap of the given size in colour `key`, with `inner` filled in `fill`.
QImage Bitmap(QSize size, QColor key, QRect inner, QColor fill)
{
    QImage img(size, QImage::Format_RGB32);
    img.fill(key);
    QPainter p(&img);
    p.fillRect(inner, fill);
    return img;
}

QColor Pixel(HoverCommand& b, int x, int y)
{
    return b.grab().toImage().pixelColor(x, y);
}

void SendMouse(QWidget& w, QEvent::Type type, QPoint pos, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent e(type, QPointF(pos), QPointF(w.mapToGlobal(pos)), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(&w, &e);
}
void Move(QWidget& w, QPoint pos, Qt::MouseButtons held = Qt::NoButton)
{
    SendMouse(w, QEvent::MouseMove, pos, Qt::NoButton, held);
}
void Press(QWidget& w, QPoint pos, Qt::MouseButton b = Qt::LeftButton)
{
    SendMouse(w, QEvent::MouseButtonPress, pos, b, b);
}
void Release(QWidget& w, QPoint pos, Qt::MouseButton b = Qt::LeftButton)
{
    SendMouse(w, QEvent::MouseButtonRelease, pos, b, Qt::NoButton);
}
void Key(QWidget& w, QEvent::Type type, int key, bool autoRepeat = false)
{
    QKeyEvent e(type, key, Qt::NoModifier, QString(), autoRepeat);
    QApplication::sendEvent(&w, &e);
}

// Every signal of a control, as one line each.
struct Recorder {
    QStringList log;
    explicit Recorder(HoverCommand& b)
    {
        QObject::connect(&b, &HoverCommand::Click, [this] { log << "Click"; });
        QObject::connect(&b, &HoverCommand::MouseLeave, [this] { log << "MouseLeave"; });
        QObject::connect(&b, &HoverCommand::MouseMove, [this](qint16 btn, qint16, float x, float y) {
            log << QString("MouseMove %1 %2 %3").arg(btn).arg(x).arg(y);
        });
        QObject::connect(&b, &HoverCommand::MouseDown, [this](qint16 btn, qint16, float, float) {
            log << QString("MouseDown %1").arg(btn);
        });
        QObject::connect(&b, &HoverCommand::MouseUp, [this](qint16 btn, qint16, float, float) {
            log << QString("MouseUp %1").arg(btn);
        });
    }
};

struct PaintCounter : QObject {
    int paints = 0;
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

// A button of the game's kind: no edge, no caption, a face colour.
void MakePlain(HoverCommand& b, QSize size, qint32 style = HoverCommand::StyleNoEdge)
{
    b.setPalette(TestPalette());
    b.resize(size);
    b.SetCaption(QString());
    b.SetStyle(style);
    b.SetBackColor(0x00FFFFFF);
    b.SetImageOffset(0);
    b.SetBorderOffset(0);
}

}  // namespace

class tst_HoverCommand : public QObject {
    Q_OBJECT

private slots:
    void pictureTransparencyAndHoverSwap();
    void clickSequence();
    void pressDraggedOut();
    void keyboard();
    void disabledRaisesNothing();
};

void tst_HoverCommand::pictureTransparencyAndHoverSwap()
{
    HoverCommand b;
    MakePlain(b, QSize(10, 10));
    // Magenta frame around red; the hover picture has a green frame around
    // blue with one magenta pixel that is its own colour, not transparent.
    b.SetPicture(Bitmap(QSize(10, 6), Qt::magenta, QRect(2, 2, 6, 2), Qt::red));
    QImage hov = Bitmap(QSize(10, 6), Qt::green, QRect(2, 2, 6, 2), Qt::blue);
    hov.setPixelColor(5, 3, Qt::magenta);
    b.SetHovPicture(hov);

    // Picture at top (10 - 6) / 2 = 2.
    QCOMPARE(Pixel(b, 0, 2), QColor(Qt::white));
    QCOMPARE(Pixel(b, 3, 4), QColor(Qt::red));
    QCOMPARE(Pixel(b, 3, 1), QColor(Qt::white));

    Move(b, QPoint(5, 5));
    QCOMPARE(b.HoverState(), qint16(HoverCommand::StateHover));
    QCOMPARE(Pixel(b, 0, 2), QColor(Qt::white));
    QCOMPARE(Pixel(b, 3, 4), QColor(Qt::blue));
    QCOMPARE(Pixel(b, 5, 5), QColor(Qt::magenta));

    // A hover picture alone shows only during hover.
    HoverCommand onlyHover;
    MakePlain(onlyHover, QSize(10, 10));
    onlyHover.SetHovPicture(hov);
    QCOMPARE(Pixel(onlyHover, 3, 4), QColor(Qt::white));
    Move(onlyHover, QPoint(5, 5));
    QCOMPARE(Pixel(onlyHover, 3, 4), QColor(Qt::blue));

    // An icon keeps its own transparency: no keying by its corner.
    HoverCommand icon;
    MakePlain(icon, QSize(10, 10));
    QPixmap iconPixmap(QSize(4, 4));
    iconPixmap.fill(Qt::red);
    icon.SetPicture(StdPicture::FromIcon(QIcon(iconPixmap), QSize(4, 4)));
    QCOMPARE(icon.Picture().Type(), StdPicture::TypeIcon);
    QCOMPARE(Pixel(icon, 0, 3), QColor(Qt::red));
    QCOMPARE(Pixel(icon, 4, 3), QColor(Qt::white));
}

void tst_HoverCommand::clickSequence()
{
    HoverCommand b;
    MakePlain(b, QSize(20, 10));
    Recorder rec(b);

    Move(b, QPoint(3, 4));
    QCOMPARE(b.HoverState(), qint16(1));
    Press(b, QPoint(3, 4));
    QCOMPARE(b.HoverState(), qint16(2));
    Move(b, QPoint(4, 4), Qt::LeftButton);
    QCOMPARE(b.HoverState(), qint16(2));
    Release(b, QPoint(4, 4));
    QCOMPARE(b.HoverState(), qint16(0));
    QCOMPARE(rec.log, QStringList({"MouseMove 0 45 60", "MouseDown 1", "MouseMove 1 60 60", "MouseUp 1", "Click"}));

    // The next move brings the hover back; the top and left lines are outside.
    rec.log.clear();
    Move(b, QPoint(5, 5));
    QCOMPARE(b.HoverState(), qint16(1));
    Move(b, QPoint(0, 5));
    QCOMPARE(b.HoverState(), qint16(0));
    QCOMPARE(rec.log, QStringList({"MouseMove 0 75 75", "MouseLeave"}));

    // The pointer leaving without a move outside drops the hover as well.
    rec.log.clear();
    Move(b, QPoint(5, 5));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&b, &leave);
    QCOMPARE(b.HoverState(), qint16(0));
    QCOMPARE(rec.log.last(), QString("MouseLeave"));

    // Through the window system as well.
    QWidget window;
    window.resize(100, 60);
    auto* real = new HoverCommand(&window);
    real->setGeometry(10, 10, 40, 20);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy clicks(real, &HoverCommand::Click);
    QTest::mouseMove(real, QPoint(20, 10));
    QTest::mouseClick(real, Qt::LeftButton, Qt::NoModifier, QPoint(20, 10));
    QCOMPARE(clicks.count(), 1);
}

void tst_HoverCommand::pressDraggedOut()
{
    HoverCommand b;
    MakePlain(b, QSize(20, 10));
    Recorder rec(b);

    Move(b, QPoint(5, 5));
    Press(b, QPoint(5, 5));
    Move(b, QPoint(25, 5), Qt::LeftButton);
    QCOMPARE(b.HoverState(), qint16(0));
    Move(b, QPoint(30, 5), Qt::LeftButton);  // the mouse is no longer the control's
    Release(b, QPoint(30, 5));
    QCOMPARE(b.HoverState(), qint16(0));
    QCOMPARE(rec.log, QStringList({"MouseMove 0 75 75", "MouseDown 1", "MouseLeave"}));

    // Out and back in with the button held: no press look, and no click.
    rec.log.clear();
    Press(b, QPoint(5, 5));
    Move(b, QPoint(-3, 5), Qt::LeftButton);
    Move(b, QPoint(5, 5), Qt::LeftButton);
    QCOMPARE(b.HoverState(), qint16(0));
    Release(b, QPoint(5, 5));
    QCOMPARE(b.HoverState(), qint16(1));
    QCOMPARE(rec.log, QStringList({"MouseDown 1", "MouseLeave", "MouseMove 1 75 75", "MouseUp 1"}));
}

void tst_HoverCommand::keyboard()
{
    HoverCommand b;
    MakePlain(b, QSize(20, 20));
    QSignalSpy clicks(&b, &HoverCommand::Click);

    for (const int key : {int(Qt::Key_Space), int(Qt::Key_Return), int(Qt::Key_Enter)}) {
        Key(b, QEvent::KeyPress, key);
        QCOMPARE(b.HoverState(), qint16(2));
        Key(b, QEvent::KeyPress, key, true);
        Key(b, QEvent::KeyRelease, key, true);  // held down: nothing yet
        QCOMPARE(clicks.count(), 0);
        Key(b, QEvent::KeyRelease, key);
        QCOMPARE(b.HoverState(), qint16(0));
        QCOMPARE(clicks.count(), 1);
        clicks.clear();
    }

    // Another key does nothing; nor does the up of a key that did not press.
    Key(b, QEvent::KeyPress, Qt::Key_A);
    Key(b, QEvent::KeyRelease, Qt::Key_A);
    QCOMPARE(b.HoverState(), qint16(0));
    Key(b, QEvent::KeyPress, Qt::Key_Space);
    Key(b, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(b.HoverState(), qint16(2));
    QCOMPARE(clicks.count(), 0);
}

void tst_HoverCommand::disabledRaisesNothing()
{
    HoverCommand b;
    MakePlain(b, QSize(20, 20));
    Recorder rec(b);
    Move(b, QPoint(10, 10));
    b.SetEnabled(false);
    rec.log.clear();

    Move(b, QPoint(12, 12));
    Move(b, QPoint(30, 30));
    Press(b, QPoint(10, 10));
    Release(b, QPoint(10, 10));
    Key(b, QEvent::KeyPress, Qt::Key_Space);
    Key(b, QEvent::KeyRelease, Qt::Key_Space);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&b, &leave);
    QCOMPARE(rec.log, QStringList());
    QCOMPARE(b.HoverState(), qint16(1));

    // Enabled is handed on to the widget, and the widget's own switch comes back.
    b.setEnabled(true);
    QVERIFY(b.Enabled());
    b.SetEnabled(false);
    QVERIFY(!b.isEnabled());
}

QTEST_MAIN(tst_HoverCommand)
#include "tst_HoverCommand.moc"
