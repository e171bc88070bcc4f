#include "IconItem.h"

#include <QPainter>

#include <functional>

namespace tarnwell {

namespace {

struct Drawing
{
    QPainterPath path;
    bool stroked = true; // stroked lines, or a filled shape
};

QPainterPath chevron(bool left)
{
    QPainterPath p;
    p.moveTo(left ? 15 : 9, 5);
    p.lineTo(left ? 8 : 16, 12);
    p.lineTo(left ? 15 : 9, 19);
    return p;
}

QPainterPath dots(const QList<QPointF> &centres, qreal radius)
{
    QPainterPath p;
    for (const QPointF &c : centres)
        p.addEllipse(c, radius, radius);
    return p;
}

const QHash<QString, std::function<Drawing()>> &drawings()
{
    static const QHash<QString, std::function<Drawing()>> table{
        {QStringLiteral("previous"), [] { return Drawing{chevron(true)}; }},
        {QStringLiteral("next"), [] { return Drawing{chevron(false)}; }},
        {QStringLiteral("menu"),
         [] {
             QPainterPath p;
             for (qreal y : {6.0, 12.0, 18.0}) {
                 p.moveTo(4, y);
                 p.lineTo(20, y);
             }
             return Drawing{p};
         }},
        {QStringLiteral("more"),
         [] {
             return Drawing{dots({{5, 12}, {12, 12}, {19, 12}}, 1.9), false};
         }},
        {QStringLiteral("handle"),
         [] {
             return Drawing{dots({{9, 6}, {15, 6}, {9, 12}, {15, 12}, {9, 18}, {15, 18}}, 1.6), false};
         }},
        {QStringLiteral("today"),
         [] {
             QPainterPath p;
             p.addRoundedRect(QRectF(4, 5.5, 16, 14.5), 2.5, 2.5);
             p.moveTo(4, 10);
             p.lineTo(20, 10);
             p.moveTo(8.5, 3.5);
             p.lineTo(8.5, 7);
             p.moveTo(15.5, 3.5);
             p.lineTo(15.5, 7);
             p.addEllipse(QPointF(12, 15), 1.4, 1.4);
             return Drawing{p};
         }},
        {QStringLiteral("urgent"),
         [] {
             // A flag on its pole.
             QPainterPath p;
             p.moveTo(6, 21);
             p.lineTo(6, 4);
             p.lineTo(18, 4);
             p.lineTo(15, 8.5);
             p.lineTo(18, 13);
             p.lineTo(6, 13);
             return Drawing{p};
         }},
    };
    return table;
}

} // namespace

IconItem::IconItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    setImplicitSize(16, 16);
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

QStringList IconItem::names()
{
    return drawings().keys();
}

void IconItem::paint(QPainter *painter)
{
    const auto found = drawings().constFind(m_name);
    if (found == drawings().constEnd())
        return;
    const Drawing drawing = (*found)();
    const qreal side = std::min(width(), height());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate((width() - side) / 2, (height() - side) / 2);
    painter->scale(side / 24.0, side / 24.0);
    if (drawing.stroked) {
        QPen pen(m_color, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter->setPen(pen);
        painter->setBrush(Qt::NoBrush);
    } else {
        painter->setPen(Qt::NoPen);
        painter->setBrush(m_color);
    }
    painter->drawPath(drawing.path);
}

} // namespace tarnwell
