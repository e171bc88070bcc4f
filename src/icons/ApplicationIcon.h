#pragma once

#include <QImage>

namespace tarnwell::icons {

// The application icon in its own colours (a gradient tile), drawn from
// resources/icons/org.tarnwell.Tarnwell.svg. It needs the SVG library, which
// the glyphs do not: only the programs that show it link this.
QImage renderApplicationIcon(QSize pixels);

} // namespace tarnwell::icons
