#pragma once

#include <QPainterPath>
#include <QRectF>

#include <optional>
#include <vector>

class QByteArray;
class QPainter;

namespace tarnwell::icons {

// One of the product's one-colour icons, read from its SVG source and drawn
// with QPainter alone, so that the windows that show only these icons need no
// SVG library. Reads the subset the icons are drawn in: `svg` with a viewBox,
// `g`, `path` (every command but the quadratic shorthand T), `circle` and
// `rect` (with rx/ry); fill and stroke either "none" or painted; stroke width,
// caps and joins, inherited as in SVG. Anything else makes the glyph invalid
// rather than drawn wrongly.
class Glyph
{
public:
    static Glyph read(const QByteArray &svg);

    bool isValid() const { return m_valid; }
    // Paints the glyph in opaque black, its viewBox stretched over `target`.
    void paint(QPainter &painter, const QRectF &target) const;

private:
    struct Shape
    {
        QPainterPath path;
        bool filled = false;
        bool stroked = false;
        qreal strokeWidth = 1;
        Qt::PenCapStyle cap = Qt::FlatCap;
        Qt::PenJoinStyle join = Qt::MiterJoin;
    };

    QRectF m_viewBox;
    std::vector<Shape> m_shapes;
    bool m_valid = false;
};

// The path of an SVG `d` attribute; nullopt when it does not parse.
std::optional<QPainterPath> pathFromSvgData(QStringView data);

} // namespace tarnwell::icons
