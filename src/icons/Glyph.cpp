#include "Glyph.h"

#include <QByteArray>
#include <QPainter>
#include <QtMath>
#include <QXmlStreamReader>

#include <cmath>

namespace tarnwell::icons {

namespace {

// Reads the numbers and flags of an SVG path, where separators are optional
// ("1-.6", "0 0 1-.6-6.95", ".5.5").
class PathScanner
{
public:
    explicit PathScanner(QStringView data)
        : m_data(data)
    {
    }

    void skipSeparators()
    {
        while (m_at < m_data.size() && (m_data[m_at].isSpace() || m_data[m_at] == u','))
            ++m_at;
    }
    bool atEnd()
    {
        skipSeparators();
        return m_at >= m_data.size();
    }
    // The next command letter, or a null character when a number follows (an
    // implicit repeat of the last command).
    QChar command()
    {
        skipSeparators();
        const QChar c = m_data[m_at];
        if (c.isLetter() && c != u'e' && c != u'E') {
            ++m_at;
            return c;
        }
        return QChar();
    }
    bool number(qreal &out)
    {
        skipSeparators();
        const qsizetype start = m_at;
        if (m_at < m_data.size() && (m_data[m_at] == u'-' || m_data[m_at] == u'+'))
            ++m_at;
        bool digits = false;
        while (m_at < m_data.size() && m_data[m_at].isDigit()) {
            ++m_at;
            digits = true;
        }
        if (m_at < m_data.size() && m_data[m_at] == u'.') {
            ++m_at;
            while (m_at < m_data.size() && m_data[m_at].isDigit()) {
                ++m_at;
                digits = true;
            }
        }
        if (!digits) {
            m_at = start;
            return false;
        }
        if (m_at < m_data.size() && (m_data[m_at] == u'e' || m_data[m_at] == u'E')) {
            qsizetype exponent = m_at + 1;
            if (exponent < m_data.size() && (m_data[exponent] == u'-' || m_data[exponent] == u'+'))
                ++exponent;
            if (exponent < m_data.size() && m_data[exponent].isDigit()) {
                m_at = exponent;
                while (m_at < m_data.size() && m_data[m_at].isDigit())
                    ++m_at;
            }
        }
        bool ok = false;
        out = m_data.mid(start, m_at - start).toDouble(&ok);
        return ok && std::isfinite(out);
    }
    // An arc flag is a single 0 or 1, even when the next number follows it
    // without a separator.
    bool flag(bool &out)
    {
        skipSeparators();
        if (m_at >= m_data.size() || (m_data[m_at] != u'0' && m_data[m_at] != u'1'))
            return false;
        out = m_data[m_at++] == u'1';
        return true;
    }
    bool numberFollows()
    {
        skipSeparators();
        if (m_at >= m_data.size())
            return false;
        const QChar c = m_data[m_at];
        return c.isDigit() || c == u'-' || c == u'+' || c == u'.';
    }

private:
    QStringView m_data;
    qsizetype m_at = 0;
};

qreal angleBetween(qreal ux, qreal uy, qreal vx, qreal vy)
{
    return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy);
}

// An elliptical arc from the path's current point, as cubic curves of at most
// a quarter turn each (the endpoint form of the SVG arc, converted to its
// centre form).
void arcTo(QPainterPath &path, qreal rx, qreal ry, qreal rotationDegrees, bool large, bool sweep, QPointF to)
{
    const QPointF from = path.currentPosition();
    if (from == to)
        return;
    rx = std::abs(rx);
    ry = std::abs(ry);
    if (rx == 0 || ry == 0) {
        path.lineTo(to);
        return;
    }
    const qreal phi = qDegreesToRadians(rotationDegrees);
    const qreal cosPhi = std::cos(phi);
    const qreal sinPhi = std::sin(phi);
    const qreal dx = (from.x() - to.x()) / 2;
    const qreal dy = (from.y() - to.y()) / 2;
    const qreal x1 = cosPhi * dx + sinPhi * dy;
    const qreal y1 = -sinPhi * dx + cosPhi * dy;
    // Radii too small to reach the end point grow until they do.
    const qreal lambda = (x1 * x1) / (rx * rx) + (y1 * y1) / (ry * ry);
    if (lambda > 1) {
        rx *= std::sqrt(lambda);
        ry *= std::sqrt(lambda);
    }
    const qreal numerator = rx * rx * ry * ry - rx * rx * y1 * y1 - ry * ry * x1 * x1;
    const qreal denominator = rx * rx * y1 * y1 + ry * ry * x1 * x1;
    qreal coefficient = std::sqrt(std::max<qreal>(0, numerator / denominator));
    if (large == sweep)
        coefficient = -coefficient;
    const qreal cx1 = coefficient * rx * y1 / ry;
    const qreal cy1 = -coefficient * ry * x1 / rx;
    const qreal cx = cosPhi * cx1 - sinPhi * cy1 + (from.x() + to.x()) / 2;
    const qreal cy = sinPhi * cx1 + cosPhi * cy1 + (from.y() + to.y()) / 2;
    const qreal start = angleBetween(1, 0, (x1 - cx1) / rx, (y1 - cy1) / ry);
    qreal extent = angleBetween((x1 - cx1) / rx, (y1 - cy1) / ry, (-x1 - cx1) / rx, (-y1 - cy1) / ry);
    if (!sweep && extent > 0)
        extent -= 2 * M_PI;
    else if (sweep && extent < 0)
        extent += 2 * M_PI;

    const auto point = [&](qreal theta) {
        return QPointF(cx + rx * cosPhi * std::cos(theta) - ry * sinPhi * std::sin(theta),
                       cy + rx * sinPhi * std::cos(theta) + ry * cosPhi * std::sin(theta));
    };
    const auto tangent = [&](qreal theta) {
        return QPointF(-rx * cosPhi * std::sin(theta) - ry * sinPhi * std::cos(theta),
                       -rx * sinPhi * std::sin(theta) + ry * cosPhi * std::cos(theta));
    };
    const int pieces = std::max(1, int(std::ceil(std::abs(extent) / (M_PI / 2) - 1e-9)));
    const qreal step = extent / pieces;
    const qreal handle = 4.0 / 3.0 * std::tan(step / 4);
    for (int i = 0; i < pieces; ++i) {
        const qreal a = start + i * step;
        const qreal b = a + step;
        const QPointF end = i + 1 == pieces ? to : point(b);
        path.cubicTo(point(a) + handle * tangent(a), point(b) - handle * tangent(b), end);
    }
}

struct Style
{
    bool filled = true; // SVG's defaults: filled in black, not stroked
    bool stroked = false;
    qreal strokeWidth = 1;
    Qt::PenCapStyle cap = Qt::FlatCap;
    Qt::PenJoinStyle join = Qt::MiterJoin;
};

// Applies the presentation attributes of one element over what it inherits.
bool applyStyle(const QXmlStreamAttributes &attributes, Style &style)
{
    for (const QXmlStreamAttribute &attribute : attributes) {
        const QStringView name = attribute.name();
        const QStringView value = attribute.value();
        if (name == u"fill") {
            if (value.startsWith(u"url("))
                return false;
            style.filled = value != u"none";
        } else if (name == u"stroke") {
            if (value.startsWith(u"url("))
                return false;
            style.stroked = value != u"none";
        } else if (name == u"stroke-width") {
            bool ok = false;
            style.strokeWidth = value.toDouble(&ok);
            if (!ok || style.strokeWidth < 0)
                return false;
        } else if (name == u"stroke-linecap") {
            style.cap = value == u"round" ? Qt::RoundCap : value == u"square" ? Qt::SquareCap : Qt::FlatCap;
        } else if (name == u"stroke-linejoin") {
            style.join = value == u"round" ? Qt::RoundJoin : value == u"bevel" ? Qt::BevelJoin : Qt::MiterJoin;
        } else if (name == u"opacity" || name == u"fill-opacity" || name == u"stroke-opacity" || name == u"transform" ||
                   name == u"style" || name == u"class" || name == u"fill-rule") {
            // A one-colour glyph has none of these; drawing it without them
            // would be wrong.
            return false;
        }
    }
    return true;
}

qreal number(const QXmlStreamAttributes &attributes, QLatin1StringView name, bool &ok, qreal fallback = 0)
{
    if (!attributes.hasAttribute(name))
        return fallback;
    bool parsed = false;
    const qreal value = attributes.value(name).toDouble(&parsed);
    ok = ok && parsed && std::isfinite(value);
    return value;
}

} // namespace

