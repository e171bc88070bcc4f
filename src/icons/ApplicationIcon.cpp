#include "ApplicationIcon.h"

#include "IconPainter.h"

#include <QPainter>
#include <QSvgRenderer>

namespace tarnwell::icons {

QImage renderApplicationIcon(QSize pixels)
{
    if (pixels.isEmpty())
        return {};
    QSvgRenderer renderer(QStringLiteral(":/icons/org.tarnwell.Tarnwell.svg"));
    if (!renderer.isValid())
        return {};
    QImage image = blankImage(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, centredSquare(pixels));
    return image;
}

} // namespace tarnwell::icons
