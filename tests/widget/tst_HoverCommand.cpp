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

bool HasColour(HoverCommand& b, const QColor& colour)
{
    const QImage img = b.grab().toImage();
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (img.pixelColor(x, y) == colour)
                return true;
    return false;
}

// A large bold caption, so that its strokes have pixels of the pure colour.
void BigCaption(HoverCommand& b, const QString& caption)
{
    QFont big = b.Font();
    big.setPixelSize(20);
    big.setBold(true);
    b.SetFont(big);
    b.SetCaption(caption);
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
    void colours();
    void pictureTransparencyAndHoverSwap();
    void pressOffset();
    void edges_data();
    void edges();
    void hoverHighlight();
    void disabledLook();
    void placement();
    void tiledBackground();
    void grabbedBackground();
    void focusMark();
    void clickSequence();
    void pressDraggedOut();
    void otherButtons();
    void keyboard();
    void disabledRaisesNothing();
    void writesAndRepaints();
    void savedProperties();
};

void tst_HoverCommand::colours()
{
    const QPalette pal = TestPalette();
    QCOMPARE(HoverCommand::TranslateColor(0x00D4F5F5, pal), QColor(0xF5, 0xF5, 0xD4));
    QCOMPARE(HoverCommand::TranslateColor(0x00800080, pal), QColor(0x80, 0x00, 0x80));
    QCOMPARE(HoverCommand::TranslateColor(0x8000000F, pal), kFace);
    QCOMPARE(HoverCommand::TranslateColor(0x8000000D, pal), kHighlight);
    QCOMPARE(HoverCommand::TranslateColor(0x80000007, pal), QColor(Qt::black));
    QCOMPARE(HoverCommand::TranslateColor(0x800000FF, pal), QColor(Qt::black));

    // The default face is the palette's, looked up at each paint.
    HoverCommand b;
    b.setPalette(TestPalette());
    b.resize(20, 20);
    b.SetStyle(HoverCommand::StyleNoEdge);
    b.SetCaption(QString());
    QCOMPARE(Pixel(b, 10, 10), kFace);
    QPalette green = TestPalette();
    green.setColor(QPalette::Button, Qt::green);
    b.setPalette(green);
    QCOMPARE(Pixel(b, 10, 10), QColor(Qt::green));
}

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

void tst_HoverCommand::pressOffset()
{
    for (const qint32 style : {qint32(HoverCommand::StyleNoEdge), HoverCommand::StyleNoEdge | HoverCommand::StyleThin}) {
        const int offset = (style & HoverCommand::StyleThin) ? 1 : 2;
        HoverCommand b;
        MakePlain(b, QSize(20, 20), style);
        b.SetPicture(Bitmap(QSize(20, 20), Qt::magenta, QRect(5, 5, 1, 1), Qt::red));
        QCOMPARE(Pixel(b, 5, 5), QColor(Qt::red));
        Move(b, QPoint(10, 10));
        Press(b, QPoint(10, 10));
        QCOMPARE(b.HoverState(), qint16(HoverCommand::StatePressed));
        QCOMPARE(Pixel(b, 5, 5), QColor(Qt::white));
        QCOMPARE(Pixel(b, 5 + offset, 5 + offset), QColor(Qt::red));
    }
}

void tst_HoverCommand::edges_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("state");
    // Outer and inner ring, top left and bottom right; face where no edge.
    QTest::addColumn<QColor>("outerTL");
    QTest::addColumn<QColor>("outerBR");
    QTest::addColumn<QColor>("innerTL");
    QTest::addColumn<QColor>("innerBR");

    QTest::newRow("double raised idle") << 0 << 0 << kMidlight << kShadow << kLight << kDark;
    QTest::newRow("double raised hover") << 0 << 1 << kMidlight << kShadow << kLight << kDark;
    QTest::newRow("double sunken pressed") << 0 << 2 << kDark << kLight << kShadow << kMidlight;
    QTest::newRow("thin raised idle") << 2 << 0 << kLight << kDark << kFace << kFace;
    QTest::newRow("thin sunken pressed") << 2 << 2 << kShadow << kMidlight << kFace << kFace;
    QTest::newRow("flat idle") << 1 << 0 << kFace << kFace << kFace << kFace;
    QTest::newRow("flat hover") << 1 << 1 << kMidlight << kShadow << kLight << kDark;
    QTest::newRow("no edge idle") << 16 << 0 << kFace << kFace << kFace << kFace;
    QTest::newRow("no edge hover") << 16 << 1 << kFace << kFace << kFace << kFace;
    QTest::newRow("no edge pressed") << 16 << 2 << kFace << kFace << kFace << kFace;
    QTest::newRow("game style 48") << 48 << 1 << kFace << kFace << kFace << kFace;
}