std::optional<QPainterPath> pathFromSvgData(QStringView data)
{
    PathScanner scan(data);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    QChar command;
    QPointF start; // of the open subpath
    QPointF lastControl; // the last curve's second control point
    QChar lastCommand;
    while (!scan.atEnd()) {
        const QChar next = scan.command();
        if (!next.isNull())
            command = next;
        else if (command.isNull() || command == u'z' || command == u'Z')
            return std::nullopt;
        const bool relative = command.isLower();
        const QPointF at = path.currentPosition();
        const QPointF origin = relative ? at : QPointF();
        qreal n[7];
        const auto numbers = [&](int count) {
            for (int i = 0; i < count; ++i)
                if (!scan.number(n[i]))
                    return false;
            return true;
        };
        switch (command.toUpper().unicode()) {
        case u'M':
            if (!numbers(2))
                return std::nullopt;
            start = origin + QPointF(n[0], n[1]);
            path.moveTo(start);
            // Pairs after the first are lines.
            command = relative ? u'l' : u'L';
            break;
        case u'L':
            if (!numbers(2))
                return std::nullopt;
            path.lineTo(origin + QPointF(n[0], n[1]));
            break;
        case u'H':
            if (!numbers(1))
                return std::nullopt;
            path.lineTo((relative ? at.x() : 0) + n[0], at.y());
            break;
        case u'V':
            if (!numbers(1))
                return std::nullopt;
            path.lineTo(at.x(), (relative ? at.y() : 0) + n[0]);
            break;
        case u'C':
            if (!numbers(6))
                return std::nullopt;
            lastControl = origin + QPointF(n[2], n[3]);
            path.cubicTo(origin + QPointF(n[0], n[1]), lastControl, origin + QPointF(n[4], n[5]));
            break;
        case u'S': {
            if (!numbers(4))
                return std::nullopt;
            const bool follows = QStringLiteral("CcSs").contains(lastCommand);
            const QPointF first = follows ? 2 * at - lastControl : at;
            lastControl = origin + QPointF(n[0], n[1]);
            path.cubicTo(first, lastControl, origin + QPointF(n[2], n[3]));
            break;
        }
        case u'Q':
            if (!numbers(4))
                return std::nullopt;
            path.quadTo(origin + QPointF(n[0], n[1]), origin + QPointF(n[2], n[3]));
            break;
        case u'A': {
            bool large = false;
            bool sweep = false;
            if (!numbers(3) || !scan.flag(large) || !scan.flag(sweep) || !scan.number(n[3]) || !scan.number(n[4]))
                return std::nullopt;
            arcTo(path, n[0], n[1], n[2], large, sweep, origin + QPointF(n[3], n[4]));
            break;
        }
        case u'Z':
            path.closeSubpath();
            path.moveTo(start);
            if (scan.numberFollows())
                return std::nullopt;
            break;
        default:
            return std::nullopt;
        }
        lastCommand = command;
    }
    return path;
}

