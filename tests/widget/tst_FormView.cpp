// The game's window driven as a player drives it: real clicks and key
// presses on the Qt view, with the simulated world behind the model.

#include <QtTest>

#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "qt/view/FormView.h"
#include "qt/view/Look.h"
#include "sim/World.h"

namespace {

// A beginner puzzle with its solution: letters are givens, digits the
// solution of the empty cells.
const char* kPuzzle = "8E6217C94B4GI356HA9136DHGE25FD1832G9C2879416E7I1562DC86HICB1547AC547IH2F47B8569A3";

QPoint CellCentre(const frmTessuma& f, int cell) {
    const TextField& c = f.txtCell[static_cast<std::size_t>(cell)];
    return QPoint(c.Left + c.Width / 2, c.Top + c.Height / 2);
}

// Notes the region of every paint of the widget it watches.
class PaintSpy : public QObject {
public:
    explicit PaintSpy(std::function<void(const QRegion&)> seen) : seen_(std::move(seen)) {}
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) seen_(static_cast<QPaintEvent*>(e)->region());
        return false;
    }

private:
    std::function<void(const QRegion&)> seen_;
};

}  // namespace

class tst_FormView : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;
    std::unique_ptr<Program> program;
    std::unique_ptr<FormView> view;

    frmTessuma& Form() { return *program->MainForm; }

    void Deal() {
        Form().BoardState = kPuzzle;
        Form().ShowBoardState();
        view->AfterModel();
    }

