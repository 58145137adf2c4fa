#pragma once
// The fonts and pictures of the game's look, loaded once from the program's
// resources. Faces stand in for the ones the game was drawn with.

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRectF>
#include <QString>

#include <cstdint>


class QWidget;

namespace look {

// Loads the embedded fonts of the faces the main window draws with; safe to
// call more than once. Every other face's font file is loaded the first
// time the face is asked for.
void LoadFonts();

// The game's faces at a size in points, as it names them.
QFont Japan(double points, bool bold = true, bool underline = false);
QFont AmerType(double points, bool bold = true);
QFont Verdana(double points, bool bold = false, bool underline = false);
QFont CourierBold(double points);
QFont Arial(double points, bool bold = false);

// A colour as the program writes it, &HBBGGRR.
QColor Bgr(std::int32_t bgr);

// A picture of the resources by its name (":/bitmap/101.png"); an empty
// pixmap when it is missing. Cached.
const QPixmap& Pixmap(const QString& path);
const QPixmap& Bitmap(int resource);          // BITMAP 101, 175, 201...
const QPixmap& Control(const QString& name);  // ":/controls/<name>.png"
const QPixmap& Button(const QString& name);  // ":/buttons/<name>.png"

// The font, made smaller step by step down to `smallest` times its size,
// at which `text` drawn with `flags` fits inside `box`; the smallest when
// none does.
QFont FitFont(QFont font, const QRectF& box, int flags, const QString& text, double smallest = 0.6);

// How much bigger than its 640 by 480 the form is drawn in the window that
// holds `w` (a maximised window scales it up); 1 elsewhere. Boxes and menus
// opened over the form take the same scale.
double FormScale(const QWidget* w);

// The hand pointer (custom pointer 99).
QCursor Hand();

}  // namespace look
