// HoverCommand: the owner-drawn button with its hover face.
#include "qt/controls/HoverCommand.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QPointer>
#include <QtMath>

#include <cmath>

namespace {

// To the nearest whole number, halves to even.
int RoundHalfEven(double v) {
    const double f = std::floor(v);
    const double diff = v - f;
    double r;
    if (diff > 0.5)
        r = f + 1.0;
    else if (diff < 0.5)
        r = f;
    else
        r = std::fmod(f, 2.0) == 0.0 ? f : f + 1.0;
    return int(r);
}

qint16 ToButtonBit(Qt::MouseButton b) {
    switch (b) {
        case Qt::LeftButton: return HoverCommand::LeftButton;
        case Qt::RightButton: return HoverCommand::RightButton;
        case Qt::MiddleButton: return HoverCommand::MiddleButton;
        default: return 0;
    }
}

qint16 ToButtonBits(Qt::MouseButtons bs) {
    qint16 v = 0;
    if (bs & Qt::LeftButton) v |= HoverCommand::LeftButton;
    if (bs & Qt::RightButton) v |= HoverCommand::RightButton;
    if (bs & Qt::MiddleButton) v |= HoverCommand::MiddleButton;
    return v;
}

qint16 ToShiftBits(Qt::KeyboardModifiers m) {
    qint16 v = 0;
    if (m & Qt::ShiftModifier) v |= HoverCommand::ShiftMask;
    if (m & Qt::ControlModifier) v |= HoverCommand::CtrlMask;
    if (m & Qt::AltModifier) v |= HoverCommand::AltMask;
    return v;
}

// Enter (either key) is 13, Space 32, anything else 0.
int PressKeyCode(const QKeyEvent* e) {
    switch (e->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: return 13;
        case Qt::Key_Space: return 32;
        default: return 0;
    }
}

// DrawEdge's border bits.
constexpr int kRaisedOuter = 1;
constexpr int kSunkenOuter = 2;
constexpr int kRaisedInner = 4;
constexpr int kSunkenInner = 8;

// System colour indices used for the 3D look.
constexpr quint32 kBtnShadow = 0x80000000u | 16;
constexpr quint32 kBtnHighlight = 0x80000000u | 20;
constexpr quint32 kDarkShadow3D = 0x80000000u | 21;
constexpr quint32 kLight3D = 0x80000000u | 22;

// The bitmap with every pixel of its top left colour made transparent.
QImage KeyedBitmap(const QImage& source) {
    QImage img = source.convertToFormat(QImage::Format_ARGB32);
    if (img.isNull()) return img;
    const QRgb key = img.pixel(0, 0);
    for (int y = 0; y < img.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(img.scanLine(y));
        for (int x = 0; x < img.width(); ++x)
            if (line[x] == key) line[x] = 0;
    }
    img.setDevicePixelRatio(source.devicePixelRatio());
    return img;
}

// A solid silhouette of the image's opaque parts in one colour.
QImage Silhouette(const QImage& keyed, const QColor& color) {
    QImage out(keyed.size(), QImage::Format_ARGB32_Premultiplied);
    out.setDevicePixelRatio(keyed.devicePixelRatio());
    out.fill(color);
    QPainter p(&out);
    p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    p.drawImage(QPoint(0, 0), keyed);
    return out;
}

}  // namespace

// ===========================================================================
// StdPicture

StdPicture::StdPicture(const QImage& bitmap) {
    if (bitmap.isNull()) return;
    m_type = TypeBitmap;
    m_bitmap = bitmap;
    const qreal dpr = bitmap.devicePixelRatio() > 0 ? bitmap.devicePixelRatio() : 1.0;
    m_size = QSize(qRound(bitmap.width() / dpr), qRound(bitmap.height() / dpr));
}

StdPicture::StdPicture(const QPixmap& bitmap) : StdPicture(bitmap.toImage()) {}

