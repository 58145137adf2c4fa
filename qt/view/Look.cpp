// The game's look: fonts, colours, pictures and cursors.
#include "qt/view/Look.h"

#include <QGraphicsView>

#include <QFile>
#include <QFontMetricsF>

#include <QCursor>
#include <QFontDatabase>
#include <QHash>
#include <QImageReader>
#include <QResource>
#include <QSet>

#include <cstring>

// The decoded pictures live in a resource file of their own; naming its
// set-up here keeps the linker from dropping it out of the static library.
// (Q_INIT_RESOURCE must be used outside namespaces.)
static void InitRawPictures() {
    static const bool done = [] {
        Q_INIT_RESOURCE(rawpictures);
        return true;
    }();
    (void)done;
}

namespace look {

namespace {

// The faces that stand in for the game's: "Japan" is Dosis ExtraBold
// (always the heavy weight), "AmerType Md BT" Roboto Slab bold, "Verdana"
// DejaVu Sans, "Courier New" Liberation Mono, "Arial" Liberation Sans.
const char* const kJapan = "Dosis";
const char* const kAmerType = "Roboto Slab";
const char* const kVerdana = "DejaVu Sans";
const char* const kCourier = "Liberation Mono";
const char* const kArial = "Liberation Sans";

}  // namespace

// A face file is handed to the font database the first time a face of it
// is asked for: the database reads a font's whole character map as it takes
// it in, and the message box, help and high scores need faces the window
// doesn't. The files are stored uncompressed in the program: the database
// reads them where they lie, and only the parts it uses are ever loaded.
static void AddFace(const char* file) {
    static QSet<QString> added;
    const QString path = QStringLiteral(":/fonts/") + QLatin1String(file);
    if (added.contains(path)) return;
    added.insert(path);
    const QResource font(path);
    if (!font.isValid()) return;
    if (font.compressionAlgorithm() == QResource::NoCompression)
        QFontDatabase::addApplicationFontFromData(
            QByteArray::fromRawData(reinterpret_cast<const char*>(font.data()), font.size()));
    else
        QFontDatabase::addApplicationFontFromData(font.uncompressedData());
}

void LoadFonts() {
    // Adding a font empties Qt's font caches, so the window's own faces go
    // in together before anything is drawn: added one by one while the
    // first frame is drawn, each would throw away the faces set up before it.
    for (const char* file :
         {"Dosis-ExtraBold.otf", "RobotoSlab-Bold.otf", "LiberationMono-Bold.ttf", "LiberationSans-Bold.ttf"})
        AddFace(file);
}

static QFont Make(const QString& family, double points, bool bold, bool underline) {
    QFont f(family);
    f.setPointSizeF(points);
    f.setBold(bold);
    f.setUnderline(underline);
    f.setStyleStrategy(QFont::PreferAntialias);
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

QFont Japan(double points, bool, bool underline) {
    AddFace("Dosis-ExtraBold.otf");
    QFont f = Make(kJapan, points, true, underline);
    f.setWeight(QFont::ExtraBold);
    return f;
}
// Roboto Slab comes in bold alone; a plain AmerType is drawn from it too.
QFont AmerType(double points, bool bold) {
    AddFace("RobotoSlab-Bold.otf");
    return Make(kAmerType, points, bold, false);
}
QFont Verdana(double points, bool bold, bool underline) {
    AddFace(bold ? "DejaVuSans-Bold.ttf" : "DejaVuSans.ttf");
    return Make(kVerdana, points, bold, underline);
}
QFont CourierBold(double points) {
    AddFace("LiberationMono-Bold.ttf");
    return Make(kCourier, points, true, false);
}
QFont Arial(double points, bool bold) {
    AddFace(bold ? "LiberationSans-Bold.ttf" : "LiberationSans-Regular.ttf");
    return Make(kArial, points, bold, false);
}

QColor Bgr(std::int32_t bgr) {
    const auto v = static_cast<std::uint32_t>(bgr);
    return QColor(static_cast<int>(v & 0xFF), static_cast<int>((v >> 8) & 0xFF), static_cast<int>((v >> 16) & 0xFF));
}

// The picture at ":/raw/<name>.px", the decoded twin of ":/<name>.png" made
// by tools/rawpicture, drawn from the program's own pages without a copy.
// Null when there is none or it doesn't fit this machine (byte order,
// alignment, a format or size that doesn't add up): the PNG is read instead.
static QPixmap Predecoded(const QString& path) {
    if (!path.startsWith(":/") || !path.endsWith(".png")) return {};
    InitRawPictures();
    const QResource raw(":/raw/" + path.mid(2).chopped(4) + ".px");
    constexpr qint64 kHeader = 20;
    if (!raw.isValid() || raw.compressionAlgorithm() != QResource::NoCompression || raw.size() < kHeader) return {};
    const uchar* data = raw.data();
    std::uint32_t head[4];
    std::memcpy(head, data + 4, sizeof head);
    const std::uint32_t width = head[1], height = head[2];
    const auto format = static_cast<QImage::Format>(head[3]);
    if (std::memcmp(data, "TSPX", 4) != 0 || head[0] != 0x01020304u || width == 0 || height == 0 || width > 8192 ||
        height > 8192 || raw.size() != kHeader + qint64(width) * height * 4 ||
        (format != QImage::Format_RGB32 && format != QImage::Format_ARGB32_Premultiplied))
        return {};
    const uchar* pixels = data + kHeader;
    if (reinterpret_cast<quintptr>(pixels) % alignof(std::uint32_t) != 0) return {};
    // The image only reads the pixels; they stay where they are for the
    // whole run, as the image needs.
    const QImage image(pixels, int(width), int(height), int(width) * 4, format);
    return QPixmap::fromImage(image, Qt::NoFormatConversion);
}

const QPixmap& Pixmap(const QString& path) {
    static QHash<QString, QPixmap> cache;
    auto it = cache.find(path);
    if (it == cache.end()) {
        if (QPixmap ready = Predecoded(path); !ready.isNull()) return *cache.insert(path, ready);
        // Our pictures are all PNG. Told so, the reader goes straight to
        // Qt's own PNG decoder; left to guess, it would first load every
        // image format plugin on the system (SVG, GIF, ICO, JPEG) to ask
        // each whether it reads the file, a few milliseconds before the
        // first frame.
        QImageReader reader(path, "png");
        reader.setAutoDetectImageFormat(false);
        it = cache.insert(path, QPixmap::fromImage(reader.read()));
    }
    return *it;
}

const QPixmap& Bitmap(int resource) { return Pixmap(QString(":/bitmap/%1.png").arg(resource)); }
const QPixmap& Control(const QString& name) { return Pixmap(":/controls/" + name + ".png"); }
const QPixmap& Button(const QString& name) { return Pixmap(":/buttons/" + name + ".png"); }

QCursor Hand() {
    const QPixmap& p = Control("hand");
    if (p.isNull()) return QCursor(Qt::PointingHandCursor);
    return QCursor(p, 11, 1);
}

QFont FitFont(QFont font, const QRectF& box, int flags, const QString& text, double smallest) {
    const double full = font.pointSizeF();
    for (double scale = 1.0; scale >= smallest - 1e-9; scale -= 0.05) {
        font.setPointSizeF(full * scale);
        const QRectF need = QFontMetricsF(font).boundingRect(box, flags, text);
        if (need.width() <= box.width() + 0.5 && need.height() <= box.height() + 0.5) return font;
    }
    return font;
}

}  // namespace look

double look::FormScale(const QWidget* w) {
    const auto* view = w ? qobject_cast<const QGraphicsView*>(w->window()) : nullptr;
    const double scale = view ? view->transform().m11() : 1.0;
    return scale > 0.0 ? scale : 1.0;
}
