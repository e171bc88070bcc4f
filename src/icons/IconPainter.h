#pragma once

#include <QColor>
#include <QImage>
#include <QStringList>

namespace tarnwell::icons {

// The names of the drawn icons (the files of resources/icons without ".svg";
// the application icon is among them and keeps its own colours).
QStringList names();
bool exists(const QString &name);

// The icon drawn into an image of `pixels` (device pixels, so that it is drawn
// for the screen's scale rather than stretched), every painted pixel in
// `tint` with the icon's own coverage as alpha. A null image for an unknown
// name or an empty size.
QImage render(const QString &name, QSize pixels, const QColor &tint);

// The application icon in its own colours.
QImage renderApplicationIcon(QSize pixels);

} // namespace tarnwell::icons
