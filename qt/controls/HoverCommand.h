#pragma once
// HoverCommand: an owner-drawn push button. It changes its face while the
// pointer is over it, presses in when clicked and draws everything itself into
// an off-screen buffer that goes to the screen in one copy. It can show a
// caption and a picture side by side, take a picture with a transparent colour
// or an icon, a tiled or grabbed background, and a few kinds of edge. It knows
// nothing of the game.
//
// Units: the control's own scale is twips, 15 to the (device independent)
// pixel; ScaleWidth, ScaleHeight and the pointer positions of the mouse signals
// are twips, everything drawn is placed in pixels. Colours are 32-bit values in
// the &HBBGGRR form (blue in the high byte of the low 24 bits); a value with the
// top bit set is a system colour index, looked up in the widget's palette each
// time it is used.

#include <QFont>
#include <QIcon>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QPair>
#include <QPixmap>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>
#include <QWidget>

class QPainter;

// A picture as the control takes it: nothing, a bitmap or an icon. A bitmap
// is drawn with its top left pixel as the transparent colour and an embossed
// silhouette when disabled; an icon keeps its own transparency and takes the
// icon's disabled look. The device pixel ratio of a bitmap is honoured, so art
// made at twice the size draws sharp on a high density screen.
class StdPicture {
public:
    // The picture types of the platform's picture object.
    enum PictureType : qint16 { TypeNone = 0, TypeBitmap = 1, TypeIcon = 3 };

    StdPicture() = default;
    StdPicture(const QImage& bitmap);   // NOLINT: a bitmap converts on purpose
    StdPicture(const QPixmap& bitmap);  // NOLINT
    // An icon drawn at the given size in pixels (the platform's icons are 32 by 32).
    static StdPicture FromIcon(const QIcon& icon, const QSize& size = QSize(32, 32));

    PictureType Type() const { return m_type; }
    bool IsNull() const { return m_type == TypeNone; }
    // Size in device independent pixels.
    QSize Size() const { return m_size; }
    // The bitmap (null for an icon or nothing) and the icon (null otherwise).
    const QImage& Bitmap() const { return m_bitmap; }
    const QIcon& Icon() const { return m_icon; }
    // The picture as plain pixels at the given device pixel ratio, without any
    // transparency keying: what a pattern brush of it would tile.
    QPixmap ToPixmap(qreal devicePixelRatio) const;

    // Same kind and same pixels (bitmaps) or same icon (icons).
    bool operator==(const StdPicture& other) const;
    bool operator!=(const StdPicture& other) const { return !(*this == other); }

private:
    PictureType m_type = TypeNone;
    QImage m_bitmap;
    QIcon m_icon;
    QSize m_size;
};
Q_DECLARE_METATYPE(StdPicture)

// Saved properties of a control, by name, in the order they were written.
// A value equal to the default handed to WriteProperty (an empty value when
// none is given) is not stored, and drops an earlier entry of that name.
class PropertyBag {
public:
    QVariant ReadProperty(const QString& name, const QVariant& defaultValue = QVariant()) const;
    void WriteProperty(const QString& name, const QVariant& value, const QVariant& defaultValue = QVariant());
    bool Contains(const QString& name) const;
    QStringList Names() const;
    bool IsEmpty() const { return m_items.isEmpty(); }

    QVariantMap ToVariantMap() const;
    static PropertyBag FromVariantMap(const QVariantMap& map);

private:
    QList<QPair<QString, QVariant>> m_items;
};

class HoverCommand : public QWidget {
    Q_OBJECT

public:
    static constexpr int TwipsPerPixel = 15;

    // Bits of Style.
    enum StyleBits : qint32 {
        StyleFlat = 1,            // no edge while idle
        StyleThin = 2,            // single-line edges, press offset 1
        StyleHighlightText = 8,   // caption in HighlightColor during hover
        StyleNoEdge = 16,         // no edge ever
        StyleWholeFocus = 32,     // focus mark on the whole control; none with a HovPicture
        StyleHighlightFill = 64,  // background in HighlightColor during hover
    };

    // HoverState values.
    enum State : qint16 { StateIdle = 0, StateHover = 1, StatePressed = 2 };

    // Button and Shift values of the mouse signals.
    enum MouseButtonBits : qint16 { LeftButton = 1, RightButton = 2, MiddleButton = 4 };
    enum ShiftBits : qint16 { ShiftMask = 1, CtrlMask = 2, AltMask = 4 };

    // Default colours: window text, button face, highlight.
    static constexpr quint32 DefaultForeColor = 0x80000007u;
    static constexpr quint32 DefaultBackColor = 0x8000000Fu;
    static constexpr quint32 DefaultHighlightColor = 0x8000000Du;
    static constexpr qint32 DefaultStyle = StyleThin;
    static constexpr qint16 DefaultImageOffset = 10;
    static constexpr qint16 DefaultBorderOffset = 10;

    // A new control has the defaults of InitProperties, with an empty Caption.
    // It takes the focus by click and by Tab (change with setFocusPolicy).
    explicit HoverCommand(QWidget* parent = nullptr);
    ~HoverCommand() override;

    // ---- Properties ------------------------------------------------------
    // Tag is kept for the container and never saved by the control.
    QVariant Tag() const { return m_tag; }
    void SetTag(const QVariant& tag) { m_tag = tag; }

    // The native window handle (makes the widget a native window).
    WId hwnd() const { return winId(); }

