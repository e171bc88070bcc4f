#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QStringList>

namespace tarnwell::icons {

// The names of the drawn icons: the files of resources/icons without ".svg",
// but for the application icon, which is not a one-colour glyph (see
// ApplicationIcon.h).
QStringList names();
bool exists(const QString &name);

// The icon drawn into an image of `pixels` (device pixels, so that it is drawn
// for the screen's scale rather than stretched), every painted pixel in
// `tint` with the icon's own coverage as alpha. A null image for an unknown
// name or an empty size.
QImage render(const QString &name, QSize pixels, const QColor &tint);

// A transparent image of `pixels` to draw an icon into, and the square in it
// that the icon fills.
QImage blankImage(QSize pixels);
QRectF centredSquare(QSize pixels);

} // namespace tarnwell::icons
