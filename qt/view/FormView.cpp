// FormView: draws the main form's model and forwards the player's input to its handlers.
#include "qt/view/FormView.h"

#include "qt/view/InputCodes.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <QCursor>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEngine>
#include <QPainterPath>
#include <QTextLayout>

#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "qt/controls/HoverCommand.h"
#include "qt/ports/Extras.h"
#include "qt/ports/QtBackground.h"
#include "qt/view/FirstFrame.h"
#include "qt/view/Look.h"
#include "qt/view/MessageDialog.h"

namespace {

constexpr std::uint32_t kButtonFore = 0x800080;
constexpr std::uint32_t kCream = 0xD4F5F5;
constexpr std::uint32_t kWhite = 0xFFFFFF;

QRect R(const Label& l) { return QRect(l.Left, l.Top, l.Width, l.Height); }
QRect R(const PictureBox& p) { return QRect(p.Left, p.Top, p.Width, p.Height); }
QRect R(const TextField& t) { return QRect(t.Left, t.Top, t.Width, t.Height); }
QRect R(const CheckBox& c) { return QRect(c.Left, c.Top, c.Width, c.Height); }

QString Q(const std::string& s) { return QString::fromStdString(s); }

// A page being printed or written to a PDF.
bool OnPaper(const QPainter& p) {
    return (p.device() && p.device()->devType() == QInternal::Printer) ||
           (p.paintEngine() && p.paintEngine()->type() == QPaintEngine::Pdf);
}

// A one-line caption laid out at the largest size, from its own down to 0.6
// of it, at which it fits its box: laid out once for each size tried, and
// drawn from the layout that fits. The clock and the score change every
// second, and shaping their text twice (once to measure, once to draw) was
// most of the cost of a tick.
//
// The last few layouts are kept, the most recently drawn first: a caption
// that stays while its neighbour changes (the level, under the repaint of
// the score and the clock) is not shaped again.
struct FittedLine {
    QString text;
    QFont font;  // as asked for, before fitting
    QSize box;
    int dpi = 0;  // of the device it was laid out for
    std::unique_ptr<QTextLayout> layout;
};

const FittedLine& FitLine(QPainter& p, const QRect& box, const QFont& font, const QString& text) {
    static std::vector<FittedLine> kept;
    const int dpi = p.device() ? p.device()->logicalDpiY() : 0;
    auto it = std::find_if(kept.begin(), kept.end(), [&](const FittedLine& f) {
        return f.text == text && f.box == box.size() && f.dpi == dpi && f.font == font;
    });
    if (it == kept.end()) {
        QTextOption option;
        option.setFlags(QTextOption::IncludeTrailingSpaces);
        QFont sized = font;
        const double full = font.pointSizeF();
        FittedLine fitted{text, font, box.size(), dpi, nullptr};
        for (double scale = 1.0;; scale -= 0.05) {
            sized.setPointSizeF(full * scale);
            fitted.layout = std::make_unique<QTextLayout>(text, sized, p.device());
            fitted.layout->setTextOption(option);
            fitted.layout->setCacheEnabled(true);
            fitted.layout->beginLayout();
            QTextLine line = fitted.layout->createLine();
            line.setLineWidth(0x01000000);
            line.setPosition(QPointF(0, 0));
            fitted.layout->endLayout();
            const bool fits =
                line.naturalTextWidth() <= box.width() + 0.5 && line.ascent() + line.descent() <= box.height() + 0.5;
            if (fits || scale - 0.05 < 0.6 - 1e-9) break;
        }
        if (kept.size() >= 8) kept.pop_back();
        kept.insert(kept.begin(), std::move(fitted));
    } else if (it != kept.begin()) {
        std::rotate(kept.begin(), it, it + 1);
    }
    return kept.front();
}

// Draws a label's caption in its rectangle. A caption stays inside its
// label: a long one is drawn smaller, and what still doesn't fit is cut at
// the label's edge rather than drawn over its neighbours. A line is placed
// as QPainter::drawText places it, so the pixels are the same.
void Text(QPainter& p, const QRect& r, int align, const QFont& font, const QColor& color, const QString& text) {
    const QRect box = r.adjusted(0, -4, 0, 4);
    p.save();
    p.setClipRect(box, Qt::IntersectClip);
    p.setPen(color);
    if (text.contains(QLatin1Char('\n'))) {  // several lines: Qt's own way
        p.setFont(look::FitFont(font, box, align | Qt::AlignVCenter, text));
        p.drawText(box, align | Qt::AlignVCenter, text);
    } else {
        const QTextLine line = FitLine(p, box, font, text).layout->lineAt(0);
        const double height = line.ascent() + line.descent();
        double x = 0;
        if (align & Qt::AlignRight)
            x = box.width() - line.horizontalAdvance();
        else if (align & Qt::AlignHCenter)
            x = (box.width() - line.horizontalAdvance()) / 2;
        line.draw(&p, QPointF(box.x() + x, box.y() + (box.height() - height) / 2));
    }
    p.restore();
}

// A digest of a control's properties, one overload per kind of control.
#define TESSUMA_MIX(Type, name, init, kind, lo, hi) h = h * 1000003u ^ std::hash<Type>{}(c.name);
#define TESSUMA_DIGEST(Kind, PROPS)                      \
    [[maybe_unused]] std::size_t Digest(const Kind& c) { \
        std::size_t h = 0;                               \
        PROPS(TESSUMA_MIX)                               \
        return h;                                        \
    }
CONTROL_KINDS(TESSUMA_DIGEST)
#undef TESSUMA_DIGEST
#undef TESSUMA_MIX

// A drawn control's rectangle on the form and digest; timers and menu items
// are not drawn.
// Controls inside a picture box (the help's page list, its links, the high
// score lines) have their places inside it.
template <class C>
void AddDrawn(std::vector<std::pair<QRect, std::size_t>>& out, const C& c, const QPoint& in = {}) {
    if constexpr (requires { c.Width; })
        out.emplace_back(QRect(static_cast<int>(c.Left), c.Top, c.Width, c.Height).translated(in), Digest(c));
}

}  // namespace

