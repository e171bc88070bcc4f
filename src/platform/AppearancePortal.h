#pragma once

#include <QColor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFont>
#include <QObject>
#include <QVariantMap>

#include <optional>

namespace tarnwell::platform {

// What the desktop says about appearance through the settings portal
// (org.freedesktop.portal.Settings), read once with ReadAll and followed by
// SettingChanged:
// - light/dark: org.freedesktop.appearance color-scheme;
// - the accent colour: org.freedesktop.appearance accent-color (r, g, b in
//   0..1; out of range means none);
// - reduced motion: org.freedesktop.appearance reduced-motion, else GNOME's
//   org.gnome.desktop.interface enable-animations, else KDE's
//   AnimationDurationFactor of 0;
// - the interface font: GNOME's font-name ("Cantarell 11") or KDE's General
//   font ("Noto Sans,10,…"); none when neither is given.
class AppearancePortal : public QObject
{
    Q_OBJECT
public:
    enum class Scheme { noPreference = 0, dark = 1, light = 2 };

    explicit AppearancePortal(QObject *parent = nullptr);
    explicit AppearancePortal(QDBusConnection bus, QObject *parent = nullptr);
    // Reads everything again from a new connection (the session bus came back
    // after a loss) and follows it from then on; says what changed.
    void rebind(QDBusConnection bus);
    Scheme scheme() const { return m_scheme; }
    bool prefersDark() const { return m_scheme == Scheme::dark; }
    std::optional<QColor> accent() const;
    bool reducedMotion() const;
    std::optional<QFont> font() const;

    // The settings portal's groups this reads.
    static QStringList groups();

Q_SIGNALS:
    void schemeChanged(tarnwell::platform::AppearancePortal::Scheme scheme);
    // The accent, the motion preference or the font changed.
    void appearanceChanged();

private Q_SLOTS:
    void onSettingChanged(const QDBusMessage &message);

private:
    void bind();
    static Scheme fromValue(const QVariant &value);
    QVariant value(const QString &group, const QString &key) const;

    QDBusConnection m_bus;
    Scheme m_scheme = Scheme::noPreference;
    QHash<QString, QVariantMap> m_settings; // group → key → value
};

} // namespace tarnwell::platform