void tst_HoverCommand::edges()
{
    QFETCH(int, style);
    QFETCH(int, state);
    QFETCH(QColor, outerTL);
    QFETCH(QColor, outerBR);
    QFETCH(QColor, innerTL);
    QFETCH(QColor, innerBR);

    HoverCommand b;
    b.setPalette(TestPalette());
    b.resize(20, 12);
    b.SetCaption(QString());
    b.SetStyle(style);
    if (state >= 1)
        Move(b, QPoint(10, 6));
    if (state == 2)
        Press(b, QPoint(10, 6));
    QCOMPARE(int(b.HoverState()), state);

    const QImage img = b.grab().toImage();
    QCOMPARE(img.pixelColor(0, 0), outerTL);
    QCOMPARE(img.pixelColor(10, 0), outerTL);
    QCOMPARE(img.pixelColor(0, 6), outerTL);
    QCOMPARE(img.pixelColor(19, 11), outerBR);
    QCOMPARE(img.pixelColor(19, 0), outerBR);   // the far corners go with bottom and right
    QCOMPARE(img.pixelColor(0, 11), outerBR);
    QCOMPARE(img.pixelColor(1, 1), innerTL);
    QCOMPARE(img.pixelColor(18, 10), innerBR);
    QCOMPARE(img.pixelColor(10, 6), kFace);
}

void tst_HoverCommand::hoverHighlight()
{
    // Bit 64: the whole face takes HighlightColor during hover only.
    HoverCommand b;
    MakePlain(b, QSize(20, 20), HoverCommand::StyleNoEdge | HoverCommand::StyleHighlightFill);
    QCOMPARE(Pixel(b, 10, 10), QColor(Qt::white));
    Move(b, QPoint(10, 10));
    QCOMPARE(Pixel(b, 10, 10), kHighlight);
    Press(b, QPoint(10, 10));
    QCOMPARE(Pixel(b, 10, 10), QColor(Qt::white));

    // Bit 8: the caption takes HighlightColor during hover.
    HoverCommand t;
    MakePlain(t, QSize(80, 30), HoverCommand::StyleNoEdge | HoverCommand::StyleHighlightText);
    BigCaption(t, "HIH");
    t.SetForeColor(0x00000080);  // dark red
    QVERIFY(HasColour(t, QColor(0x80, 0, 0)));
    QVERIFY(!HasColour(t, kHighlight));
    Move(t, QPoint(5, 5));
    QVERIFY(HasColour(t, kHighlight));
    QVERIFY(!HasColour(t, QColor(0x80, 0, 0)));
}

void tst_HoverCommand::disabledLook()
{
    HoverCommand b;
    MakePlain(b, QSize(20, 20), HoverCommand::StyleNoEdge | HoverCommand::StyleHighlightFill);
    b.SetPicture(Bitmap(QSize(10, 10), Qt::magenta, QRect(2, 2, 6, 6), Qt::red));
    Move(b, QPoint(15, 15));
    QCOMPARE(Pixel(b, 4, 9), QColor(Qt::red));

    b.SetEnabled(false);
    QVERIFY(!b.isEnabled());
    const QImage img = b.grab().toImage();
    // Embossed in the shadow colour with a light copy one pixel down and right,
    // over the hover face that the control stood in when it was disabled.
    QCOMPARE(img.pixelColor(4, 9), kDark);
    QCOMPARE(img.pixelColor(8, 10), kLight);
    QCOMPARE(img.pixelColor(1, 1), kHighlight);
    QCOMPARE(img.pixelColor(3, 6), kHighlight);  // the picture's key stays transparent
    QVERIFY(!HasColour(b, Qt::red));

    // The caption is embossed the same way, not drawn in ForeColor.
    HoverCommand t;
    MakePlain(t, QSize(80, 30));
    BigCaption(t, "HIH");
    t.SetForeColor(0x00000080);
    t.SetEnabled(false);
    QVERIFY(HasColour(t, kDark));
    QVERIFY(!HasColour(t, QColor(0x80, 0, 0)));
}

