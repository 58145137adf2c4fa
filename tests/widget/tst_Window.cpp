// The game's window: dragged by its background, and shown full screen,
// scaled evenly, when the game switches to its 640 by 480 display mode.

#include <QGraphicsProxyWidget>
#include <QtTest>

#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "qt/ports/QtPlatform.h"
#include "qt/view/FormView.h"
#include "qt/view/TessumaWindow.h"
#include "sim/World.h"

class tst_Window : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;
    std::unique_ptr<QtDisplay> display;
    std::unique_ptr<Program> program;
    std::unique_ptr<TessumaWindow> window;

    frmTessuma& Form() { return *program->MainForm; }

private slots:
    void init() {
        world = std::make_unique<World>();
        display = std::make_unique<QtDisplay>();
        world->use.screen = display.get();
        world->use.display = display.get();
        program = std::make_unique<Program>(world->MakePorts());
        window = std::make_unique<TessumaWindow>(*program);
        program->ports.window = window.get();
        display->onModeChanged = [this](bool full) { window->SetFullScreenMode(full); };
        program->Main();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    void cleanup() {
        window.reset();
        program.reset();
        display.reset();
        world.reset();
    }

    // A press on the bare background and a move drag the window; the model
    // adds the pointer's pixels to its twips, so the window glides after it.
    void backgroundDragsTheWindow() {
        FormView* view = window->View();
        QVERIFY(view);
        const int left = Form().Left, top = Form().Top;
        const QPoint grab(300, 30);  // the title area above the board
        QCOMPARE(view->HitTest(grab).kind, FormView::Hit::Background);
        QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, grab);
        QVERIFY(Form().DragActive);
        QMouseEvent move(QEvent::MouseMove, QPointF(grab + QPoint(150, 30)),
                         view->mapToGlobal(QPointF(grab + QPoint(150, 30))), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(view, &move);
        QCOMPARE(Form().Left, left + 150);
        QCOMPARE(Form().Top, top + 30);
        QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, grab + QPoint(150, 30));
        QVERIFY(!Form().DragActive);
        QCOMPARE(window->pos(), QPoint(Form().Left / 15, Form().Top / 15));

        // A press on a cell's labels or a panel word starts no drag.
        Form().BoardState = std::string(81, ' ');
        Form().ShowBoardState();
        view->AfterModel();
        QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, QPoint(140, 84));
        QVERIFY(!Form().DragActive);
        QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, QPoint(140, 84));
    }

    // Maximise: the scene fills the screen, scaled evenly with its aspect
    // kept; restore gives the 640 by 480 window back at its stored place.
    void maximiseScalesTheScene() {
        Form().Left = 1500;
        Form().Top = 1200;
        Form().cmdMaximize_Click();
        window->View()->AfterModel();
        QVERIFY(Form().cmdRestoreDown.Visible);
        QCOMPARE(display->WidthPixels(), 640);
        const QSize screen = window->screen()->geometry().size();
        QTRY_COMPARE(window->size(), screen);
        const double scale = std::min(screen.width() / 640.0, screen.height() / 480.0);
        QCOMPARE(window->transform().m11(), scale);
        QCOMPARE(window->transform().m22(), scale);
        // The scene's centre is the window's centre.
        const QPoint centre = window->mapFromScene(QPointF(320, 240));
        QVERIFY(std::abs(centre.x() - screen.width() / 2) <= 1);
        QVERIFY(std::abs(centre.y() - screen.height() / 2) <= 1);

        Form().cmdRestoreDown_Click();
        window->View()->AfterModel();
        QVERIFY(!Form().cmdRestoreDown.Visible);
        QTRY_COMPARE(window->size(), QSize(640, 480));
        QCOMPARE(window->transform().m11(), 1.0);
        QCOMPARE(Form().Left, 1500);
        QTRY_COMPARE(window->pos(), QPoint(100, 80));
    }

    // While maximised the window can't be dragged.
    void noDragWhileMaximised() {
        Form().cmdMaximize_Click();
        FormView* view = window->View();
        QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, QPoint(300, 30));
        QVERIFY(!Form().DragActive);
        QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, QPoint(300, 30));
    }
};

QTEST_MAIN(tst_Window)
#include "tst_Window.moc"