    bool GrabBG() const { return m_grabBG; }
    void SetGrabBG(bool grab);

    // 0 left, 1 centre, 2 right.
    qint32 HAlign() const { return m_hAlign; }
    void SetHAlign(qint32 align);

    // Pixels between picture and caption.
    qint16 ImageOffset() const { return m_imageOffset; }
    void SetImageOffset(qint16 offset);

    // Pixels between the side and the content.
    qint16 BorderOffset() const { return m_borderOffset; }
    void SetBorderOffset(qint16 offset);

    // The caption's font (the widget's font).
    QFont Font() const { return font(); }
    void SetFont(const QFont& captionFont);

    qint32 Style() const { return m_style; }
    void SetStyle(qint32 style);

    StdPicture Picture() const { return m_picture; }
    void SetPicture(const StdPicture& picture);

    StdPicture HovPicture() const { return m_hovPicture; }
    void SetHovPicture(const StdPicture& picture);

    StdPicture BGPicture() const { return m_bgPicture; }
    void SetBGPicture(const StdPicture& picture);

    // "&" marks the access letter, "&&" is a plain ampersand.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption);

    // The control's own Enabled. It is handed on to the widget; a widget that
    // is disabled only because its parent is keeps Enabled true.
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool enabled);

    quint32 ForeColor() const { return m_foreColor; }
    void SetForeColor(quint32 color);

    quint32 BackColor() const { return m_backColor; }
    void SetBackColor(quint32 color);

    quint32 HighlightColor() const { return m_highlightColor; }
    void SetHighlightColor(quint32 color);

    // ---- Methods ---------------------------------------------------------
    // Repaints at once.
    void Refresh();

    // The size in twips.
    float ScaleWidth() const { return float(width() * TwipsPerPixel); }
    float ScaleHeight() const { return float(height() * TwipsPerPixel); }

    // The face shown: 0 idle, 1 hover, 2 pressed; and whether the focus mark
    // is drawn. Read only, for containers and tests.
    qint16 HoverState() const { return m_state; }
    bool HasFocus() const { return m_hasFocus; }

    // A newly placed control: Caption is the objectName, all else the defaults.
    void InitProperties();
    // Reads Caption, Style, HovPicture, Picture, BGPicture, Font, ImageOffset,
    // BorderOffset, HAlign, GrabBG, Enabled, ForeColor, BackColor and
    // HighlightColor in that order; a missing one takes its default. Pictures
    // may be stored as StdPicture, QImage, QPixmap or QIcon.
    void ReadProperties(const PropertyBag& bag);
    // Writes the same properties (Picture before HovPicture), leaving out every
    // one at its default.
    void WriteProperties(PropertyBag& bag) const;

    // The real colour of a colour value; system colours come from the palette.
    // A value that names no colour gives black.
    static QColor TranslateColor(quint32 color, const QPalette& palette);

    QSize sizeHint() const override;

signals:
    void Click();
    void MouseLeave();
    // Button and Shift as in MouseButtonBits and ShiftBits (for MouseMove the
    // buttons held), X and Y in twips.
    void MouseMove(qint16 Button, qint16 Shift, float X, float Y);
    void MouseDown(qint16 Button, qint16 Shift, float X, float Y);
    void MouseUp(qint16 Button, qint16 Shift, float X, float Y);
    // A property was written with a new value (every write of a picture or Font).
    void PropertyChanged(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void DrawFace(QPainter& p, int w, int h, qreal dpr);
    void DrawBackground(QPainter& p, int w, int h, int pressOffset, qreal dpr);
    void GrabBackground(QPainter& p, int w, int h, int pressOffset, qreal dpr);
    void DrawPicture(QPainter& p, const StdPicture& pic, int w, int h, int textWidth, int pressOffset);
    void DrawCaption(QPainter& p, const StdPicture& pic, int w, int h, int textWidth, int pressOffset);
    void DrawEdgeForState(QPainter& p, int w, int h);
    void DrawEdge(QPainter& p, int w, int h, int edgeFlags);
    void DrawFocusMark(QPainter& p, int w, int h);

    const StdPicture& ShownPicture() const;
    int CaptionWidth() const;
    int PressOffset() const;
    QColor Color(quint32 value) const { return TranslateColor(value, palette()); }
    bool Inside(const QPointF& pixelPos) const;
    void DropHover();
    void NoteChanged(const char* name);
    void LetEventsRun();

    QVariant m_tag;
    bool m_grabBG = false;
    qint32 m_hAlign = 0;
    qint16 m_imageOffset = DefaultImageOffset;
    qint16 m_borderOffset = DefaultBorderOffset;
    qint32 m_style = DefaultStyle;
    StdPicture m_picture;
    StdPicture m_hovPicture;
    StdPicture m_bgPicture;
    QString m_caption;
    bool m_enabled = true;
    quint32 m_foreColor = DefaultForeColor;
    quint32 m_backColor = DefaultBackColor;
    quint32 m_highlightColor = DefaultHighlightColor;

    qint16 m_state = StateIdle;
    bool m_hasFocus = false;
    // The mouse is the control's: it sees moves outside and the button up.
    bool m_captured = false;
    // A left press on the control that has not been dragged out yet.
    bool m_clickArmed = false;
    // The key (13 or 32) whose press gave state 2, 0 for none.
    int m_pressKey = 0;
};
