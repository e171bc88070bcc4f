#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwell {

// One of the product's own icons (src/icons): drawn from its SVG at the
// window's device pixel size, so it stays sharp at every scale, in the one
// colour `color` from the palette.
class IconItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Icon)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
public:
    explicit IconItem(QQuickItem *parent = nullptr);

    QString name() const { return m_name; }
    void setName(const QString &name);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    QString m_name;
    QColor m_color;
};

} // namespace tarnwell
