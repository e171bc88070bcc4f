#include "IconPainter.h"

#include "Glyph.h"

#include <QCache>
#include <QDir>
#include <QFile>
#include <QPainter>

namespace tarnwell::icons {

namespace {

const QString applicationIcon = QStringLiteral("org.tarnwell.Tarnwell");

QString pathOf(const QString &name)
{
    return QStringLiteral(":/icons/%1.svg").arg(name);
}

// The glyph's coverage, in black.
QImage draw(const QString &name, QSize pixels)
{
    if (pixels.isEmpty() || name == applicationIcon)
        return {};
    QFile file(pathOf(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const Glyph glyph = Glyph::read(file.readAll());
    if (!glyph.isValid()) {
        qWarning("The icon %s is not a one-colour glyph", qPrintable(name));
        return {};
    }
    QImage image = blankImage(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    glyph.paint(painter, centredSquare(pixels));
    return image;
}

} // namespace

QImage blankImage(QSize pixels)
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QRectF centredSquare(QSize pixels)
{
    // Square icons keep their proportions in a wider or taller box.
    const int side = std::min(pixels.width(), pixels.height());
    return QRectF((pixels.width() - side) / 2.0, (pixels.height() - side) / 2.0, side, side);
}

QStringList names()
{
    QStringList out;
    const auto files = QDir(QStringLiteral(":/icons")).entryList({QStringLiteral("*.svg")}, QDir::Files);
    for (const QString &file : files)
        if (file.chopped(4) != applicationIcon)
            out << file.chopped(4);
    return out;
}

bool exists(const QString &name)
{
    return !name.isEmpty() && name != applicationIcon && QFile::exists(pathOf(name));
}

QImage render(const QString &name, QSize pixels, const QColor &tint)
{
    // The same few icons are drawn over and over (a handle and a menu button
    // on every row): the last drawn ones are kept, up to about 1 MB.
    static QCache<QString, QImage> drawn(1 << 20);
    const QString key = QStringLiteral("%1/%2x%3/%4")
                            .arg(name)
                            .arg(pixels.width())
                            .arg(pixels.height())
                            .arg(tint.rgba(), 8, 16, QLatin1Char('0'));
    if (const QImage *kept = drawn.object(key))
        return *kept;
    QImage image = draw(name, pixels);
    if (image.isNull())
        return image;
    {
        // The drawing's coverage stays; its colour becomes the tint.
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), tint);
    }
    drawn.insert(key, new QImage(image), int(image.sizeInBytes()));
    return image;
}

} // namespace tarnwell::icons