void tst_HoverCommand::placement()
{
    const QImage red = Bitmap(QSize(6, 4), Qt::magenta, QRect(0, 1, 6, 3), Qt::red);
    auto firstRed = [](HoverCommand& b) {
        const QImage img = b.grab().toImage();
        const int y = img.height() / 2;
        for (int x = 0; x < img.width(); ++x)
            if (img.pixelColor(x, y) == QColor(Qt::red))
                return x;
        return -1;
    };

    // The game's buttons: HAlign 2 with no offsets stands flush right.
    HoverCommand right;
    MakePlain(right, QSize(20, 10));
    right.SetHAlign(2);
    right.SetPicture(red);
    QCOMPARE(firstRed(right), 14);
    QCOMPARE(Pixel(right, 19, 5), QColor(Qt::red));

    // Offsets count from the right as well: 20 - 3 - 2 - 6.
    right.SetBorderOffset(3);
    right.SetImageOffset(2);
    QCOMPARE(firstRed(right), 9);

    // Centred: (20 - (0 + 0 + 6)) / 2.
    HoverCommand centre;
    MakePlain(centre, QSize(20, 10));
    centre.SetHAlign(1);
    centre.SetPicture(red);
    QCOMPARE(firstRed(centre), 7);
    // (21 - 6) / 2 = 7.5 rounds to the even 8.
    centre.resize(21, 10);
    QCOMPARE(firstRed(centre), 8);

    // Left, after the border offset; the caption follows the picture.
    HoverCommand left;
    MakePlain(left, QSize(80, 20));
    left.SetPicture(red);
    left.SetBorderOffset(4);
    left.SetImageOffset(5);
    left.SetForeColor(0x00FF0000);  // blue
    QFont big = left.Font();
    big.setPixelSize(14);
    left.SetFont(big);
    left.SetCaption("MM");
    QCOMPARE(firstRed(left), 4);
    const QImage img = left.grab().toImage();
    int firstText = -1;
    for (int x = 0; x < img.width() && firstText < 0; ++x)
        for (int y = 0; y < img.height(); ++y)
            if (img.pixelColor(x, y).blue() > 0x80 && img.pixelColor(x, y).red() < 0x80) {
                firstText = x;
                break;
            }
    QVERIFY2(firstText >= 4 + 5 + 6 && firstText <= 4 + 5 + 6 + 3, qPrintable(QString::number(firstText)));
}

void tst_HoverCommand::tiledBackground()
{
    // A 3 by 2 tile of six colours; pressed, the tiling starts at the offset.
    QImage tile(QSize(3, 2), QImage::Format_RGB32);
    const QColor colours[6] = {Qt::red, Qt::green, Qt::blue, Qt::cyan, Qt::yellow, Qt::magenta};
    for (int i = 0; i < 6; ++i)
        tile.setPixelColor(i % 3, i / 3, colours[i]);

    HoverCommand b;
    MakePlain(b, QSize(11, 7));
    b.SetBGPicture(tile);
    QImage img = b.grab().toImage();
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 11; ++x)
            QCOMPARE(img.pixelColor(x, y), tile.pixelColor(x % 3, y % 2));

    Move(b, QPoint(5, 3));
    Press(b, QPoint(5, 3));
    img = b.grab().toImage();
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 11; ++x)
            QCOMPARE(img.pixelColor(x, y), tile.pixelColor((x + 3 - 2) % 3, (y + 2 - 2) % 2));
}

