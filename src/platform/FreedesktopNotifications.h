#pragma once

#include "services/NotificationCenter.h"

#include <QDBusConnection>
#include <QHash>

class QDBusServiceWatcher;

namespace tarnwell::platform {

// Notifications through org.freedesktop.Notifications on the session bus.
// Our request identifiers map to the server's ids, so a repeat replaces
// (replaces_id) and a removal closes (CloseNotification); ids are forgotten
// on NotificationClosed. Every call is asynchronous. GetCapabilities tells
// whether action buttons are shown; it is asked again when a server appears.
// Without a server nothing is shown and that is logged once per absence.
class FreedesktopNotifications final : public NotificationCenter
{
    Q_OBJECT
public:
    explicit FreedesktopNotifications(QDBusConnection bus, QObject *parent = nullptr);
    ~FreedesktopNotifications() override;

    // Follows a new connection (the session bus came back after a loss): the
    // old server's ids mean nothing there, so they are forgotten.
    void rebind(QDBusConnection bus);

    bool supportsActions() const override { return m_supportsActions; }
    bool isReachable() const override;
    void deliver(const NotificationContent &content) override;
    void remove(const QString &identifier) override;

    // The server's id for a request identifier; 0 when none is known.
    uint serverId(const QString &identifier) const { return m_serverIds.value(identifier); }

Q_SIGNALS:
    // The server answered GetCapabilities.
    void capabilitiesKnown(const QStringList &capabilities);

private Q_SLOTS:
    void onActionInvoked(uint id, const QString &action);
    void onActivationToken(uint id, const QString &token);
    void onNotificationClosed(uint id, uint reason);

private:
    struct Shown
    {
        QString identifier;
        QString taskID;
    };
    struct Pending
    {
        bool closeWhenKnown = false;
        std::optional<NotificationContent> next; // a repeat asked for while the first is on its way
    };

    void bind();
    void queryCapabilities();
    void send(const NotificationContent &content, uint replacesId);
    void close(uint id);
    void noteUnreachable(const QString &error);

    QDBusConnection m_bus;
    QDBusServiceWatcher *m_watcher = nullptr;
    bool m_supportsActions = true;
    bool m_absenceLogged = false;
    QHash<QString, uint> m_serverIds; // request identifier -> server id
    QHash<uint, Shown> m_shown; // server id -> what it shows
    QHash<uint, QByteArray> m_tokens; // server id -> activation token of the coming action
    QHash<QString, Pending> m_pending; // request identifiers whose Notify has not answered yet
};

} // namespace tarnwell::platform