private slots:
    void init() {
        world = std::make_unique<World>();
        program = std::make_unique<Program>(world->MakePorts());
        program->Main();
        view = std::make_unique<FormView>(*program);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        view->AfterModel();
    }

    void cleanup() {
        view.reset();
        program.reset();
        world.reset();
    }

    // Typing into real cells: a right digit stays, a wrong one brings the
    // message box and leaves the cell empty.
    void typedDigitsAreJudged() {
        Deal();
        Form().SetClickringValue(0);
        const int cell = 2;  // solution 6
        QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier, CellCentre(Form(), cell));
        QCOMPARE(QString::fromStdString(Form().FocusedControl().ToString()), QString("txtCell(2)"));
        QVERIFY(Form().txtCell[cell].Visible);

        QTest::keyClick(view.get(), Qt::Key_5);
        QCOMPARE(world->messages.count, 1);
        QCOMPARE(QString::fromStdString(world->messages.lastText), QString("Whoops!  That not fit."));
        QCOMPARE(QString::fromStdString(Form().txtCell[cell].Text), QString());
        QVERIFY(!Form().txtCell[cell].Visible);

        QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier, CellCentre(Form(), cell));
        QTest::keyClick(view.get(), Qt::Key_6);
        QCOMPARE(QString::fromStdString(Form().txtCell[cell].Text), QString("6"));
        QCOMPARE(world->messages.count, 1);
        QVERIFY(Form().PuzzleDirty);
        QCOMPARE(world->sounds.played.back(), frmTessuma::SoundDigitOk);

        // Backspace takes the digit out again; the focus stays in the cell.
        QTest::keyClick(view.get(), Qt::Key_Backspace);
        QCOMPARE(QString::fromStdString(Form().txtCell[cell].Text), QString());
        QCOMPARE(QString::fromStdString(Form().FocusedControl().ToString()), QString("txtCell(2)"));
    }

    // The arrows walk over shown cells to the next hidden one.
    void arrowsWalkToTheNextEmptyCell() {
        Deal();
        Form().SetClickringValue(0);
        QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier, CellCentre(Form(), 5));
        QTest::keyClick(view.get(), Qt::Key_Right);  // cell 6 is given
        QCOMPARE(QString::fromStdString(Form().FocusedControl().ToString()), QString("txtCell(7)"));
        QVERIFY(!Form().txtCell[5].Visible);
    }

    // The ring opens on a real click and a digit is picked from it.
    void ringOpensAndPicks() {
        Deal();
        QCOMPARE(Form().chkClickring.Value, 1);
        QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier, CellCentre(Form(), 2));
        QVERIFY(Form().picRing[0].Visible);
        const PictureBox& six = Form().picRing[5];
        QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(six.Left + six.Width / 2, six.Top + six.Height / 2));
        QVERIFY(!Form().picRing[0].Visible);
        QCOMPARE(QString::fromStdString(Form().txtCell[2].Text), QString("6"));
        QVERIFY(Form().txtCell[2].Visible);
        QCOMPARE(Form().txtCell[2].ForeColor, 0);
    }

    // Alt keys reach the hidden command buttons.
    void altKeysAreCommands() {
        world->popups.answers.push_back(MenuAnswer{false, "mnuDifficulty", 0});
        world->random.queued = {0.0f, 0.0f, 0.0f};
        QTest::keyClick(view.get(), Qt::Key_C, Qt::AltModifier);
        QCOMPARE(world->popups.opened.size(), std::size_t(1));
        QCOMPARE(QString::fromStdString(world->popups.opened[0]), QString("mnuPopupDifficulty"));
        QVERIFY(Form().CountClues());
        QCOMPARE(QString::fromStdString(Form().lblOption[8].Caption), QString("pause"));
        // Punctuation keys too: Alt+- steps the music down.
        const float before = Form().imgVolume.Left;
        QTest::keyClick(view.get(), Qt::Key_Minus, Qt::AltModifier);
        QCOMPARE(Form().imgVolume.Left, before - 5);
    }

    // The volume thumb follows a drag.
    void thumbDrags() {
        const QPoint thumb(Form().picVolume.Left + 1 + static_cast<int>(Form().imgVolume.Left) + 7,
                           Form().picVolume.Top + 8);
        QTest::mouseMove(view.get(), thumb);
        QTest::mousePress(view.get(), Qt::LeftButton, Qt::NoModifier, thumb);
        QMouseEvent move(QEvent::MouseMove, QPointF(thumb - QPoint(30, 0)),
                         view->mapToGlobal(QPointF(thumb - QPoint(30, 0))), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(view.get(), &move);
        QTest::mouseRelease(view.get(), Qt::LeftButton, Qt::NoModifier, thumb - QPoint(30, 0));
        QCOMPARE(Form().imgVolume.Left, 45.0f);
    }

    // A game left alone costs no drawing: a refresh that changes nothing
    // paints nothing, and a tick of the clock paints the clock and the score
    // only.
    void idleTicksDrawOnlyWhatChanged() {
        Deal();
        QRegion painted;
        int paints = 0;
        PaintSpy spy([&](const QRegion& r) {
            painted += r;
            ++paints;
        });
        view->installEventFilter(&spy);
        QCoreApplication::processEvents();
        paints = 0;
        painted = {};
        view->Refresh();
        QCoreApplication::processEvents();
        QCOMPARE(paints, 0);

        Form().tmrClock_Timer();
        view->AfterModel();
        QVERIFY(QTest::qWaitFor([&] { return paints > 0; }));
        auto rect = [](const Label& l) { return QRect(l.Left, l.Top, l.Width, l.Height).adjusted(-8, -8, 8, 8); };
        QVERIFY2((painted - (QRegion(rect(Form().lblTimer)) + rect(Form().lblScore))).isEmpty(),
                 "a tick repainted more than the clock and the score");
        view->removeEventFilter(&spy);
    }

    // A page turned by a key repaints the page list where it stands on the
    // form (its labels have their places inside the help's navigation).
    void helpListFollowsThePage() {
        QRegion painted;
        PaintSpy spy([&](const QRegion& r) { painted += r; });
        Form().cmdSideNav_Click(6);
        view->AfterModel();
        QCoreApplication::processEvents();
        view->installEventFilter(&spy);
        QTest::keyClick(view.get(), Qt::Key_Right);
        QCOMPARE(Form().LastHelpPage, std::int16_t(1));
        QVERIFY(QTest::qWaitFor([&] { return !painted.isEmpty(); }));
        for (int page : {0, 1}) {
            const Label& l = Form().lblHelpPages[page];
            const QRect onForm(Form().picHelpNav.Left + l.Left, Form().picHelpNav.Top + l.Top, l.Width, l.Height);
            QVERIFY2(painted.contains(onForm.center()), qPrintable(QString("page %1's label not repainted").arg(page)));
        }
        view->removeEventFilter(&spy);
    }

    // The pictures of the first frame are drawn from their decoded copies
    // inside the program, where they lie, and look exactly as their PNGs do.
    void firstFramePicturesNeedNoDecoding() {
        Q_INIT_RESOURCE(art);  // the pictures as drawn, from their PNGs
        int seen = 0;
        for (QDirIterator it(":/raw", QDirIterator::Subdirectories); it.hasNext();) {
            const QString raw = it.next();
            if (!raw.endsWith(".px")) continue;
            const QString png = ":/" + raw.mid(6).chopped(3) + ".png";
            const QImage drawn = look::Pixmap(png).toImage();
            const QImage decoded = QImage(png).convertToFormat(drawn.format());
            QVERIFY2(!decoded.isNull(), qPrintable(png));
            QVERIFY2(drawn == decoded, qPrintable(png));
            QVERIFY2(drawn.constBits() == QResource(raw).data() + 20, qPrintable(png + " was copied"));
            ++seen;
        }
        QVERIFY(seen >= 3);
    }
};

QTEST_MAIN(tst_FormView)
#include "tst_FormView.moc"
