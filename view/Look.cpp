#include "view/Look.h"

#include <QCursor>
#include <QDir>
#include <QFontDatabase>
#include <QHash>

namespace look {

namespace {

struct Families {
    QString japan = "DejaVu Sans", amertype = "DejaVu Serif", verdana = "DejaVu Sans",
            courier = "DejaVu Sans Mono", arial = "DejaVu Sans";
};

Families& Fam() {
    static Families f;
    return f;
}

// Roles by the file names of the embedded fonts (see resources/ART.md).
void Assign(const QString& file, const QStringList& families) {
    if (families.isEmpty()) return;
    const QString f = file.toLower();
    const QString name = families.front();
    if (f.contains("japan") || f.contains("display")) Fam().japan = name;
    else if (f.contains("amertype") || f.contains("typewriter") || f.contains("slab")) Fam().amertype = name;
    else if (f.contains("verdana") || f.contains("sans") && !f.contains("mono")) Fam().verdana = name;
    if (f.contains("mono") || f.contains("courier")) Fam().courier = name;
    if (f.contains("arial") || f.contains("liberationsans")) Fam().arial = name;
}

}  // namespace

void LoadFonts() {
    static bool done = false;
    if (done) return;
    done = true;
    QDir dir(":/fonts");
    for (const QString& file : dir.entryList({"*.ttf", "*.otf", "*.TTF", "*.OTF"}, QDir::Files, QDir::Name)) {
        const int id = QFontDatabase::addApplicationFont(dir.filePath(file));
        if (id >= 0) Assign(file, QFontDatabase::applicationFontFamilies(id));
    }
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

QFont Japan(double points, bool bold, bool underline) { return Make(Fam().japan, points, bold, underline); }
QFont AmerType(double points, bool bold) { return Make(Fam().amertype, points, bold, false); }
QFont Verdana(double points, bool bold, bool underline) { return Make(Fam().verdana, points, bold, underline); }
QFont CourierBold(double points) { return Make(Fam().courier, points, true, false); }
QFont Arial(double points, bool bold) { return Make(Fam().arial, points, bold, false); }

QColor Bgr(std::int32_t bgr) {
    const auto v = static_cast<std::uint32_t>(bgr);
    return QColor(static_cast<int>(v & 0xFF), static_cast<int>((v >> 8) & 0xFF), static_cast<int>((v >> 16) & 0xFF));
}

const QPixmap& Pixmap(const QString& path) {
    static QHash<QString, QPixmap> cache;
    auto it = cache.find(path);
    if (it == cache.end()) it = cache.insert(path, QPixmap(path));
    return *it;
}

const QPixmap& Bitmap(int resource) { return Pixmap(QString(":/bitmap/%1.png").arg(resource)); }
const QPixmap& Control(const QString& name) { return Pixmap(":/controls/" + name + ".png"); }
const QPixmap& Button(const QString& name) { return Pixmap(":/buttons/" + name + ".png"); }

QCursor Hand() {
    const QPixmap& p = Control("hand");
    if (p.isNull()) return QCursor(Qt::PointingHandCursor);
    return QCursor(p, 6, 1);
}

}  // namespace look
