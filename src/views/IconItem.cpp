#include "IconItem.h"

#include "icons/IconPainter.h"

#include <QPainter>
#include <QQuickWindow>

#include <cmath>

namespace tarnwell {

IconItem::IconItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    setImplicitSize(20, 20);
}

void IconItem::setName(const QString &name)
{
    if (name == m_name)
        return;
    m_name = name;
    update();
    Q_EMIT nameChanged();
}

void IconItem::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void IconItem::itemChange(ItemChange change, const ItemChangeData &value)
{
    // A move to a screen of another scale draws the icon again for it.
    if (change == ItemDevicePixelRatioHasChanged)
        update();
    QQuickPaintedItem::itemChange(change, value);
}

void IconItem::paint(QPainter *painter)
{
    const qreal ratio = window() ? window()->effectiveDevicePixelRatio() : 1.0;
    const QSize pixels(int(std::lround(width() * ratio)), int(std::lround(height() * ratio)));
    QImage image = icons::render(m_name, pixels, m_color);
    if (image.isNull())
        return;
    image.setDevicePixelRatio(ratio);
    painter->drawImage(QRectF(0, 0, width(), height()), image);
}

} // namespace tarnwell