StdPicture StdPicture::FromIcon(const QIcon& icon, const QSize& size) {
    StdPicture pic;
    if (icon.isNull() || size.isEmpty()) return pic;
    pic.m_type = TypeIcon;
    pic.m_icon = icon;
    pic.m_size = size;
    return pic;
}

QPixmap StdPicture::ToPixmap(qreal devicePixelRatio) const {
    switch (m_type) {
        case TypeBitmap: return QPixmap::fromImage(m_bitmap);
        case TypeIcon: {
            // Laid on a fixed size so that the tile has the icon's stated size.
            QPixmap pm(QSize(qCeil(m_size.width() * devicePixelRatio), qCeil(m_size.height() * devicePixelRatio)));
            pm.setDevicePixelRatio(devicePixelRatio);
            pm.fill(Qt::transparent);
            QPainter p(&pm);
            m_icon.paint(&p, QRect(QPoint(0, 0), m_size));
            return pm;
        }
        default: return QPixmap();
    }
}

bool StdPicture::operator==(const StdPicture& other) const {
    if (m_type != other.m_type || m_size != other.m_size) return false;
    switch (m_type) {
        case TypeBitmap: return m_bitmap == other.m_bitmap;
        case TypeIcon: return m_icon.cacheKey() == other.m_icon.cacheKey();
        default: return true;
    }
}

// ===========================================================================
// PropertyBag

QVariant PropertyBag::ReadProperty(const QString& name, const QVariant& defaultValue) const {
    for (const auto& item : m_items)
        if (item.first == name) return item.second;
    return defaultValue;
}

void PropertyBag::WriteProperty(const QString& name, const QVariant& value, const QVariant& defaultValue) {
    for (qsizetype i = 0; i < m_items.size(); ++i) {
        if (m_items[i].first == name) {
            m_items.removeAt(i);
            break;
        }
    }
    if (value == defaultValue) return;
    m_items.append({name, value});
}

bool PropertyBag::Contains(const QString& name) const {
    for (const auto& item : m_items)
        if (item.first == name) return true;
    return false;
}

QStringList PropertyBag::Names() const {
    QStringList names;
    for (const auto& item : m_items) names << item.first;
    return names;
}

QVariantMap PropertyBag::ToVariantMap() const {
    QVariantMap map;
    for (const auto& item : m_items) map.insert(item.first, item.second);
    return map;
}

PropertyBag PropertyBag::FromVariantMap(const QVariantMap& map) {
    PropertyBag bag;
    for (auto it = map.cbegin(); it != map.cend(); ++it) bag.m_items.append({it.key(), it.value()});
    return bag;
}

// ===========================================================================
// HoverCommand: life and properties

HoverCommand::HoverCommand(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    // Every pixel is painted by the control itself.
    setAttribute(Qt::WA_OpaquePaintEvent);
}

HoverCommand::~HoverCommand() = default;

void HoverCommand::NoteChanged(const char* name) { emit PropertyChanged(QString::fromLatin1(name)); }

