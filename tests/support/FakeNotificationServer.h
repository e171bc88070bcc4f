// A stand-in for the desktop's org.freedesktop.Notifications server,
// exported on its own connection to the test's private session bus. It
// records every call and lets the test play the user's part (a click on a
// button sends ActionInvoked, as a real server does).
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

class FakeNotificationServer : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    struct Notification
    {
        QString appName;
        uint replacesId = 0;
        QString appIcon;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
        uint id = 0;
    };

    ~FakeNotificationServer() override { m_bus.unregisterService(QStringLiteral("org.freedesktop.Notifications")); }

    bool start()
    {
        return m_bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                                    QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals) &&
            m_bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }

    // The user's part.
    void click(uint id, const QString &action, const QString &token = {})
    {
        if (!token.isEmpty())
            Q_EMIT ActivationToken(id, token);
        Q_EMIT ActionInvoked(id, action);
        Q_EMIT NotificationClosed(id, 2);
    }

    QList<Notification> notifications; // every Notify, in order
    QList<uint> closed; // every CloseNotification, in order
    QStringList senders; // the unique name each Notify came from
    QStringList capabilities{QStringLiteral("actions"), QStringLiteral("body")};

public Q_SLOTS:
    uint Notify(const QString &appName, uint replacesId, const QString &appIcon, const QString &summary,
                const QString &body, const QStringList &actions, const QVariantMap &hints, int timeout)
    {
        const uint id = replacesId != 0 ? replacesId : ++m_lastId;
        notifications.append({appName, replacesId, appIcon, summary, body, actions, hints, timeout, id});
        senders.append(message().service());
        Q_EMIT notified();
        return id;
    }
    void CloseNotification(uint id)
    {
        closed.append(id);
        Q_EMIT NotificationClosed(id, 3);
    }
    QStringList GetCapabilities() { return capabilities; }

Q_SIGNALS:
    void NotificationClosed(uint id, uint reason);
    void ActionInvoked(uint id, const QString &actionKey);
    void ActivationToken(uint id, const QString &activationToken);
    void notified(); // lets a test wait for the next Notify

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("notifications"));
    uint m_lastId = 0;
};