// Above every child of the view; shaped to the ring's and the mark picker's
// pictures, so that clicks elsewhere reach the buttons below.
class FloatLayer : public QWidget {
public:
    explicit FloatLayer(FormView* view) : QWidget(view), view_(view) {
        setGeometry(0, 0, 640, 480);
        setMouseTracking(true);
        setFocusPolicy(Qt::NoFocus);
        setCursor(look::Hand());
        hide();
    }
    void Follow(const frmTessuma& f) {
        QRegion shape;
        for (const PictureBox& r : f.picRing)
            if (r.Visible) shape += R(r);
        for (const PictureBox& m : f.picMark)
            if (m.Visible) shape += R(m).adjusted(-1, -1, 0, 0);
        std::size_t digest = 0;
        for (const PictureBox& r : f.picRing) digest = digest * 31u ^ Digest(r);
        for (const PictureBox& m : f.picMark) digest = digest * 31u ^ Digest(m);
        if (shape == shape_ && digest == digest_) return;  // nothing new to draw
        shape_ = shape;
        digest_ = digest;
        if (shape.isEmpty()) {
            hide();
            return;
        }
        setMask(shape);
        show();
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        view_->PaintOverlays(p);
    }
    void mousePressEvent(QMouseEvent* e) override { view_->mousePressEvent(e); }
    void mouseMoveEvent(QMouseEvent* e) override { view_->mouseMoveEvent(e); }
    void mouseReleaseEvent(QMouseEvent* e) override { view_->mouseReleaseEvent(e); }
    void mouseDoubleClickEvent(QMouseEvent* e) override { view_->mouseDoubleClickEvent(e); }

private:
    FormView* view_;
    QRegion shape_;
    std::size_t digest_ = 0;
};

FormView::FormView(Program& program, QWidget* parent) : QWidget(parent), program_(program) {
    setFixedSize(640, 480);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    look::LoadFonts();

    const char* words[9] = {"sidenav0", "sidenav1", "sidenav2", "sidenav3", "sidenav4",
                            "sidenav5", "sidenav6", "sidenav7", "sidenav8"};
    // Indices 7 and 8 lie under 0 and 1: made first, so they are below.
    for (int i : {7, 8, 0, 1, 2, 3, 4, 5, 6}) {
        side_[static_cast<std::size_t>(i)] = MakeButton(words[i], kCream);
        connect(side_[static_cast<std::size_t>(i)], &HoverCommand::Click, this, [this, i] {
            // A button clicked takes the focus, as a command button does: a
            // cell left empty hides its edit box (own-puzzle entry's Finish).
            Form().SetFocus({"cmdSideNav", i});
            Form().cmdSideNav_Click(i);
            AfterModel();
        });
    }
    max_ = MakeButton("maximize", kWhite);
    restore_ = MakeButton("restore", kWhite);  // on top of maximise
    min_ = MakeButton("minimize", kWhite);
    close_ = MakeButton("close", kWhite);
    showOpt_ = MakeButton("showoptions", kWhite);
    hideOpt_ = MakeButton("hideoptions", kWhite);  // on top of show
    ok_ = MakeButton("ok", kCream);
    float_ = new FloatLayer(this);
    AfterFirstFrame(this, [this] {
        for (const auto& [b, face] : hoverFaces_) b->SetHovPicture(StdPicture(look::Button(face)));
        hoverFaces_.clear();
    });
    auto bind = [this](HoverCommand* b, void (frmTessuma::*handler)()) {
        connect(b, &HoverCommand::Click, this, [this, handler] {
            (Form().*handler)();
            AfterModel();
        });
    };
    bind(min_, &frmTessuma::cmdMinimize_Click);
    bind(max_, &frmTessuma::cmdMaximize_Click);
    bind(restore_, &frmTessuma::cmdRestoreDown_Click);
    bind(close_, &frmTessuma::cmdClose_Click);
    bind(showOpt_, &frmTessuma::cmdShowOptions_Click);
    bind(hideOpt_, &frmTessuma::cmdHideOptions_Click);
    bind(ok_, &frmTessuma::cmdOK_Click);

    clock_.setInterval(1000);
    song_.setInterval(250);
    connect(&clock_, &QTimer::timeout, this, [this] {
        // The game's clock stands while the solver searches, as it would
        // for a game that searched in place.
        if (QtBackground::Busy()) return;
        if (Form().tmrClock.Enabled) Form().tmrClock_Timer();
        AfterModel();
    });
    connect(&song_, &QTimer::timeout, this, [this] {
        // Four times a second; mostly the song is still playing and nothing
        // is to be redrawn or followed.
        if (Form().tmrSongCheck.Enabled && !Form().SongCheckTick()) return;
        AfterModel();
    });
    caret_.setInterval(530);
    sinceInput_.start();
    connect(&caret_, &QTimer::timeout, this, [this] {
        caretOn_ = !caretOn_;
        if (sinceInput_.elapsed() >= kCaretRestMs) {
            caretOn_ = true;
            caret_.stop();
        }
        const int cell = Form().KeyboardCell();
        if (cell >= 0) update(R(Form().txtCell[static_cast<std::size_t>(cell)]));
    });
    caret_.start();
    glide_.setInterval(15);
    connect(&glide_, &QTimer::timeout, this, &FormView::GlideStep);
}