void HoverCommand::LetEventsRun() {
    if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

void HoverCommand::SetGrabBG(bool grab) {
    if (grab == m_grabBG) return;
    m_grabBG = grab;
    NoteChanged("GrabBG");
    update();
}

void HoverCommand::SetHAlign(qint32 align) {
    if (align == m_hAlign) return;
    m_hAlign = align;
    NoteChanged("HAlign");
    update();
}

void HoverCommand::SetImageOffset(qint16 offset) {
    if (offset == m_imageOffset) return;
    m_imageOffset = offset;
    NoteChanged("ImageOffset");
    update();
}

void HoverCommand::SetBorderOffset(qint16 offset) {
    if (offset == m_borderOffset) return;
    m_borderOffset = offset;
    NoteChanged("BorderOffset");
    update();
}

void HoverCommand::SetFont(const QFont& captionFont) {
    setFont(captionFont);
    NoteChanged("Font");
    update();
}

void HoverCommand::SetStyle(qint32 style) {
    if (style == m_style) return;
    m_style = style;
    NoteChanged("Style");
    update();
}

void HoverCommand::SetPicture(const StdPicture& picture) {
    m_picture = picture;
    NoteChanged("Picture");
    update();
}

void HoverCommand::SetHovPicture(const StdPicture& picture) {
    m_hovPicture = picture;
    NoteChanged("HovPicture");
    update();
}

void HoverCommand::SetBGPicture(const StdPicture& picture) {
    m_bgPicture = picture;
    NoteChanged("BGPicture");
    update();
}

void HoverCommand::SetCaption(const QString& caption) {
    if (caption == m_caption) return;
    m_caption = caption;
    NoteChanged("Caption");
    QPointer<HoverCommand> self(this);
    LetEventsRun();
    if (!self) return;
    updateGeometry();
    update();
}

void HoverCommand::SetEnabled(bool enabled) {
    if (enabled != m_enabled) {
        m_enabled = enabled;
        NoteChanged("Enabled");
        QPointer<HoverCommand> self(this);
        LetEventsRun();
        if (!self) return;
        update();
    }
    // The widget follows always, changed or not.
    setEnabled(m_enabled);
}

void HoverCommand::SetForeColor(quint32 color) {
    if (color == m_foreColor) return;
    m_foreColor = color;
    NoteChanged("ForeColor");
    update();
}

void HoverCommand::SetBackColor(quint32 color) {
    if (color == m_backColor) return;
    m_backColor = color;
    NoteChanged("BackColor");
    update();
}

void HoverCommand::SetHighlightColor(quint32 color) {
    if (color == m_highlightColor) return;
    m_highlightColor = color;
    NoteChanged("HighlightColor");
    update();
}

void HoverCommand::Refresh() { repaint(); }

QSize HoverCommand::sizeHint() const {
    const StdPicture& pic = m_picture.IsNull() ? m_hovPicture : m_picture;
    const int tw = CaptionWidth();
    int w = 2 * m_borderOffset + tw + pic.Size().width();
    if (!pic.IsNull() && tw > 0) w += m_imageOffset;
    const int h = qMax(pic.Size().height(), m_caption.isEmpty() ? 0 : fontMetrics().height()) + 8;
    return QSize(qMax(w, 16), qMax(h, 16));
}

// ---------------------------------------------------------------------------
// Saving and reading

void HoverCommand::InitProperties() {
    SetCaption(objectName());
    SetStyle(DefaultStyle);
    SetPicture(StdPicture());
    SetHovPicture(StdPicture());
    SetBGPicture(StdPicture());
    SetFont(QGuiApplication::font());
    SetImageOffset(DefaultImageOffset);
    SetBorderOffset(DefaultBorderOffset);
    SetHAlign(0);
    SetGrabBG(false);
    SetEnabled(true);
    SetForeColor(DefaultForeColor);
    SetBackColor(DefaultBackColor);
    SetHighlightColor(DefaultHighlightColor);
}

namespace {

StdPicture PictureFromVariant(const QVariant& v) {
    if (!v.isValid()) return StdPicture();
    if (v.metaType() == QMetaType::fromType<StdPicture>()) return v.value<StdPicture>();
    switch (v.metaType().id()) {
        case QMetaType::QImage: return StdPicture(v.value<QImage>());
        case QMetaType::QPixmap: return StdPicture(v.value<QPixmap>());
        case QMetaType::QIcon: return StdPicture::FromIcon(v.value<QIcon>());
        default: return StdPicture();
    }
}

}  // namespace

void HoverCommand::ReadProperties(const PropertyBag& bag) {
    QPointer<HoverCommand> self(this);
    SetCaption(bag.ReadProperty(QStringLiteral("Caption"), objectName()).toString());
    if (!self) return;
    SetStyle(bag.ReadProperty(QStringLiteral("Style"), DefaultStyle).toInt());
    SetHovPicture(PictureFromVariant(bag.ReadProperty(QStringLiteral("HovPicture"))));
    SetPicture(PictureFromVariant(bag.ReadProperty(QStringLiteral("Picture"))));
    SetBGPicture(PictureFromVariant(bag.ReadProperty(QStringLiteral("BGPicture"))));
    SetFont(bag.ReadProperty(QStringLiteral("Font"), QGuiApplication::font()).value<QFont>());
    SetImageOffset(qint16(bag.ReadProperty(QStringLiteral("ImageOffset"), int(DefaultImageOffset)).toInt()));
    SetBorderOffset(qint16(bag.ReadProperty(QStringLiteral("BorderOffset"), int(DefaultBorderOffset)).toInt()));
    SetHAlign(bag.ReadProperty(QStringLiteral("HAlign"), 0).toInt());
    SetGrabBG(bag.ReadProperty(QStringLiteral("GrabBG"), false).toBool());
    SetEnabled(bag.ReadProperty(QStringLiteral("Enabled"), true).toBool());
    if (!self) return;
    SetForeColor(bag.ReadProperty(QStringLiteral("ForeColor"), DefaultForeColor).toUInt());
    SetBackColor(bag.ReadProperty(QStringLiteral("BackColor"), DefaultBackColor).toUInt());
    SetHighlightColor(bag.ReadProperty(QStringLiteral("HighlightColor"), DefaultHighlightColor).toUInt());
}

void HoverCommand::WriteProperties(PropertyBag& bag) const {
    auto writePicture = [&bag](const char* name, const StdPicture& pic) {
        bag.WriteProperty(QString::fromLatin1(name), pic.IsNull() ? QVariant() : QVariant::fromValue(pic));
    };
    // A property that is left out is not in the bag afterwards either.
    auto writeOrDrop = [&bag](const char* name, const QVariant& value, const QVariant& def) {
        bag.WriteProperty(QString::fromLatin1(name), value, def);
    };

    writeOrDrop("Caption", m_caption, objectName());
    writeOrDrop("Style", int(m_style), int(DefaultStyle));
    writePicture("Picture", m_picture);
    writePicture("HovPicture", m_hovPicture);
    writePicture("BGPicture", m_bgPicture);
    writeOrDrop("Font", font(), QGuiApplication::font());
    writeOrDrop("ImageOffset", int(m_imageOffset), int(DefaultImageOffset));
    writeOrDrop("BorderOffset", int(m_borderOffset), int(DefaultBorderOffset));
    writeOrDrop("HAlign", int(m_hAlign), 0);
    writeOrDrop("GrabBG", m_grabBG, false);
    writeOrDrop("Enabled", m_enabled, true);
    writeOrDrop("ForeColor", m_foreColor, DefaultForeColor);
    writeOrDrop("BackColor", m_backColor, DefaultBackColor);
    writeOrDrop("HighlightColor", m_highlightColor, DefaultHighlightColor);
}

// ---------------------------------------------------------------------------
// Colours

QColor HoverCommand::TranslateColor(quint32 color, const QPalette& pal) {
    if (!(color & 0x80000000u)) return QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
    if (color & 0x7FFFFF00u) return QColor(Qt::black);

    const auto active = QPalette::Active;
    const auto inactive = QPalette::Inactive;
    switch (color & 0xFF) {
        case 0: return pal.color(active, QPalette::Midlight);         // scroll bar
        case 1: return pal.color(active, QPalette::Dark);             // desktop
        case 2: return pal.color(active, QPalette::Highlight);        // active title
        case 3: return pal.color(inactive, QPalette::Highlight);      // inactive title
        case 4: return pal.color(active, QPalette::Window);           // menu
        case 5: return pal.color(active, QPalette::Base);             // window
        case 6: return pal.color(active, QPalette::Shadow);           // window frame
        case 7: return pal.color(active, QPalette::WindowText);       // menu text
        case 8: return pal.color(active, QPalette::Text);             // window text
        case 9: return pal.color(active, QPalette::HighlightedText);  // title text
        case 10:                                                      // active border
        case 11: return pal.color(active, QPalette::Button);          // inactive border
        case 12: return pal.color(active, QPalette::Mid);             // application workspace
        case 13: return pal.color(active, QPalette::Highlight);
        case 14: return pal.color(active, QPalette::HighlightedText);
        case 15: return pal.color(active, QPalette::Button);            // button face
        case 16: return pal.color(active, QPalette::Dark);              // button shadow
        case 17: return pal.color(QPalette::Disabled, QPalette::Text);  // grey text
        case 18: return pal.color(active, QPalette::ButtonText);
        case 19: return pal.color(inactive, QPalette::HighlightedText);  // inactive title text
        case 20: return pal.color(active, QPalette::Light);              // button highlight
        case 21: return pal.color(active, QPalette::Shadow);             // 3D dark shadow
        case 22: return pal.color(active, QPalette::Midlight);           // 3D light
        case 23: return pal.color(active, QPalette::ToolTipText);
        case 24: return pal.color(active, QPalette::ToolTipBase);
        case 26: return pal.color(active, QPalette::Link);         // hot-tracked item
        case 27: return pal.color(active, QPalette::Highlight);    // active title gradient
        case 28: return pal.color(inactive, QPalette::Highlight);  // inactive title gradient
        case 29: return pal.color(active, QPalette::Highlight);    // menu highlight
        case 30: return pal.color(active, QPalette::Window);       // menu bar
        default: return QColor(Qt::black);
    }
}

// ---------------------------------------------------------------------------
// Painting

const StdPicture& HoverCommand::ShownPicture() const {
    if (m_state == StateHover && !m_hovPicture.IsNull()) return m_hovPicture;
    return m_picture;
}

int HoverCommand::CaptionWidth() const {
    // Measured as written, ampersands included.
    return m_caption.isEmpty() ? 0 : fontMetrics().horizontalAdvance(m_caption);
}

int HoverCommand::PressOffset() const {
    if (m_state != StatePressed) return 0;
    return (m_style & StyleThin) ? 1 : 2;
}

void HoverCommand::paintEvent(QPaintEvent*) {
    const int w = width();
    const int h = height();
    if (w <= 0 || h <= 0) return;

    // Built whole off screen, then copied in one go.
    const qreal dpr = devicePixelRatioF();
    QPixmap buffer(QSize(qCeil(w * dpr), qCeil(h * dpr)));
    buffer.setDevicePixelRatio(dpr);
    buffer.fill(Qt::black);
    {
        QPainter p(&buffer);
        DrawFace(p, w, h, dpr);
    }
    QPainter out(this);
    out.drawPixmap(0, 0, buffer);
}

void HoverCommand::DrawFace(QPainter& p, int w, int h, qreal dpr) {
    const int pressOffset = PressOffset();
    DrawBackground(p, w, h, pressOffset, dpr);

    const StdPicture& pic = ShownPicture();
    const int textWidth = CaptionWidth();
    DrawPicture(p, pic, w, h, textWidth, pressOffset);
    DrawCaption(p, pic, w, h, textWidth, pressOffset);
    DrawEdgeForState(p, w, h);
    if (m_hasFocus) DrawFocusMark(p, w, h);
}

void HoverCommand::DrawBackground(QPainter& p, int w, int h, int pressOffset, qreal dpr) {
    const QRect all(0, 0, w, h);
    if (m_state == StateHover && (m_style & StyleHighlightFill)) {
        p.fillRect(all, Color(m_highlightColor));
    } else if (m_bgPicture.IsNull() && m_grabBG) {
        GrabBackground(p, w, h, pressOffset, dpr);
    } else if (m_bgPicture.IsNull()) {
        p.fillRect(all, Color(m_backColor));
    } else {
        // Tiled from the brush origin, which follows the press.
        const QPixmap tile = m_bgPicture.ToPixmap(dpr);
        if (!tile.isNull()) p.drawTiledPixmap(all, tile, QPoint(-pressOffset, -pressOffset));
    }
}

void HoverCommand::GrabBackground(QPainter& p, int w, int h, int pressOffset, qreal dpr) {
    QWidget* container = parentWidget();
    if (!container) return;

    // What the window shows under the control, without any child control:
    // each ancestor from the window down paints its own part of it.
    QList<QWidget*> chain;
    for (QWidget* a = container; a; a = a->isWindow() ? nullptr : a->parentWidget()) chain.prepend(a);

    QPixmap under(QSize(qCeil(w * dpr), qCeil(h * dpr)));
    under.setDevicePixelRatio(dpr);
    under.fill(Qt::black);
    for (QWidget* a : chain) {
        const QRect source(mapTo(a, QPoint(0, 0)), QSize(w, h));
        a->render(&under, QPoint(0, 0), QRegion(source), QWidget::DrawWindowBackground);
    }
    p.drawPixmap(pressOffset, pressOffset, under);
}

void HoverCommand::DrawPicture(QPainter& p, const StdPicture& pic, int w, int h, int textWidth, int pressOffset) {
    if (pic.IsNull()) return;
    const int pw = pic.Size().width();
    const int ph = pic.Size().height();

    double left = 0;
    switch (m_hAlign) {
        case 0: left = m_borderOffset; break;
        case 1: left = (w - (m_imageOffset + textWidth + pw)) / 2.0; break;
        case 2: left = double(w) - textWidth - m_borderOffset - m_imageOffset - pw; break;
        default: break;
    }
    const int x = RoundHalfEven(left) + pressOffset;
    const int y = RoundHalfEven((h - ph) / 2.0) + pressOffset;

    if (pic.Type() == StdPicture::TypeIcon) {
        pic.Icon().paint(&p, QRect(x, y, pw, ph), Qt::AlignCenter, m_enabled ? QIcon::Normal : QIcon::Disabled);
        return;
    }

    // Rebuilt at each paint: the buttons are small and repaint only on change.
    const QImage keyed = KeyedBitmap(pic.Bitmap());
    if (m_enabled) {
        p.drawImage(QPoint(x, y), keyed);
    } else {
        // Embossed: a light copy one pixel down and right under a shadow copy.
        p.drawImage(QPoint(x + 1, y + 1), Silhouette(keyed, Color(kBtnHighlight)));
        p.drawImage(QPoint(x, y), Silhouette(keyed, Color(kBtnShadow)));
    }
}

void HoverCommand::DrawCaption(QPainter& p, const StdPicture& pic, int w, int h, int textWidth, int pressOffset) {
    if (m_caption.isEmpty()) return;
    const QFontMetrics fm = fontMetrics();
    const int th = fm.height();
    const int pw = pic.IsNull() ? 0 : pic.Size().width();

    // Worked in twips as the control's scale is, then back to pixels.
    const double topTwips = (ScaleHeight() - double(th) * TwipsPerPixel) / 2.0;
    const int y = RoundHalfEven(topTwips / TwipsPerPixel) + pressOffset;

    double left = 0;
    switch (m_hAlign) {
        case 0: left = pic.IsNull() ? m_borderOffset : m_borderOffset + m_imageOffset + pw; break;
        case 1: left = pic.IsNull() ? (w - textWidth) / 2.0 : (w - textWidth + m_imageOffset + pw) / 2.0; break;
        case 2: left = double(w) - textWidth - m_borderOffset; break;
        default: break;
    }
    const int x = RoundHalfEven(left) + pressOffset;

    p.setFont(font());
    const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic | Qt::TextSingleLine | Qt::TextDontClip;
    const int boxWidth = qMax(textWidth, 1) + fm.maxWidth();
    if (m_enabled) {
        const bool highlight = (m_style & StyleHighlightText) && m_state == StateHover;
        p.setPen(Color(highlight ? m_highlightColor : m_foreColor));
        p.drawText(QRect(x, y, boxWidth, th), flags, m_caption);
    } else {
        p.setPen(Color(kBtnHighlight));
        p.drawText(QRect(x + 1, y + 1, boxWidth, th), flags, m_caption);
        p.setPen(Color(kBtnShadow));
        p.drawText(QRect(x, y, boxWidth, th), flags, m_caption);
    }
}

void HoverCommand::DrawEdgeForState(QPainter& p, int w, int h) {
    const bool thin = m_style & StyleThin;
    const int raised = thin ? kRaisedInner : (kRaisedOuter | kRaisedInner);
    const int sunken = thin ? kSunkenInner : (kSunkenOuter | kSunkenInner);
    if (m_style & StyleNoEdge) return;
    switch (m_state) {
        case StateIdle:
            if (!(m_style & StyleFlat)) DrawEdge(p, w, h, raised);
            break;
        case StateHover: DrawEdge(p, w, h, raised); break;
        case StatePressed: DrawEdge(p, w, h, sunken); break;
        default: break;
    }
}

void HoverCommand::DrawEdge(QPainter& p, int w, int h, int edgeFlags) {
    // One ring of lines: top and left in one colour, bottom and right (with
    // the two far corners) in the other.
    auto ring = [&p](const QRect& r, const QColor& topLeft, const QColor& bottomRight) {
        if (r.width() <= 0 || r.height() <= 0) return;
        p.fillRect(QRect(r.left(), r.top(), r.width() - 1, 1), topLeft);
        p.fillRect(QRect(r.left(), r.top(), 1, r.height() - 1), topLeft);
        p.fillRect(QRect(r.left(), r.bottom(), r.width(), 1), bottomRight);
        p.fillRect(QRect(r.right(), r.top(), 1, r.height()), bottomRight);
    };

    QRect r(0, 0, w, h);
    const int outer = edgeFlags & (kRaisedOuter | kSunkenOuter);
    const int inner = edgeFlags & (kRaisedInner | kSunkenInner);
    if (outer) {
        if (outer & kRaisedOuter)
            ring(r, Color(kLight3D), Color(kDarkShadow3D));
        else
            ring(r, Color(kBtnShadow), Color(kBtnHighlight));
        r.adjust(1, 1, -1, -1);
    }
    if (inner) {
        if (inner & kRaisedInner)
            ring(r, Color(kBtnHighlight), Color(kBtnShadow));
        else
            ring(r, Color(kDarkShadow3D), Color(kLight3D));
    }
}

void HoverCommand::DrawFocusMark(QPainter& p, int w, int h) {
    // A flat button with the focus shows its edge even when idle.
    if ((m_style & StyleFlat) && m_state == StateIdle)
        DrawEdge(p, w, h, (m_style & StyleThin) ? kRaisedInner : (kRaisedOuter | kRaisedInner));
    if (!m_hovPicture.IsNull() && (m_style & StyleWholeFocus)) return;

    const QRect r = (m_style & StyleWholeFocus) ? QRect(0, 0, w, h) : QRect(3, 3, w - 6, h - 6);
    if (r.width() <= 0 || r.height() <= 0) return;

    // A dotted rectangle that inverts every other pixel of its outline.
    QRegion dots;
    auto dot = [&dots](int x, int y) {
        if (((x + y) & 1) == 0) dots += QRect(x, y, 1, 1);
    };
    for (int x = r.left(); x <= r.right(); ++x) {
        dot(x, r.top());
        if (r.bottom() != r.top()) dot(x, r.bottom());
    }
    for (int y = r.top() + 1; y < r.bottom(); ++y) {
        dot(r.left(), y);
        if (r.right() != r.left()) dot(r.right(), y);
    }
    p.save();
    p.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    p.setClipRegion(dots);
    p.fillRect(r, Qt::white);
    p.restore();
}

// ---------------------------------------------------------------------------
// Mouse, keyboard and focus

bool HoverCommand::Inside(const QPointF& pixelPos) const {
    const double x = pixelPos.x() * TwipsPerPixel;
    const double y = pixelPos.y() * TwipsPerPixel;
    return x > 0 && x < ScaleWidth() && y > 0 && y < ScaleHeight();
}

// The pointer has gone: back to idle, the mouse given back, no click to come.
void HoverCommand::DropHover() {
    m_captured = false;
    m_clickArmed = false;
    m_state = StateIdle;
    update();
    emit MouseLeave();
}

void HoverCommand::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    if (!m_enabled) return;
    const QPointF pos = event->position();
    if (!Inside(pos)) {
        // Only a control that holds the mouse sees the pointer outside.
        if (m_captured) DropHover();
        return;
    }
    m_captured = true;
    if (!(event->buttons() & Qt::LeftButton) && m_state != StateHover) {
        m_state = StateHover;
        update();
    }
    emit MouseMove(ToButtonBits(event->buttons()), ToShiftBits(event->modifiers()), float(pos.x() * TwipsPerPixel),
                   float(pos.y() * TwipsPerPixel));
}

