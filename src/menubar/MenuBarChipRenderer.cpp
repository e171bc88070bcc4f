#include "MenuBarChipRenderer.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace tarnwell {

MenuBarChipPalette MenuBarChipPalette::light()
{
    return {QColor(0, 0, 0, 60),      QColor(0x55, 0x55, 0x5a), QColor(0x2f, 0x6f, 0xb0),
            QColor(0x2f, 0x80, 0x6c), QColor(0xc2, 0x41, 0x2d), QColor(0x3a, 0x8f, 0x4a)};
}

MenuBarChipPalette MenuBarChipPalette::dark()
{
    return {QColor(255, 255, 255, 70), QColor(0xd8, 0xd8, 0xdc), QColor(0x7d, 0xb4, 0xf0),
            QColor(0x6f, 0xc9, 0xaf),  QColor(0xf4, 0x84, 0x72), QColor(0x86, 0xd0, 0x8f)};
}

QColor MenuBarChipPalette::colour(MenuBarPresentation::State state) const
{
    switch (state) {
    case MenuBarPresentation::State::idle:
        return idle;
    case MenuBarPresentation::State::dayDone:
        return dayDone;
    case MenuBarPresentation::State::noDuration:
        return noDuration;
    case MenuBarPresentation::State::tracking:
        return tracking;
    case MenuBarPresentation::State::overdue:
        return overdue;
    }
    return idle;
}

MenuBarChipRenderer::Key MenuBarChipRenderer::keyFor(const MenuBarPresentation &presentation, bool dark)
{
    Key key;
    key.state = presentation.state;
    key.running = presentation.isTimerRunning;
    key.dark = dark;
    if (presentation.progress)
        key.progressStep = int(std::floor(*presentation.progress * MenuBarChipMetrics::progressSteps));
    return key;
}

QImage MenuBarChipRenderer::render(const Key &key, int size)
{
    const MenuBarChipPalette palette = key.dark ? MenuBarChipPalette::dark() : MenuBarChipPalette::light();
    const double scale = double(size) / MenuBarChipMetrics::logicalSize;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);

    const double ring = MenuBarChipMetrics::ringWidth;
    const QRectF circle(ring / 2 + 1.5, ring / 2 + 1.5, MenuBarChipMetrics::logicalSize - ring - 3,
                        MenuBarChipMetrics::logicalSize - ring - 3);
    const QColor colour = palette.colour(key.state);

    painter.setPen(QPen(key.progressStep >= 0 ? palette.track : colour, ring, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(circle);

    if (key.progressStep >= 0) {
        // The used share, clockwise from twelve o'clock; a full ring when overdue.
        const double share = key.state == MenuBarPresentation::State::overdue
            ? 1.0
            : double(key.progressStep) / MenuBarChipMetrics::progressSteps;
        if (share > 0) {
            // Round ends, as every stroke of the product's icons has.
            painter.setPen(QPen(colour, ring, Qt::SolidLine, share < 1 ? Qt::RoundCap : Qt::FlatCap));
            painter.drawArc(circle, 90 * 16, -int(std::lround(share * 360 * 16)));
        }
    }

    const QPointF centre(MenuBarChipMetrics::logicalSize / 2.0, MenuBarChipMetrics::logicalSize / 2.0);
    const double r = MenuBarChipMetrics::centreRadius;
    if (key.running) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(centre, r, r);
    } else if (key.state == MenuBarPresentation::State::dayDone) {
        QPainterPath tick;
        tick.moveTo(centre + QPointF(-r, 0));
        tick.lineTo(centre + QPointF(-r / 3, r * 0.8));
        tick.lineTo(centre + QPointF(r, -r * 0.8));
        painter.setPen(QPen(colour, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(tick);
    } else if (key.state != MenuBarPresentation::State::idle) {
        // Stopped: two short bars, the universal "paused".
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawRoundedRect(QRectF(centre.x() - 2.6, centre.y() - 3, 1.8, 6), 0.6, 0.6);
        painter.drawRoundedRect(QRectF(centre.x() + 0.8, centre.y() - 3, 1.8, 6), 0.6, 0.6);
    }
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

QList<QImage> MenuBarChipRenderer::renderAllSizes(const Key &key)
{
    QList<QImage> images;
    for (int size : MenuBarChipMetrics::sizes)
        images << render(key, size);
    return images;
}

} // namespace tarnwell
