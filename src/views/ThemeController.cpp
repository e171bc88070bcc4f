#include "ThemeController.h"

#include "kit/Logging.h"

#include <QQmlEngine>

#include <cmath>

namespace tarnwell {

namespace {

// A little above 4.5, so that antialiased glyph cores still reach it.
constexpr double textTarget = 4.6;

QColor mix(const QColor &a, const QColor &b, double t)
{
    return QColor::fromRgbF(float(a.redF() + (b.redF() - a.redF()) * t),
                            float(a.greenF() + (b.greenF() - a.greenF()) * t),
                            float(a.blueF() + (b.blueF() - a.blueF()) * t));
}

// The seed moved towards `towards` (black or white) just far enough to stand
// at `target` against every colour of `against`.
QColor reach(const QColor &seed, const QColor &towards, std::initializer_list<QColor> against, double target)
{
    for (int step = 0; step <= 50; ++step) {
        const QColor c = mix(seed, towards, step / 50.0);
        double worst = 21;
        for (const QColor &b : against)
            worst = std::min(worst, ThemeController::contrast(c, b));
        if (worst >= target)
            return c;
    }
    return towards;
}

} // namespace

ThemeController::ThemeController(QObject *parent)
    : QObject(parent)
{
    refresh();
}

namespace {
// The engine's dynamic property that holds its controller.
constexpr char engineThemeProperty[] = "tarnwellTheme";
} // namespace

void ThemeController::provideTo(QQmlEngine &engine)
{
    engine.setProperty(engineThemeProperty, QVariant::fromValue<QObject *>(this));
}

ThemeController *ThemeSingleton::create(QQmlEngine *engine, QJSEngine *scriptEngine)
{
    Q_UNUSED(scriptEngine)
    auto *theme = qobject_cast<ThemeController *>(engine->property(engineThemeProperty).value<QObject *>());
    if (!theme) {
        // A window loaded without a controller still draws, in the default
        // palette; the engine owns this one.
        qCWarning(lcServices).noquote() << QStringLiteral("The QML engine has no theme; using the default palette");
        return new ThemeController;
    }
    // Ours, not the engine's: it outlives the engine.
    QJSEngine::setObjectOwnership(theme, QJSEngine::CppOwnership);
    return theme;
}

double ThemeController::luminance(const QColor &c)
{
    const auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

double ThemeController::contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

bool ThemeController::dark() const
{
    return m_forced == Forced::dark || (m_forced == Forced::none && m_desktopDark);
}

void ThemeController::setForced(Forced forced)
{
    if (forced == m_forced)
        return;
    const bool before = dark();
    m_forced = forced;
    if (dark() != before)
        refresh();
}

void ThemeController::setDesktopPrefersDark(bool isDark)
{
    if (isDark == m_desktopDark)
        return;
    const bool before = dark();
    m_desktopDark = isDark;
    if (dark() != before)
        refresh();
}

void ThemeController::setDesktopAccent(std::optional<QColor> accent)
{
    if (accent && !accent->isValid())
        accent.reset();
    if (accent == m_desktopAccent)
        return;
    m_desktopAccent = accent;
    refresh();
}

void ThemeController::setReducedMotion(bool reduced)
{
    if (reduced == m_reducedMotion)
        return;
    m_reducedMotion = reduced;
    Q_EMIT changed();
}

void ThemeController::setFont(const QFont &font)
{
    const QFont next = font.family().isEmpty() ? QFont() : font;
    if (next == m_font)
        return;
    m_font = next;
    Q_EMIT changed();
}

void ThemeController::refresh()
{
    const QColor seed = m_desktopAccent.value_or(dark() ? QColor(0x64, 0xbc, 0xa6) : QColor(0x2b, 0x7a, 0x66));
    m_accent = accentFrom(seed);
    Q_EMIT changed();
}

ThemeController::Accent ThemeController::accentFrom(const QColor &seed) const
{
    // Light: the accent darkens until white text reads on it and it reads
    // as text; dark: it lightens until dark text reads on it.
    const QColor towards = dark() ? QColor(Qt::white) : QColor(Qt::black);
    Accent a;
    // The soft tint: as much of the seed as leaves the secondary and danger
    // texts readable on it.
    for (int percent = dark() ? 20 : 12; percent > 1; --percent) {
        a.soft = mix(surface(), seed, percent / 100.0);
        if (contrast(secondaryText(), a.soft) >= textTarget && contrast(danger(), a.soft) >= textTarget)
            break;
    }
    a.fill = reach(seed, towards, {onAccent()}, textTarget);
    a.fillHover = mix(a.fill, towards, 0.1);
    a.fillPressed = mix(a.fill, towards, 0.2);
    a.text = reach(seed, towards, {window(), surface(), hover(), pressed(), a.soft}, textTarget);
    return a;
}

// Our own two palettes; chosen to read well on both GNOME and KDE panels.
QColor ThemeController::window() const
{
    return dark() ? QColor(0x1c, 0x1e, 0x21) : QColor(0xf7, 0xf6, 0xf3);
}
QColor ThemeController::surface() const
{
    return dark() ? QColor(0x26, 0x29, 0x2d) : QColor(0xff, 0xff, 0xff);
}
QColor ThemeController::hover() const
{
    return dark() ? QColor(0x32, 0x36, 0x3b) : QColor(0xec, 0xeb, 0xe7);
}
QColor ThemeController::pressed() const
{
    return dark() ? QColor(0x3d, 0x42, 0x48) : QColor(0xe0, 0xdf, 0xda);
}
QColor ThemeController::separator() const
{
    return dark() ? QColor(0x38, 0x3c, 0x41) : QColor(0xe3, 0xe1, 0xdc);
}
QColor ThemeController::border() const
{
    return dark() ? QColor(0x73, 0x77, 0x7d) : QColor(0x8c, 0x8a, 0x85);
}
QColor ThemeController::text() const
{
    return dark() ? QColor(0xec, 0xec, 0xe9) : QColor(0x1d, 0x1d, 0x1f);
}
QColor ThemeController::secondaryText() const
{
    return dark() ? QColor(0xb0, 0xb2, 0xb5) : QColor(0x5f, 0x5f, 0x66);
}
QColor ThemeController::onAccent() const
{
    return dark() ? QColor(0x15, 0x19, 0x1a) : QColor(0xff, 0xff, 0xff);
}
QColor ThemeController::danger() const
{
    return dark() ? QColor(0xf2, 0x8b, 0x7a) : QColor(0xb8, 0x3a, 0x26);
}
QColor ThemeController::onDanger() const
{
    return onAccent();
}
QColor ThemeController::dangerText() const
{
    return danger();
}
QColor ThemeController::dangerSoft() const
{
    return mix(surface(), danger(), dark() ? 0.16 : 0.1);
}
QColor ThemeController::toast() const
{
    return dark() ? QColor(0xe4, 0xe4, 0xe1) : QColor(0x2a, 0x2b, 0x2e);
}
QColor ThemeController::onToast() const
{
    return dark() ? QColor(0x1c, 0x1e, 0x21) : QColor(0xf7, 0xf6, 0xf3);
}
QColor ThemeController::focusRing() const
{
    return m_accent.text;
}
QColor ThemeController::shadow() const
{
    return dark() ? QColor(0, 0, 0, 150) : QColor(0, 0, 0, 50);
}

// The type scale follows the size of the user's font.
int ThemeController::bodySize() const
{
    const double pixels = m_font.pixelSize() > 0 ? m_font.pixelSize() : m_font.pointSizeF() * 4.0 / 3.0;
    return std::clamp(int(std::lround(pixels)), 12, 22);
}
int ThemeController::captionSize() const
{
    return std::max(11, int(std::lround(bodySize() * 0.85)));
}
int ThemeController::smallSize() const
{
    return std::max(11, int(std::lround(bodySize() * 0.92)));
}
int ThemeController::titleSize() const
{
    return int(std::lround(bodySize() * 1.2));
}
int ThemeController::headingSize() const
{
    return int(std::lround(bodySize() * 1.4));
}
int ThemeController::displaySize() const
{
    return int(std::lround(bodySize() * 2.0));
}

} // namespace tarnwell