FormView::~FormView() = default;

frmTessuma& FormView::Form() const { return *program_.MainForm; }

HoverCommand* FormView::MakeButton(const QString& face, std::uint32_t backColor) {
    auto* b = new HoverCommand(this);
    b->setFocusPolicy(Qt::NoFocus);
    b->SetStyle(48);
    b->SetImageOffset(0);
    b->SetBorderOffset(0);
    b->SetHAlign(2);
    b->SetCaption(QString());
    b->SetForeColor(kButtonFore);
    b->SetBackColor(backColor);
    b->SetPicture(StdPicture(look::Button(face)));
    // No pointer hovers before the first frame: the hover faces are read after it.
    hoverFaces_.emplace_back(b, face + "_hover");
    b->setCursor(look::Hand());
    return b;
}

void FormView::SyncButton(HoverCommand* b, const CommandButton& m, const QPoint& offset) {
    const QRect want(m.Left + offset.x(), m.Top + offset.y(), m.Width, m.Height);
    if (b->geometry() != want) b->setGeometry(want);
    if (b->isVisible() != m.Visible) b->setVisible(m.Visible);
    b->SetEnabled(m.Enabled);
    if (!m.Visible) return;
    // The button's corners show the picture it stands on, with the skin or
    // without: the piece of the form's picture (or of the help navigation's,
    // for OK) that lies under it.
    const QPixmap& under = offset.isNull() ? look::Bitmap(Form().Picture) : look::Control("helpnav");
    const QRect piece(m.Left, m.Top, m.Width, m.Height);
    Backdrop& had = backdrops_[b];
    if (under.isNull() || (had.source == under.cacheKey() && had.piece == piece)) return;
    had = {under.cacheKey(), piece};
    QPixmap bg(piece.size());
    bg.fill(Qt::white);  // the strip the 638 by 478 picture leaves is the form's white
    QPainter(&bg).drawPixmap(QPoint(0, 0), under, piece);
    b->SetBGPicture(StdPicture(bg));
}

void FormView::AfterModel() {
    if (!program_.MainForm) return;
    // Keystrokes the program queued for itself arrive after its handler.
    Form().DeliverQueuedKeys();
    Refresh();
}

void FormView::Refresh() {
    if (!program_.MainForm) return;
    frmTessuma& f = Form();

    for (std::size_t i = 0; i < 9; ++i) SyncButton(side_[i], f.cmdSideNav[i]);
    SyncButton(min_, f.cmdMinimize);
    SyncButton(max_, f.cmdMaximize);
    SyncButton(restore_, f.cmdRestoreDown);
    SyncButton(close_, f.cmdClose);
    SyncButton(showOpt_, f.cmdShowOptions);
    SyncButton(hideOpt_, f.cmdHideOptions);
    // The OK button lives in the help navigation and shows with it.
    CommandButton ok = f.cmdOK;
    ok.Visible = ok.Visible && f.picHelpNav.Visible;
    SyncButton(ok_, ok, QPoint(f.picHelpNav.Left, f.picHelpNav.Top));
    // Overlapping pairs (restore over maximise, hide over show options, side
    // buttons 0 and 1 over 7 and 8) are stacked by the order they were made in.
    float_->Follow(f);

    if (f.tmrClock.Enabled && !clock_.isActive()) clock_.start();
    if (!f.tmrClock.Enabled && clock_.isActive()) clock_.stop();
    if (f.tmrSongCheck.Enabled && !song_.isActive()) song_.start();
    if (!f.tmrSongCheck.Enabled && song_.isActive()) song_.stop();

    if (f.DragActive && !glide_.isActive()) glide_.start();
    if (!f.DragActive && glide_.isActive()) glide_.stop();

    // The caret blinks in a cell that takes typing, and only there.
    const bool blink = f.KeyboardCell() >= 0 && sinceInput_.elapsed() < kCaretRestMs;
    if (blink && !caret_.isActive()) caret_.start();
    if (!blink && caret_.isActive()) caret_.stop();

    Drawn now = TakeDrawn();
    if (now.whole != drawn_.whole || now.controls.size() != drawn_.controls.size()) {
        caretOn_ = true;
        update();
    } else {
        QRegion dirty;
        for (std::size_t i = 0; i < now.controls.size(); ++i) {
            if (now.controls[i].second == drawn_.controls[i].second) continue;
            // A caption may reach a few pixels past its label.
            dirty += drawn_.controls[i].first.adjusted(-6, -6, 6, 6);
            dirty += now.controls[i].first.adjusted(-6, -6, 6, 6);
        }
        if (!dirty.isEmpty()) update(dirty);
    }
    drawn_ = std::move(now);
    emit ModelChanged();
}