void HoverCommand::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (!m_enabled) return;
    const QPointF pos = event->position();
    m_captured = true;
    if (event->button() == Qt::LeftButton) {
        m_state = StatePressed;
        m_clickArmed = true;
        update();
    }
    emit MouseDown(ToButtonBit(event->button()), ToShiftBits(event->modifiers()), float(pos.x() * TwipsPerPixel),
                   float(pos.y() * TwipsPerPixel));
}

void HoverCommand::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (!m_enabled || !m_captured) return;  // the button came up somewhere else
    const QPointF pos = event->position();
    if (!Inside(pos)) {
        DropHover();
        return;
    }
    const bool click = event->button() == Qt::LeftButton && m_clickArmed;
    if (event->button() == Qt::LeftButton) m_clickArmed = false;

    QPointer<HoverCommand> self(this);
    m_state = StateHover;
    update();
    emit MouseUp(ToButtonBit(event->button()), ToShiftBits(event->modifiers()), float(pos.x() * TwipsPerPixel),
                 float(pos.y() * TwipsPerPixel));
    if (!self || !click) return;

    // The click that follows the button up.
    m_state = StateIdle;
    update();
    if (m_enabled) emit Click();
}

void HoverCommand::leaveEvent(QEvent* event) {
    // The pointer went somewhere else without a move outside reaching us
    // (the window system reports this instead).
    if (m_enabled && m_captured) DropHover();
    QWidget::leaveEvent(event);
}

