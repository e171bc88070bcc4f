#pragma once

#include <QColor>
#include <QFont>
#include <QObject>
#include <QtQml/qqml.h>

#include <optional>

class QJSEngine;
class QQmlEngine;

namespace tarnwell {

// The design tokens that follow the desktop, as the windows read them
// (the singleton `Theme` of Tarnwell.Views): the light or dark palette with its state colours, the accent
// (the desktop's where it names one, made to keep its contrast figures), the
// user's font and the type scale over it, and the motion durations (zero when
// the desktop asks for reduced motion). Spacing, radii and sizes that do not
// change are in Tokens.qml.
//
// Every text colour is at least 4.5:1 against every background it is used on
// in its palette, and the focus ring at least 3:1 (the gallery test measures
// the drawn pictures).
class ThemeController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    // Backgrounds.
    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor surface READ surface NOTIFY changed)
    Q_PROPERTY(QColor hover READ hover NOTIFY changed)
    Q_PROPERTY(QColor pressed READ pressed NOTIFY changed)
    // Lines: `separator` divides, `border` outlines a control (3:1 on window).
    Q_PROPERTY(QColor separator READ separator NOTIFY changed)
    Q_PROPERTY(QColor border READ border NOTIFY changed)
    // Text and icons.
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed)
    // The accent: a fill (with onAccent on it, darker/lighter under the
    // pointer and pressed), as text on the backgrounds, and a soft tint
    // behind chosen rows and chips.
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentHover READ accentHover NOTIFY changed)
    Q_PROPERTY(QColor accentPressed READ accentPressed NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY changed)
    Q_PROPERTY(QColor accentSoft READ accentSoft NOTIFY changed)
    // Danger (urgent, overdue, delete) in the same three uses.
    Q_PROPERTY(QColor danger READ danger NOTIFY changed)
    Q_PROPERTY(QColor onDanger READ onDanger NOTIFY changed)
    Q_PROPERTY(QColor dangerText READ dangerText NOTIFY changed)
    Q_PROPERTY(QColor dangerSoft READ dangerSoft NOTIFY changed)
    // Toasts stand out from the window: inverted colours.
    Q_PROPERTY(QColor toast READ toast NOTIFY changed)
    Q_PROPERTY(QColor onToast READ onToast NOTIFY changed)
    Q_PROPERTY(QColor focusRing READ focusRing NOTIFY changed)
    Q_PROPERTY(QColor shadow READ shadow NOTIFY changed)
    // Type: the user's font family and a scale of pixel sizes over its size.
    Q_PROPERTY(QString fontFamily READ fontFamily NOTIFY changed)
    Q_PROPERTY(int captionSize READ captionSize NOTIFY changed)
    Q_PROPERTY(int smallSize READ smallSize NOTIFY changed)
    Q_PROPERTY(int bodySize READ bodySize NOTIFY changed)
    Q_PROPERTY(int titleSize READ titleSize NOTIFY changed)
    Q_PROPERTY(int headingSize READ headingSize NOTIFY changed)
    Q_PROPERTY(int displaySize READ displaySize NOTIFY changed)
    // Motion: durations in milliseconds, 0 with reduced motion.
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed)
    Q_PROPERTY(int motionShort READ motionShort NOTIFY changed)
    Q_PROPERTY(int motionMedium READ motionMedium NOTIFY changed)
public:
    enum class Forced { none, light, dark };

    explicit ThemeController(QObject *parent = nullptr);

    // Makes this controller the `Theme` of the engine's windows; call it
    // before the engine loads its first window. The engine does not own it.
    void provideTo(QQmlEngine &engine);

    void setForced(Forced forced);
    void setDesktopPrefersDark(bool dark);
    // The desktop's accent colour; none keeps the product's own.
    void setDesktopAccent(std::optional<QColor> accent);
    void setReducedMotion(bool reduced);
    // The user's interface font (its family and size); an unset QFont keeps
    // the application's.
    void setFont(const QFont &font);

    bool dark() const;
    QColor window() const;
    QColor surface() const;
    QColor hover() const;
    QColor pressed() const;
    QColor separator() const;
    QColor border() const;
    QColor text() const;
    QColor secondaryText() const;
    QColor accent() const { return m_accent.fill; }
    QColor accentHover() const { return m_accent.fillHover; }
    QColor accentPressed() const { return m_accent.fillPressed; }
    QColor onAccent() const;
    QColor accentText() const { return m_accent.text; }
    QColor accentSoft() const { return m_accent.soft; }
    QColor danger() const;
    QColor onDanger() const;
    QColor dangerText() const;
    QColor dangerSoft() const;
    QColor toast() const;
    QColor onToast() const;
    QColor focusRing() const;
    QColor shadow() const;

    QString fontFamily() const { return m_font.family(); }
    int captionSize() const;
    int smallSize() const;
    int bodySize() const;
    int titleSize() const;
    int headingSize() const;
    int displaySize() const;

    bool reducedMotion() const { return m_reducedMotion; }
    int motionShort() const { return m_reducedMotion ? 0 : 120; }
    int motionMedium() const { return m_reducedMotion ? 0 : 180; }

    // WCAG 2 relative luminance and contrast ratio.
    static double luminance(const QColor &c);
    static double contrast(const QColor &a, const QColor &b);

Q_SIGNALS:
    void changed();

private:
    struct Accent
    {
        QColor fill, fillHover, fillPressed, text, soft;
    };
    void refresh();
    Accent accentFrom(const QColor &seed) const;

    Forced m_forced = Forced::none;
    bool m_desktopDark = false;
    std::optional<QColor> m_desktopAccent;
    bool m_reducedMotion = false;
    QFont m_font;
    Accent m_accent;
};

// The singleton `Theme` of the windows: the engine's ThemeController (given to
// it with provideTo), never one QML makes of its own.
struct ThemeSingleton
{
    Q_GADGET
    QML_FOREIGN(tarnwell::ThemeController)
    QML_NAMED_ELEMENT(Theme)
    QML_SINGLETON
public:
    static ThemeController *create(QQmlEngine *engine, QJSEngine *scriptEngine);
};

} // namespace tarnwell