void tst_HoverCommand::grabbedBackground()
{
    // A container that paints vertical stripes of its x coordinate.
    struct Striped : QWidget {
        void paintEvent(QPaintEvent*) override
        {
            QPainter p(this);
            for (int x = 0; x < width(); ++x)
                p.fillRect(QRect(x, 0, 1, height()), QColor(x * 4, 0x40, 0x40));
        }
    } container;
    container.resize(60, 30);
    auto* b = new HoverCommand(&container);
    MakePlain(*b, QSize(20, 10));
    b->move(12, 9);
    b->SetGrabBG(true);
    container.show();
    QVERIFY(QTest::qWaitForWindowExposed(&container));

    QImage img = b->grab().toImage();
    QCOMPARE(img.pixelColor(0, 0), QColor(12 * 4, 0x40, 0x40));
    QCOMPARE(img.pixelColor(19, 9), QColor(31 * 4, 0x40, 0x40));

    Move(*b, QPoint(5, 5));
    Press(*b, QPoint(5, 5));
    img = b->grab().toImage();
    QCOMPARE(img.pixelColor(2, 5), QColor(12 * 4, 0x40, 0x40));
    QCOMPARE(img.pixelColor(19, 5), QColor(29 * 4, 0x40, 0x40));

    // A tiled picture wins over grabbing.
    b->SetBGPicture(Bitmap(QSize(2, 2), Qt::cyan, QRect(), Qt::cyan));
    QCOMPARE(Pixel(*b, 10, 5), QColor(Qt::cyan));
}