Glyph Glyph::read(const QByteArray &svg)
{
    Glyph glyph;
    QXmlStreamReader xml(svg);
    std::vector<Style> styles;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) {
            styles.pop_back();
            continue;
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QStringView element = xml.name();
        const QXmlStreamAttributes attributes = xml.attributes();
        Style style = styles.empty() ? Style() : styles.back();
        if (!applyStyle(attributes, style))
            return {};
        styles.push_back(style);

        if (styles.size() == 1) {
            if (element != u"svg")
                return {};
            const auto box = attributes.value(QLatin1StringView("viewBox")).split(u' ', Qt::SkipEmptyParts);
            bool ok = box.size() == 4;
            qreal edges[4] = {};
            for (qsizetype i = 0; ok && i < 4; ++i)
                edges[i] = box[i].toDouble(&ok);
            if (!ok || edges[2] <= 0 || edges[3] <= 0)
                return {};
            glyph.m_viewBox = QRectF(edges[0], edges[1], edges[2], edges[3]);
            continue;
        }
        if (element == u"g")
            continue;

        bool ok = true;
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        if (element == u"path") {
            auto parsed = pathFromSvgData(attributes.value(QLatin1StringView("d")));
            if (!parsed)
                return {};
            path = *parsed;
        } else if (element == u"circle") {
            const qreal r = number(attributes, QLatin1StringView("r"), ok);
            path.addEllipse(QPointF(number(attributes, QLatin1StringView("cx"), ok),
                                    number(attributes, QLatin1StringView("cy"), ok)),
                            r, r);
        } else if (element == u"rect") {
            const qreal rx = number(attributes, QLatin1StringView("rx"), ok, -1);
            const qreal ry = number(attributes, QLatin1StringView("ry"), ok, rx);
            const QRectF rect(number(attributes, QLatin1StringView("x"), ok),
                              number(attributes, QLatin1StringView("y"), ok),
                              number(attributes, QLatin1StringView("width"), ok),
                              number(attributes, QLatin1StringView("height"), ok));
            path.addRoundedRect(rect, std::max<qreal>(0, rx < 0 ? ry : rx), std::max<qreal>(0, ry));
        } else {
            return {};
        }
        if (!ok)
            return {};
        glyph.m_shapes.push_back({path, style.filled, style.stroked, style.strokeWidth, style.cap, style.join});
    }
    if (xml.hasError() || glyph.m_viewBox.isEmpty())
        return {};
    glyph.m_valid = true;
    return glyph;
}

void Glyph::paint(QPainter &painter, const QRectF &target) const
{
    if (!m_valid)
        return;
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / m_viewBox.width(), target.height() / m_viewBox.height());
    painter.translate(-m_viewBox.topLeft());
    for (const Shape &shape : m_shapes) {
        if (shape.filled)
            painter.fillPath(shape.path, Qt::black);
        if (shape.stroked && shape.strokeWidth > 0) {
            QPen pen(Qt::black, shape.strokeWidth, Qt::SolidLine, shape.cap, shape.join);
            pen.setMiterLimit(4); // SVG's default
            painter.strokePath(shape.path, pen);
        }
    }
    painter.restore();
}

} // namespace tarnwell::icons
