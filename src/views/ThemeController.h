#pragma once

#include <QColor>
#include <QObject>

namespace tarnwell {

// Light or dark: the appearance setting forces one, or "auto" follows the
// desktop's preference. The windows read `dark` and the palette colours.
class ThemeController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor surface READ surface NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor danger READ danger NOTIFY changed)
    Q_PROPERTY(QColor separator READ separator NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed)
    Q_PROPERTY(QColor hover READ hover NOTIFY changed)
    Q_PROPERTY(QColor pressed READ pressed NOTIFY changed)
    Q_PROPERTY(QColor focusRing READ focusRing NOTIFY changed)
public:
    enum class Forced { none, light, dark };

    explicit ThemeController(QObject *parent = nullptr);

    void setForced(Forced forced);
    void setDesktopPrefersDark(bool dark);
    bool dark() const;

    QColor window() const;
    QColor surface() const;
    QColor text() const;
    QColor secondaryText() const;
    QColor accent() const;
    QColor danger() const;
    QColor separator() const;
    // Text on an accent fill (a pressed toggle, a primary button).
    QColor onAccent() const;
    // Backgrounds of a control under the pointer and while pressed.
    QColor hover() const;
    QColor pressed() const;
    // The keyboard focus ring: at least 3:1 against the window and surface.
    QColor focusRing() const;

Q_SIGNALS:
    void changed();

private:
    void update(Forced forced, bool desktopDark);
    Forced m_forced = Forced::none;
    bool m_desktopDark = false;
};

} // namespace tarnwell