FormView::Drawn FormView::TakeDrawn() const {
    const frmTessuma& f = Form();
    Drawn d;
    d.controls.reserve(400);
    const auto inside = [&f](const void* c) {
        const auto in = [c](const auto& list) {
            for (const auto& x : list)
                if (&x == c) return true;
            return false;
        };
        if (in(f.lblHelpPages) || c == &f.cmdOK) return QPoint(f.picHelpNav.Left, f.picHelpNav.Top);
        if (c == &f.lblSupport || c == &f.lblWiki) return QPoint(f.picFrame[2].Left, f.picFrame[2].Top);
        if (c == &f.Label3 || in(f.lblSHName) || in(f.lblSHScore)) return QPoint(f.picFrame[4].Left, f.picFrame[4].Top);
        return QPoint();
    };
#define CONTROL(Type, name) AddDrawn(d.controls, f.name, inside(&f.name));
#define CONTROLS(Type, name, size, lo, hi) \
    for (const auto& c : f.name) AddDrawn(d.controls, c, inside(&c));
#include "forms/frmTessuma.def"
    d.whole = std::hash<int>{}(f.Picture) ^ std::hash<std::string>{}(f.FocusedControl().ToString()) * 31u ^
              std::hash<int>{}(f.KeyboardCell()) * 131u;
    return d;
}

// --------------------------------------------------------------------------
// Painting.

void FormView::paintEvent(QPaintEvent* e) {
    if (!program_.MainForm) return;
    QPainter p(this);
    PaintForm(p, e->rect());
}

void FormView::PaintForm(QPainter& p, const QRect& exposed) {
    if (!program_.MainForm) return;
    // A clock tick exposes the clock alone: the rest is not laid out again.
    exposed_ = exposed.isNull() ? QRect(0, 0, 640, 480) : exposed;
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    // The form's colour shows in the two-pixel strip the picture leaves.
    p.fillRect(rect(), Qt::white);
    const QPixmap& bg = look::Bitmap(Form().Picture);
    const bool onPaper = OnPaper(p);
    // On paper the picture is drawn from the drawing it was made from, at
    // the printer's resolution (printing has loaded the module that can).
    const bool drawn = onPaper && extras::Loaded() &&
                       extras::Api()->drawSvg(p, QString(":/bitmap/%1.svg").arg(Form().Picture), QRectF(0, 0, 638, 478));
    if (!drawn && !bg.isNull())
        p.drawPixmap(QRect(0, 0, 638, 478), bg);
    else if (!drawn)
        p.fillRect(QRect(0, 0, 638, 478), Qt::white);
    PaintPanel(p);
    PaintBoard(p);
    PaintFrames(p);
    // The ring and the mark picker are drawn by the layer above the buttons.
}

// The face and alignment of an option label.
static QFont OptionFont(std::size_t i, int& align) {
    align = i == 10 ? Qt::AlignHCenter : Qt::AlignRight;
    switch (i) {
        case 6: return look::Japan(12);
        case 7: return look::Japan(14.25, true, true);
        case 9: return look::Arial(14.25, true);
        case 10: return look::Japan(12, true, true);
        default: return look::Japan(14.25);
    }
}

// Where a letter of an option's caption stands, as the label draws it.
static QRectF LetterRect(const Label& l, std::size_t option, int letter) {
    int align = 0;
    const QFont font = OptionFont(option, align);
    const QFontMetricsF fm(font);
    const QString text = QString::fromStdString(l.Caption);
    if (option == 10) {
        // Centred on two lines: "make lucky" over "donation!".
        const int space = text.indexOf(' ', 5);
        const QString line1 = text.left(space), line2 = text.mid(space + 1);
        const double lineH = fm.lineSpacing();
        const double top = l.Top + (l.Height - 2 * lineH) / 2;
        const bool second = letter > space;
        const QString line = second ? line2 : line1;
        const int at = second ? letter - space - 1 : letter;
        const double x0 = l.Left + (l.Width - fm.horizontalAdvance(line)) / 2;
        const double y0 = top + (second ? lineH : 0);
        return QRectF(x0 + fm.horizontalAdvance(line.left(at)), y0, fm.horizontalAdvance(line.mid(at, 1)),
                      fm.ascent() + 1);
    }
    const double w = fm.horizontalAdvance(text);
    const double x0 = align == Qt::AlignLeft ? l.Left : l.Left + l.Width - w;
    const double y0 = l.Top + (l.Height - fm.height()) / 2;
    return QRectF(x0 + fm.horizontalAdvance(text.left(letter)), y0, fm.horizontalAdvance(text.mid(letter, 1)),
                  fm.ascent() + 1);
}