void HoverCommand::keyPressEvent(QKeyEvent* event) {
    const int code = PressKeyCode(event);
    if (!m_enabled || code == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (m_state != StatePressed) {
        m_state = StatePressed;
        m_pressKey = code;
        update();
    }
}

void HoverCommand::keyReleaseEvent(QKeyEvent* event) {
    const int code = PressKeyCode(event);
    if (!m_enabled || code == 0) {
        QWidget::keyReleaseEvent(event);
        return;
    }
    event->accept();
    if (event->isAutoRepeat()) return;
    if (m_state == StatePressed && code == m_pressKey) {
        m_pressKey = 0;
        m_state = StateIdle;
        update();
        emit Click();
    }
}

void HoverCommand::focusInEvent(QFocusEvent* event) {
    if (m_enabled) {
        m_hasFocus = true;
        update();
    }
    QWidget::focusInEvent(event);
}

void HoverCommand::focusOutEvent(QFocusEvent* event) {
    // A disabled control keeps its focus mark as it was.
    if (m_enabled) {
        m_hasFocus = false;
        update();
    }
    QWidget::focusOutEvent(event);
}

void HoverCommand::changeEvent(QEvent* event) {
    switch (event->type()) {
        case QEvent::EnabledChange:
            // Someone called setEnabled() on the widget itself: follow it.
            if (testAttribute(Qt::WA_Disabled) == m_enabled) SetEnabled(!testAttribute(Qt::WA_Disabled));
            break;
        case QEvent::PaletteChange:
        case QEvent::FontChange: update(); break;
        default: break;
    }
    QWidget::changeEvent(event);
}
