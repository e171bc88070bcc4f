#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace tarnwell::platform {

// One running instance per user. The first process owns the well-known name
// org.tarnwell.Tarnwell and exports org.freedesktop.Application at
// /org/tarnwell/Tarnwell; a later process hands its links over and leaves.
class ApplicationBus : public QObject
{
    Q_OBJECT
public:
    enum class Role {
        primary, // we own the name
        secondary, // another process owns it
        alone, // no session bus: run by ourselves
    };
    struct Constants
    {
        static constexpr const char *serviceName = "org.tarnwell.Tarnwell";
        static constexpr const char *objectPath = "/org/tarnwell/Tarnwell";
        static constexpr const char *interfaceName = "org.freedesktop.Application";
    };

    explicit ApplicationBus(QDBusConnection connection, QObject *parent = nullptr);
    ~ApplicationBus() override;

    // Exports the interface, then asks for the name.
    Role claim();
    // The same on a new connection (the session bus came back after a loss).
    Role claim(const QDBusConnection &connection);
    Role role() const { return m_role; }

    // For a secondary process: Open(links) when there are links, else
    // Activate. Returns whether the owner answered.
    bool handOver(const QStringList &links);

Q_SIGNALS:
    void activateRequested();
    void openRequested(const QStringList &links);
    void actionRequested(const QString &action, const QVariantList &parameters);

private:
    QDBusConnection m_connection;
    Role m_role = Role::alone;
    bool m_adaptorMade = false;
};

} // namespace tarnwell::platform