void FormView::PaintPanel(QPainter& p) {
    frmTessuma& f = Form();
    if (f.lblScore.Visible && Exposed(R(f.lblScore)))
        Text(p, R(f.lblScore), Qt::AlignRight, look::AmerType(15.75), look::Bgr(f.lblScore.ForeColor),
             Q(f.lblScore.Caption));
    if (f.lblDifficulty.Visible && Exposed(R(f.lblDifficulty)))
        Text(p, R(f.lblDifficulty), Qt::AlignRight, look::Japan(12), look::Bgr(f.lblDifficulty.ForeColor),
             Q(f.lblDifficulty.Caption));
    if (f.lblTimer.Visible && Exposed(R(f.lblTimer)))
        Text(p, R(f.lblTimer), Qt::AlignRight, look::AmerType(15.75), look::Bgr(f.lblTimer.ForeColor),
             Q(f.lblTimer.Caption));

    for (std::size_t i = 1; i <= 10; ++i) {
        const Label& l = f.lblOption[i];
        if (!l.Visible || !Exposed(R(l))) continue;
        int align = 0;
        const QFont font = OptionFont(i, align);
        if (i == 10) {
            p.setFont(font);
            p.setPen(look::Bgr(l.ForeColor));
            p.drawText(R(l), Qt::AlignCenter | Qt::TextWordWrap, Q(l.Caption));
        } else {
            Text(p, R(l), align, font, look::Bgr(l.ForeColor), Q(l.Caption));
        }
    }
    // The underscores mark the access letter of an option's Alt key: drawn
    // under that letter of the word as our faces set it.
    struct Access {
        std::size_t option;
        int letter;
    };
    const Access access[7] = {{1, 5}, {2, 6}, {3, 1}, {4, 3}, {8, 4}, {7, 0}, {10, 11}};
    for (std::size_t i = 0; i < 7; ++i) {
        const Label& u = f.lblUnderscore[i];
        const Label& word = f.lblOption[access[i].option];
        // "pause" and "resume" both answer to Alt+E: the underline goes under
        // the last "e" of whichever word the label shows.
        const int at = access[i].option == 8 ? static_cast<int>(word.Caption.rfind('e')) : access[i].letter;
        if (!u.Visible || at < 0 || at >= static_cast<int>(word.Caption.size()) || !Exposed(R(word))) continue;
        const QRectF letter = LetterRect(word, access[i].option, at);
        if (letter.isEmpty()) continue;
        p.setPen(QPen(look::Bgr(u.ForeColor), 2.0, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(letter.left() + 0.5, letter.bottom() + 1.5),
                   QPointF(letter.right() - 0.5, letter.bottom() + 1.5));
    }

    for (const CheckBox* c : {&f.chkClickring, &f.chkSkin, &f.chkSounds}) {
        if (!c->Visible || !Exposed(R(*c))) continue;
        const QRectF box = QRectF(c->Left + 0.5, c->Top + 3.5, 13, 13);
        p.setPen(QPen(look::Bgr(0xB55E0B), 1.2));
        p.setBrush(look::Bgr(c->BackColor));
        p.drawRoundedRect(box, 2.5, 2.5);
        if (c->Value) {
            QPainterPath tick;
            tick.moveTo(box.left() + 3, box.top() + 6.8);
            tick.lineTo(box.left() + 5.6, box.top() + 9.6);
            tick.lineTo(box.left() + 10.2, box.top() + 3.4);
            p.setPen(QPen(look::Bgr(0xB55E0B), 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            p.setBrush(Qt::NoBrush);
            p.drawPath(tick);
        }
    }
    if (f.picVolume.Visible) {
        const QRect track = R(f.picVolume);
        if (f.picVolume.Picture && !look::Bitmap(f.picVolume.Picture).isNull()) {
            p.drawPixmap(QRect(track.left() + 1, track.top() + 1, 89, 14), look::Bitmap(f.picVolume.Picture));
        } else {
            p.setPen(QPen(QColor(133, 174, 198), 1));
            p.setBrush(Qt::NoBrush);
            p.drawRoundedRect(QRectF(track.left() + 0.5, track.top() + 5.5, 88, 4), 2, 2);
        }
        const QRect thumb(track.left() + 1 + static_cast<int>(f.imgVolume.Left), track.top() + f.imgVolume.Top,
                          f.imgVolume.Width, f.imgVolume.Height);
        const QPixmap& t = look::Control("volume_thumb");
        if (!t.isNull()) {
            p.drawPixmap(thumb, t);
        } else {
            p.setPen(QPen(look::Bgr(0xB55E0B), 1));
            p.setBrush(QColor(255, 255, 255));
            p.drawEllipse(QRectF(thumb).adjusted(1, 1, -1, -1));
        }
    }
}

void FormView::PaintBoard(QPainter& p) {
    frmTessuma& f = Form();
    const int keyboard = f.KeyboardCell();
    const QFont digitFont = look::Japan(20.25);
    const bool onPaper = OnPaper(p);
    const QFont markFont = look::CourierBold(12);
    for (std::size_t i = 0; i < 81; ++i) {
        const TextField& c = f.txtCell[i];
        // Everything of a cell (digit, marks, highlight, caret) is drawn
        // inside it, so the cell is drawn only where it was exposed itself:
        // the clock's tick beside the last column leaves the board alone.
        const QRect cell = R(c);
        if (!cell.intersects(exposed_)) continue;
        // Only the cell the keyboard types into shows the edit highlight and
        // the caret, and never on paper.
        const bool focused = !onPaper && keyboard == static_cast<int>(i);
        if (focused) {
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(255, 246, 196, 210));
            p.drawRoundedRect(QRectF(cell).adjusted(2.5, 2.5, -3.5, -3.5), 5, 5);
        }
        if (c.Visible) {
            p.setFont(digitFont);
            p.setPen(look::Bgr(c.ForeColor));
            p.drawText(cell.adjusted(0, 0, -1, -1), Qt::AlignCenter, Q(c.Text));
        } else {
            for (std::size_t k = 0; k < 3; ++k) {
                const Label& l = f.lblViewPos[3 * i + k];
                if (!l.Visible) continue;
                p.setFont(markFont);
                p.setPen(look::Bgr(l.ForeColor));
                p.drawText(R(l), Qt::AlignCenter, Q(l.Caption));
            }
        }
        if (focused && c.Text.empty() && caretOn_) {
            p.setPen(QPen(QColor(60, 60, 60), 1.5));
            p.drawLine(QPointF(cell.center().x() + 0.5, cell.top() + 10),
                       QPointF(cell.center().x() + 0.5, cell.bottom() - 10));
        }
    }
}

void FormView::PaintFrames(QPainter& p) {
    frmTessuma& f = Form();
    // Help page.
    const PictureBox& help = f.picFrame[2];
    if (help.Visible) {
        const QPixmap& page = look::Bitmap(help.Picture);
        if (!page.isNull())
            p.drawPixmap(R(help), page);
        else
            p.fillRect(R(help), QColor(255, 253, 240));
        for (const Label* l : {&f.lblSupport, &f.lblWiki}) {
            if (!l->Visible) continue;
            // Inside its pill on the page.
            const QRect r = R(*l).translated(help.Left, help.Top);
            Text(p, r, Qt::AlignHCenter, look::Verdana(14.25, false, true), look::Bgr(l->ForeColor), Q(l->Caption));
        }
    }
    // High scores.
    const PictureBox& highs = f.picFrame[4];
    if (highs.Visible) {
        const QPixmap& pic = look::Bitmap(highs.Picture);
        if (highs.Picture && !pic.isNull())
            p.drawPixmap(R(highs), pic);
        else
            p.fillRect(R(highs), Qt::white);
        const QRect cap = R(f.Label3).translated(highs.Left, highs.Top);
        Text(p, cap, Qt::AlignLeft, look::Japan(20.25), look::Bgr(f.Label3.ForeColor), Q(f.Label3.Caption));
        for (std::size_t i = 0; i < 10; ++i) {
            const Label& n = f.lblSHName[i];
            const Label& s = f.lblSHScore[i];
            Text(p, R(n).translated(highs.Left, highs.Top), Qt::AlignLeft, look::Verdana(14.25), look::Bgr(n.ForeColor),
                 Q(n.Caption));
            Text(p, R(s).translated(highs.Left, highs.Top), Qt::AlignRight, look::Verdana(14.25),
                 look::Bgr(s.ForeColor), Q(s.Caption));
        }
    }
    // The pause and loading curtain.
    const PictureBox& curtain = f.picFrame[3];
    if (curtain.Visible) {
        const QPixmap& pic = look::Bitmap(curtain.Picture);
        if (curtain.Picture && !pic.isNull()) {
            p.drawPixmap(R(curtain), pic);
        } else {
            p.fillRect(R(curtain), QColor(255, 255, 255));
            p.setFont(look::Japan(28));
            p.setPen(look::Bgr(0xB55E0B));
            p.drawText(R(curtain), Qt::AlignCenter, QStringLiteral("paused"));
        }
    }
    if (f.lblLoading.Visible) {
        p.setFont(look::Verdana(11.25, true));
        p.setPen(look::Bgr(f.lblLoading.ForeColor));
        p.drawText(R(f.lblLoading), Qt::AlignCenter, Q(f.lblLoading.Caption));
    }
    // Help navigation and the monkey.
    if (f.picHelpNav.Visible) {
        const QRect nav = R(f.picHelpNav);
        const QPixmap& pic = look::Control("helpnav");
        if (!pic.isNull())
            p.drawPixmap(nav, pic);
        else
            p.fillRect(nav, QColor(245, 245, 212));
        for (const Label& l : f.lblHelpPages) {
            if (!l.Visible) continue;
            Text(p, R(l).translated(nav.topLeft()), Qt::AlignRight, look::Japan(14.25), look::Bgr(l.ForeColor),
                 Q(l.Caption));
        }
    }
    if (f.imgHelpMonkey.Visible) {
        const QPixmap& m = look::Control("monkey");
        if (!m.isNull()) p.drawPixmap(R(f.imgHelpMonkey), m);
    }
}

void FormView::PaintOverlays(QPainter& p) {
    frmTessuma& f = Form();
    const ControlRef focus = f.FocusedControl();
    for (std::size_t i = 0; i < 10; ++i) {
        const PictureBox& m = f.picMark[i];
        if (!m.Visible) continue;
        const QPixmap& pic = look::Control(Q(m.Glyph));
        if (!pic.isNull()) {
            p.drawPixmap(R(m), pic);
        } else {
            p.fillRect(R(m), Qt::white);
            p.setPen(QColor(11, 94, 181));
            p.drawRect(R(m).adjusted(0, 0, -1, -1));
        }
        if (focus.name == "picMark" && focus.index == static_cast<int>(i)) {
            p.setPen(QPen(QColor(192, 0, 192), 1, Qt::DotLine));
            p.setBrush(Qt::NoBrush);
            p.drawRect(R(m).adjusted(-1, -1, 0, 0));
        }
    }
    for (const PictureBox& r : f.picRing) {
        if (!r.Visible) continue;
        const QPixmap& pic = look::Control(Q(r.Glyph));
        if (!pic.isNull())
            p.drawPixmap(R(r), pic);
        else
            p.fillRect(R(r), QColor(11, 94, 181));
    }
}

// --------------------------------------------------------------------------
// Input.

FormView::Hit FormView::HitTest(const QPoint& pt) const {
    const frmTessuma& f = Form();
    for (std::size_t i = 0; i < 10; ++i)
        if (f.picRing[i].Visible && R(f.picRing[i]).contains(pt)) return {Hit::Ring, static_cast<int>(i)};
    for (std::size_t i = 0; i < 10; ++i)
        if (f.picMark[i].Visible && R(f.picMark[i]).contains(pt)) return {Hit::Mark, static_cast<int>(i)};
    if (f.picHelpNav.Visible && R(f.picHelpNav).contains(pt)) {
        for (std::size_t i = 0; i < 10; ++i) {
            const Label& l = f.lblHelpPages[i];
            if (l.Visible && R(l).translated(f.picHelpNav.Left, f.picHelpNav.Top).contains(pt))
                return {Hit::HelpLabel, static_cast<int>(i)};
        }
        // The "turn page" arrows drawn in the navigation's picture.
        for (int i : {0, 1}) {
            const QRect arrow(f.picHelpNav.Left + (i == 0 ? 4 : f.picHelpNav.Width - 22), f.picHelpNav.Top + 262, 18,
                              17);
            if (arrow.contains(pt)) return {Hit::HelpTurn, i};
        }
        return {Hit::HelpNav, -1};
    }
    if (f.imgHelpMonkey.Visible && R(f.imgHelpMonkey).contains(pt)) return {Hit::Monkey, -1};
    if (f.picFrame[3].Visible && R(f.picFrame[3]).contains(pt)) return {Hit::Curtain, 3};
    if (f.picFrame[2].Visible && R(f.picFrame[2]).contains(pt)) {
        const QPoint o(f.picFrame[2].Left, f.picFrame[2].Top);
        if (f.lblSupport.Visible && R(f.lblSupport).translated(o).contains(pt)) return {Hit::Support, -1};
        if (f.lblWiki.Visible && R(f.lblWiki).translated(o).contains(pt)) return {Hit::Wiki, -1};
        return {Hit::HelpFrame, 2};
    }
    if (f.picFrame[4].Visible && R(f.picFrame[4]).contains(pt)) return {Hit::HighsFrame, 4};
    for (std::size_t i = 0; i < 81; ++i) {
        const TextField& c = f.txtCell[i];
        if (!R(c).contains(pt)) continue;
        if (c.Visible) return {Hit::Cell, static_cast<int>(i)};
        for (std::size_t k = 0; k < 3; ++k) {
            const Label& l = f.lblViewPos[3 * i + k];
            if (l.Visible && R(l).adjusted(-1, -1, 1, 1).contains(pt))
                return {Hit::ViewPos, static_cast<int>(3 * i + k)};
        }
    }
    for (const CheckBox* c : {&f.chkClickring, &f.chkSkin, &f.chkSounds})
        if (c->Visible && R(*c).adjusted(-2, 0, 2, 0).contains(pt))
            return {Hit::Check, c == &f.chkClickring ? 0 : c == &f.chkSkin ? 1 : 2};
    if (f.picVolume.Visible && R(f.picVolume).contains(pt)) {
        const QRect thumb(f.picVolume.Left + 1 + static_cast<int>(f.imgVolume.Left), f.picVolume.Top + f.imgVolume.Top,
                          f.imgVolume.Width, f.imgVolume.Height);
        return thumb.contains(pt) ? Hit{Hit::Thumb, -1} : Hit{Hit::Track, -1};
    }
    for (int i = 10; i >= 1; --i) {
        const Label& l = f.lblOption[static_cast<std::size_t>(i)];
        if (l.Visible && R(l).contains(pt)) return {Hit::Option, i};
    }
    if (f.lblTimer.Visible && R(f.lblTimer).contains(pt)) return {Hit::Timer, -1};
    if ((f.lblScore.Visible && R(f.lblScore).contains(pt)) ||
        (f.lblDifficulty.Visible && R(f.lblDifficulty).contains(pt)))
        return {Hit::PanelLabel, -1};
    return {Hit::Background, -1};
}

void FormView::mousePressEvent(QMouseEvent* e) {
    if (!program_.MainForm) return;
    frmTessuma& f = Form();
    const QPoint pt = e->position().toPoint();
    const float x = static_cast<float>(e->position().x()), y = static_cast<float>(e->position().y());
    const int button = input::ButtonCode(e->button()), shift = input::ShiftCode(e->modifiers());
    WakeCaret();
    pressed_ = HitTest(pt);
    pressedButton_ = e->button();
    switch (pressed_.kind) {
        case Hit::Ring:
            f.picRing_MouseDown(pressed_.index, button, shift, (x - f.picRing[pressed_.index].Left) * 15,
                                (y - f.picRing[pressed_.index].Top) * 15);
            pressed_ = {};
            break;
        case Hit::Cell: f.SetFocus({"txtCell", pressed_.index}); break;
        case Hit::HelpFrame: f.SetFocus({"picFrame", 2}); break;
        case Hit::Background: f.Form_MouseDown(button, shift, x, y); break;
        default: break;
    }
    AfterModel();
}

void FormView::mouseMoveEvent(QMouseEvent* e) {
    if (!program_.MainForm) return;
    frmTessuma& f = Form();
    const QPoint pt = e->position().toPoint();
    const float x = static_cast<float>(e->position().x()), y = static_cast<float>(e->position().y());
    const int buttons = input::Buttons(e->buttons()), shift = input::ShiftCode(e->modifiers());
    bool changed = false;
    if (pressed_.kind == Hit::Background && (e->buttons() & pressedButton_)) {
        f.Form_MouseMove(buttons, shift, x, y);
        changed = true;
    }
    const Hit over = HitTest(pt);
    if (over.kind == Hit::Thumb || (pressed_.kind == Hit::Thumb && (e->buttons() & Qt::LeftButton))) {
        const float thumbLeft = static_cast<float>(f.picVolume.Left + 1) + f.imgVolume.Left;
        f.imgVolume_MouseMove(buttons, shift, (x - thumbLeft) * 15, (y - static_cast<float>(f.picVolume.Top)) * 15);
        changed = true;
    }
    UpdateCursor(pt);
    if (changed) AfterModel();
}

void FormView::mouseReleaseEvent(QMouseEvent* e) {
    if (!program_.MainForm) return;
    frmTessuma& f = Form();
    const QPoint pt = e->position().toPoint();
    const float x = static_cast<float>(e->position().x()), y = static_cast<float>(e->position().y());
    const int button = input::ButtonCode(e->button()), shift = input::ShiftCode(e->modifiers());
    const Hit down = pressed_;
    const Hit up = HitTest(pt);
    pressed_ = {};
    const bool same = down.kind == up.kind && down.index == up.index;
    const bool left = e->button() == Qt::LeftButton;
    switch (down.kind) {
        case Hit::Background:
            f.Form_MouseUp(button, shift, x, y);
            if (same && left) f.Form_Click();
            break;
        case Hit::ViewPos:
            // The release goes to the label that took the press.
            f.lblViewPos_MouseUp(down.index, button, shift, 0, 0);
            break;
        case Hit::Mark:
            if (same && left) f.picMark_Click(down.index);
            break;
        case Hit::HelpLabel:
            if (same && left) f.lblHelpPages_Click(down.index);
            break;
        case Hit::HelpTurn:
            if (same && left) f.imgHelpTurn_Click(down.index);
            break;
        case Hit::Support:
            if (same && left) f.lblSupport_Click();
            break;
        case Hit::Wiki:
            if (same && left) f.lblWiki_Click();
            break;
        case Hit::Curtain:
            if (same && left) f.picFrame_Click(3);
            break;
        case Hit::Option:
            if (same && left) f.lblOption_Click(down.index);
            break;
        case Hit::Timer:
            if (same && left) f.lblTimer_Click();
            break;
        case Hit::Check:
            if (same && left) {
                if (down.index == 0)
                    f.SetClickringValue(1 - f.chkClickring.Value);
                else if (down.index == 1)
                    f.SetSkinValue(1 - f.chkSkin.Value);
                else
                    f.SetSoundsValue(1 - f.chkSounds.Value);
            }
            break;
        default: break;
    }
    AfterModel();
}

void FormView::mouseDoubleClickEvent(QMouseEvent* e) {
    // A double click is a second press: the handlers see press and release.
    mousePressEvent(e);
}

void FormView::UpdateCursor(const QPoint& pt) {
    const frmTessuma& f = Form();
    const Hit h = HitTest(pt);
    bool hand = false;
    switch (h.kind) {
        case Hit::Ring:
        case Hit::Mark:
        case Hit::HelpLabel:
        case Hit::HelpTurn:
        case Hit::Support:
        case Hit::Wiki:
        case Hit::Thumb: hand = true; break;
        case Hit::Option: hand = f.lblOption[static_cast<std::size_t>(h.index)].MousePointer == 99; break;
        default: break;
    }
    if (hand)
        setCursor(look::Hand());
    else if (h.kind == Hit::Cell && !f.txtCell[static_cast<std::size_t>(h.index)].Locked)
        setCursor(Qt::IBeamCursor);
    else
        unsetCursor();
}

void FormView::GlideStep() {
    // The window follows the pointer a fifteenth of the way each step, so it
    // glides after it until it has caught up.
    if (!program_.MainForm || !Form().DragActive) {
        glide_.stop();
        return;
    }
    if (!(QGuiApplication::mouseButtons() & Qt::LeftButton)) {
        Form().Form_MouseUp(1, 0, 0, 0);
        AfterModel();
        return;
    }
    const QPointF local = mapFromGlobal(QCursor::pos().toPointF());
    if (std::abs(local.x() - Form().DragStartX) < 0.5 && std::abs(local.y() - Form().DragStartY) < 0.5) return;
    Form().Form_MouseMove(1, 0, static_cast<float>(local.x()), static_cast<float>(local.y()));
    AfterModel();
}

bool FormView::focusNextPrevChild(bool) {
    // Tab is the model's: the view keeps the keyboard.
    return false;
}

void FormView::keyPressEvent(QKeyEvent* e) {
    if (!program_.MainForm) return;
    WakeCaret();
    if (!Form().KeyPress(input::VirtualKey(e), input::ShiftCode(e->modifiers()), input::TypedText(e))) {
        QWidget::keyPressEvent(e);
        return;
    }
    AfterModel();
}

void FormView::keyReleaseEvent(QKeyEvent* e) {
    if (!program_.MainForm || e->isAutoRepeat()) return;
    frmTessuma& f = Form();
    const ControlRef focus = f.FocusedControl();
    const int vk = input::VirtualKey(e);
    const int shift = input::ShiftCode(e->modifiers());
    if (focus.name == "picMark")
        f.picMark_KeyUp(focus.index, vk, shift);
    else if (focus.name == "picFrame")
        f.picFrame_KeyUp(focus.index, vk, shift);
    else
        return;
    AfterModel();
}
