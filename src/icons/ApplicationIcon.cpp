#include "ApplicationIcon.h"

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
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const int side = std::min(pixels.width(), pixels.height());
    renderer.render(&painter, QRectF((pixels.width() - side) / 2.0, (pixels.height() - side) / 2.0, side, side));
    return image;
}

} // namespace tarnwell::icons
