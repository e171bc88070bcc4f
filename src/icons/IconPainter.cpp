#include "IconPainter.h"

#include <QDir>
#include <QPainter>
#include <QSvgRenderer>

namespace tarnwell::icons {

namespace {

const QString applicationIcon = QStringLiteral("org.tarnwell.Tarnwell");

QString pathOf(const QString &name)
{
    return QStringLiteral(":/icons/%1.svg").arg(name);
}

QImage draw(const QString &name, QSize pixels)
{
    if (pixels.isEmpty() || !exists(name))
        return {};
    QSvgRenderer renderer(pathOf(name));
    if (!renderer.isValid())
        return {};
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    // Square icons keep their proportions in a wider or taller box.
    const int side = std::min(pixels.width(), pixels.height());
    renderer.render(&painter, QRectF((pixels.width() - side) / 2.0, (pixels.height() - side) / 2.0, side, side));
    return image;
}

} // namespace

QStringList names()
{
    QStringList out;
    const auto files = QDir(QStringLiteral(":/icons")).entryList({QStringLiteral("*.svg")}, QDir::Files);
    for (const QString &file : files)
        out << file.chopped(4);
    return out;
}

bool exists(const QString &name)
{
    return !name.isEmpty() && QFile::exists(pathOf(name));
}

QImage render(const QString &name, QSize pixels, const QColor &tint)
{
    QImage image = draw(name, pixels);
    if (image.isNull() || name == applicationIcon)
        return image;
    // The drawing's coverage stays; its colour becomes the tint.
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), tint);
    return image;
}

QImage renderApplicationIcon(QSize pixels)
{
    return draw(applicationIcon, pixels);
}

} // namespace tarnwell::icons
