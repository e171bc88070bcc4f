#include "ThemeController.h"

namespace tarnwell {

ThemeController::ThemeController(QObject *parent)
    : QObject(parent)
{
}

bool ThemeController::dark() const
{
    return m_forced == Forced::dark || (m_forced == Forced::none && m_desktopDark);
}

void ThemeController::update(Forced forced, bool desktopDark)
{
    const bool before = dark();
    m_forced = forced;
    m_desktopDark = desktopDark;
    if (dark() != before)
        Q_EMIT changed();
}

void ThemeController::setForced(Forced forced)
{
    update(forced, m_desktopDark);
}

void ThemeController::setDesktopPrefersDark(bool isDark)
{
    update(m_forced, isDark);
}

// Our own two palettes; chosen to read well on both GNOME and KDE panels.
QColor ThemeController::window() const
{
    return dark() ? QColor(0x1f, 0x21, 0x24) : QColor(0xf7, 0xf6, 0xf3);
}
QColor ThemeController::surface() const
{
    return dark() ? QColor(0x2a, 0x2d, 0x31) : QColor(0xff, 0xff, 0xff);
}
QColor ThemeController::text() const
{
    return dark() ? QColor(0xec, 0xec, 0xea) : QColor(0x1d, 0x1d, 0x1f);
}
QColor ThemeController::secondaryText() const
{
    return dark() ? QColor(0xa4, 0xa6, 0xa9) : QColor(0x6b, 0x6b, 0x70);
}
QColor ThemeController::accent() const
{
    return dark() ? QColor(0x5e, 0xb2, 0x9d) : QColor(0x2f, 0x80, 0x6c);
}
QColor ThemeController::danger() const
{
    return dark() ? QColor(0xf0, 0x7a, 0x6a) : QColor(0xc2, 0x41, 0x2d);
}
QColor ThemeController::separator() const
{
    return dark() ? QColor(0x3a, 0x3d, 0x42) : QColor(0xe3, 0xe1, 0xdc);
}
QColor ThemeController::onAccent() const
{
    return dark() ? QColor(0x1f, 0x21, 0x24) : QColor(0xff, 0xff, 0xff);
}
QColor ThemeController::hover() const
{
    return dark() ? QColor(0x34, 0x37, 0x3c) : QColor(0xec, 0xea, 0xe6);
}
QColor ThemeController::pressed() const
{
    return dark() ? QColor(0x3e, 0x42, 0x48) : QColor(0xdf, 0xdd, 0xd8);
}
QColor ThemeController::focusRing() const
{
    return accent();
}

} // namespace tarnwell