void tst_HoverCommand::focusMark()
{
    auto focus = [](HoverCommand& b, QEvent::Type type) {
        QFocusEvent e(type, Qt::TabFocusReason);
        QApplication::sendEvent(&b, &e);
    };
    // Pixels on the dotted rectangle are inverted from the white face.
    const QColor inverted(Qt::black);

    HoverCommand inset;
    MakePlain(inset, QSize(20, 20));
    focus(inset, QEvent::FocusIn);
    QVERIFY(inset.HasFocus());
    QCOMPARE(Pixel(inset, 3, 3), inverted);
    QCOMPARE(Pixel(inset, 4, 3), QColor(Qt::white));
    QCOMPARE(Pixel(inset, 0, 0), QColor(Qt::white));
    focus(inset, QEvent::FocusOut);
    QVERIFY(!inset.HasFocus());
    QCOMPARE(Pixel(inset, 3, 3), QColor(Qt::white));

    HoverCommand whole;
    MakePlain(whole, QSize(20, 20), HoverCommand::StyleNoEdge | HoverCommand::StyleWholeFocus);
    focus(whole, QEvent::FocusIn);
    QCOMPARE(Pixel(whole, 0, 0), inverted);
    QCOMPARE(Pixel(whole, 3, 3), QColor(Qt::white));
    // With a hover picture, bit 32 means no focus rectangle at all.
    whole.SetHovPicture(Bitmap(QSize(2, 2), Qt::white, QRect(), Qt::white));
    QCOMPARE(Pixel(whole, 0, 0), QColor(Qt::white));

    // A flat button with the focus shows its raised edge while idle.
    HoverCommand flat;
    MakePlain(flat, QSize(20, 20), HoverCommand::StyleFlat | HoverCommand::StyleThin);
    QCOMPARE(Pixel(flat, 19, 19), QColor(Qt::white));
    focus(flat, QEvent::FocusIn);
    QCOMPARE(Pixel(flat, 19, 19), kDark);

    // A disabled control keeps its focus mark through losing the focus.
    inset.SetEnabled(true);
    focus(inset, QEvent::FocusIn);
    inset.SetEnabled(false);
    focus(inset, QEvent::FocusOut);
    QVERIFY(inset.HasFocus());
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

void tst_HoverCommand::otherButtons()
{
    HoverCommand b;
    MakePlain(b, QSize(20, 20));
    b.SetPicture(Bitmap(QSize(20, 20), Qt::magenta, QRect(5, 5, 1, 1), Qt::red));
    Recorder rec(b);

    Move(b, QPoint(10, 10));
    Press(b, QPoint(10, 10), Qt::RightButton);
    QCOMPARE(b.HoverState(), qint16(1));
    QCOMPARE(Pixel(b, 5, 5), QColor(Qt::red));  // no press offset
    Release(b, QPoint(10, 10), Qt::RightButton);
    Press(b, QPoint(10, 10), Qt::MiddleButton);
    Release(b, QPoint(10, 10), Qt::MiddleButton);
    QCOMPARE(b.HoverState(), qint16(1));
    QCOMPARE(rec.log, QStringList({"MouseMove 0 150 150", "MouseDown 2", "MouseUp 2", "MouseDown 4", "MouseUp 4"}));
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

void tst_HoverCommand::writesAndRepaints()
{
    HoverCommand b;
    MakePlain(b, QSize(20, 20));
    b.SetCaption("Go");
    b.show();
    QVERIFY(QTest::qWaitForWindowExposed(&b));
    PaintCounter counter;
    b.installEventFilter(&counter);
    QSignalSpy changed(&b, &HoverCommand::PropertyChanged);
    auto settle = [&] {
        QCoreApplication::processEvents();
        const int n = counter.paints;
        counter.paints = 0;
        return n;
    };
    settle();

    b.SetCaption("Go");
    b.SetStyle(b.Style());
    b.SetBackColor(b.BackColor());
    b.SetEnabled(true);
    b.SetHAlign(b.HAlign());
    QCOMPARE(settle(), 0);
    QCOMPARE(changed.count(), 0);

    const StdPicture pic = Bitmap(QSize(4, 4), Qt::white, QRect(1, 1, 2, 2), Qt::red);
    b.SetPicture(pic);
    QVERIFY(settle() > 0);
    b.SetPicture(pic);
    QVERIFY(settle() > 0);
    b.SetFont(b.Font());
    QVERIFY(settle() > 0);
    QCOMPARE(changed.count(), 3);

    b.SetCaption("Stop");
    QVERIFY(settle() > 0);
    QCOMPARE(changed.last().first().toString(), QString("Caption"));

    // Refresh paints at once, without the event loop.
    b.Refresh();
    QCOMPARE(counter.paints, 1);
}

void tst_HoverCommand::savedProperties()
{
    HoverCommand b;
    b.setObjectName("cmdTest");
    b.InitProperties();
    QCOMPARE(b.Caption(), QString("cmdTest"));
    QCOMPARE(b.Style(), 2);
    QCOMPARE(b.ImageOffset(), qint16(10));
    QCOMPARE(b.BorderOffset(), qint16(10));
    QCOMPARE(b.BackColor(), 0x8000000Fu);

    // Nothing but defaults: nothing saved.
    PropertyBag empty;
    b.WriteProperties(empty);
    QVERIFY(empty.IsEmpty());

    // The game's kind of button; Picture is written before HovPicture.
    const QImage face = Bitmap(QSize(8, 6), Qt::magenta, QRect(1, 1, 3, 3), Qt::red);
    const QImage hover = Bitmap(QSize(8, 6), Qt::green, QRect(1, 1, 3, 3), Qt::blue);
    b.SetCaption(QString());
    b.SetStyle(48);
    b.SetHovPicture(hover);
    b.SetPicture(face);
    b.SetImageOffset(0);
    b.SetBorderOffset(0);
    b.SetHAlign(2);
    b.SetForeColor(0x00800080);
    b.SetBackColor(0x00D4F5F5);
    PropertyBag bag;
    b.WriteProperties(bag);
    QCOMPARE(bag.Names(), QStringList({"Caption", "Style", "Picture", "HovPicture", "ImageOffset", "BorderOffset",
                                       "HAlign", "ForeColor", "BackColor"}));

    HoverCommand copy;
    copy.setObjectName("cmdCopy");
    copy.ReadProperties(bag);
    QCOMPARE(copy.Caption(), QString());
    QCOMPARE(copy.Style(), 48);
    QCOMPARE(copy.Picture(), StdPicture(face));
    QCOMPARE(copy.HovPicture(), StdPicture(hover));
    QVERIFY(copy.BGPicture().IsNull());
    QCOMPARE(copy.HAlign(), 2);
    QCOMPARE(copy.ImageOffset(), qint16(0));
    QCOMPARE(copy.BackColor(), 0x00D4F5F5u);
    QCOMPARE(copy.HighlightColor(), 0x8000000Du);
    QVERIFY(copy.Enabled());

    // A missing property takes its default; pictures may come as plain images.
    QVariantMap map;
    map.insert("Picture", face);
    map.insert("Enabled", false);
    HoverCommand fromMap;
    fromMap.setObjectName("cmdMap");
    fromMap.SetStyle(64);
    fromMap.ReadProperties(PropertyBag::FromVariantMap(map));
    QCOMPARE(fromMap.Caption(), QString("cmdMap"));
    QCOMPARE(fromMap.Style(), 2);
    QCOMPARE(fromMap.Picture().Type(), StdPicture::TypeBitmap);
    QVERIFY(!fromMap.Enabled());
    QVERIFY(!fromMap.isEnabled());
}

QTEST_MAIN(tst_HoverCommand)
#include "tst_HoverCommand.moc"
