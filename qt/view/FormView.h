#pragma once
// The Qt face of frmTessuma: one 640 by 480 widget that draws the model's
// fields and forwards the player's input to the model's handlers. No game
// rule lives here: after every event the view refreshes from the model.

#include <QElapsedTimer>
#include <QPointer>
#include <QRect>
#include <QTimer>
#include <QWidget>
#include <array>
#include <unordered_map>
#include <cstddef>
#include <utility>
#include <vector>

class QPainter;

class FloatLayer;
class HoverCommand;
class Program;
class frmTessuma;
struct CommandButton;

class FormView : public QWidget {
    Q_OBJECT
public:
    FormView(Program& program, QWidget* parent = nullptr);
    ~FormView() override;

    frmTessuma& Form() const;

    // After the model changed (input, a timer, start-up): the keys the program
    // queued for itself are delivered, then the widgets follow the model.
    void AfterModel();
    // The widgets follow the model as it stands; changes nothing in it.
    void Refresh();

    // What lies under a point of the form, topmost first.
    struct Hit {
        enum Kind {
            None,
            Ring,
            Mark,
            HelpLabel,
            HelpTurn,
            Support,
            Wiki,
            HelpFrame,
            Curtain,
            HighsFrame,
            HelpNav,
            Monkey,
            Cell,
            ViewPos,
            Option,
            Check,
            Thumb,
            Track,
            Timer,
            PanelLabel,
            Background
        } kind = None;
        int index = -1;
    };
    Hit HitTest(const QPoint& pt) const;

    // Draws the form as it stands, without its buttons, in form pixels: the
    // window's picture and the printed page both come from here. Only what
    // meets `exposed` is drawn; a null rectangle means the whole form.
    void PaintForm(QPainter& p, const QRect& exposed = QRect());

signals:
    // The window's place or mode may have changed, or the program ended.
    void ModelChanged();

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void keyReleaseEvent(QKeyEvent* e) override;
    bool focusNextPrevChild(bool next) override;

private:
    friend class FloatLayer;
    HoverCommand* MakeButton(const QString& face, std::uint32_t backColor);
    void SyncButton(HoverCommand* b, const CommandButton& model, const QPoint& offset = {});
    void PaintPanel(class QPainter& p);
    void PaintBoard(class QPainter& p);
    void PaintFrames(class QPainter& p);
    void PaintOverlays(class QPainter& p);
    void UpdateCursor(const QPoint& pt);
    void GlideStep();

    Program& program_;
    // The piece of a picture each button was last given as its background.
    struct Backdrop {
        qint64 source = 0;
        QRect piece;
    };
    std::unordered_map<HoverCommand*, Backdrop> backdrops_;
    // The ring and the mark picker float over every control, the buttons
    // included: they are drawn on a layer above them, which takes the clicks
    // inside their pictures only.
    FloatLayer* float_ = nullptr;
    std::array<HoverCommand*, 9> side_{};
    HoverCommand *min_ = nullptr, *max_ = nullptr, *restore_ = nullptr, *close_ = nullptr;
    HoverCommand *showOpt_ = nullptr, *hideOpt_ = nullptr, *ok_ = nullptr;
    QTimer clock_, song_, caret_, glide_;
    bool caretOn_ = true;
    // Buttons whose hover face is still to be read, with its name.
    std::vector<std::pair<HoverCommand*, QString>> hoverFaces_;
    // The caret rests, lit, once the player has left the keys and the mouse
    // alone for a while: a game left open wakes nothing for it.
    static constexpr int kCaretRestMs = 10000;
    QElapsedTimer sinceInput_;
    void WakeCaret() {
        sinceInput_.restart();
        caretOn_ = true;
    }
    // The part of the form the paint under way draws (form pixels).
    QRect exposed_;
    bool Exposed(const QRect& r) const { return r.adjusted(-6, -6, 6, 6).intersects(exposed_); }

    // What the painter reads of the form, as it was last drawn: the place
    // and a digest of every drawn control, and a digest of what the whole
    // form depends on (background, focus). A refresh repaints only the
    // controls whose digest changed; one that changed nothing draws nothing.
    struct Drawn {
        std::vector<std::pair<QRect, std::size_t>> controls;
        std::size_t whole = 0;
    };
    Drawn TakeDrawn() const;
    Drawn drawn_;
    Hit pressed_;
    Qt::MouseButton pressedButton_ = Qt::NoButton;
};
