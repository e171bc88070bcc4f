#pragma once

#include <QColor>
#include <QPainterPath>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwell {

// One of the product's own icons, drawn from paths on a 24-unit grid and
// filled or stroked in one colour, so it is sharp at every scale and takes
// its tint from the palette. The status-item icon is drawn the same way.
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

    // The names drawn; an unknown name draws nothing.
    static QStringList names();
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QColor m_color;
};

} // namespace tarnwell
