#pragma once

#include <QDBusVariant>
#include <QObject>

namespace tarnwell::platform {

// The desktop's light/dark preference from the settings portal
// (org.freedesktop.appearance color-scheme) and its changes.
class AppearancePortal : public QObject
{
    Q_OBJECT
public:
    enum class Scheme { noPreference = 0, dark = 1, light = 2 };

    explicit AppearancePortal(QObject *parent = nullptr);
    Scheme scheme() const { return m_scheme; }
    bool prefersDark() const { return m_scheme == Scheme::dark; }

Q_SIGNALS:
    void schemeChanged(tarnwell::platform::AppearancePortal::Scheme scheme);

private Q_SLOTS:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    static Scheme fromValue(const QVariant &value);
    Scheme m_scheme = Scheme::noPreference;
};

} // namespace tarnwell::platform
