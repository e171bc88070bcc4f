#include "FreedesktopNotifications.h"

#include "kit/Logging.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <utility>

namespace tarnwell::platform {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
const QString appName = QStringLiteral("Tarnwell");
const QString appId = QStringLiteral("org.tarnwell.Tarnwell");

// Runs `done` with the finished call, also when it finished at once (a bus
// that is not connected answers before a watcher could hear it).
template<typename Done>
void whenFinished(const QDBusPendingCall &call, QObject *context, Done done)
{
    if (call.isFinished()) {
        done(call);
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, done] {
        watcher->deleteLater();
        done(*watcher);
    });
}

uchar urgencyByte(NotificationContent::Urgency urgency)
{
    switch (urgency) {
    case NotificationContent::Urgency::low:
        return 0;
    case NotificationContent::Urgency::normal:
        return 1;
    case NotificationContent::Urgency::critical:
        return 2;
    }
    return 1;
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(QDBusConnection bus, QObject *parent)
    : NotificationCenter(parent)
    , m_bus(std::move(bus))
{
    bind();
}

void FreedesktopNotifications::rebind(QDBusConnection bus)
{
    m_bus.disconnect(service, path, interface, QStringLiteral("ActionInvoked"), this,
                     SLOT(onActionInvoked(uint, QString)));
    m_bus.disconnect(service, path, interface, QStringLiteral("ActivationToken"), this,
                     SLOT(onActivationToken(uint, QString)));
    m_bus.disconnect(service, path, interface, QStringLiteral("NotificationClosed"), this,
                     SLOT(onNotificationClosed(uint, uint)));
    delete std::exchange(m_watcher, nullptr);
    m_serverIds.clear();
    m_shown.clear();
    m_tokens.clear();
    m_pending.clear();
    m_absenceLogged = false;
    m_bus = std::move(bus);
    bind();
}

void FreedesktopNotifications::bind()
{
    if (!m_bus.isConnected()) {
        qCWarning(lcServices).noquote() << QStringLiteral(
            "No session bus; the countdown and its chime go on without desktop notifications");
        m_absenceLogged = true;
        return;
    }
    m_bus.connect(service, path, interface, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("ActivationToken"), this,
                  SLOT(onActivationToken(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("NotificationClosed"), this,
                  SLOT(onNotificationClosed(uint, uint)));
    // A server that starts (or restarts) later is asked again.
    m_watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(m_watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        m_absenceLogged = false;
        queryCapabilities();
    });
    queryCapabilities();
}

FreedesktopNotifications::~FreedesktopNotifications() = default;

void FreedesktopNotifications::queryCapabilities()
{
    const QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("GetCapabilities"));
    whenFinished(m_bus.asyncCall(call), this, [this](const QDBusPendingCall &finished) {
        QDBusPendingReply<QStringList> reply = finished;
        if (reply.isError()) {
            noteUnreachable(reply.error().message());
            return;
        }
        const QStringList capabilities = reply.value();
        m_supportsActions = capabilities.contains(QStringLiteral("actions"));
        qCInfo(lcServices).noquote() << QStringLiteral("Notification server found; action buttons %1")
                                            .arg(m_supportsActions ? QStringLiteral("shown")
                                                                   : QStringLiteral("not shown"));
        Q_EMIT capabilitiesKnown(capabilities);
    });
}

bool FreedesktopNotifications::isReachable() const
{
    if (!m_bus.isConnected() || !m_bus.interface())
        return false;
    const QString name = QStringLiteral("org.freedesktop.Notifications");
    if (m_bus.interface()->isServiceRegistered(name).value())
        return true;
    return m_bus.interface()->activatableServiceNames().value().contains(name);
}

void FreedesktopNotifications::noteUnreachable(const QString &error)
{
    if (m_absenceLogged)
        return;
    m_absenceLogged = true;
    qCWarning(lcServices).noquote()
        << QStringLiteral("No notification server answers (%1); the countdown and its chime go on without "
                          "desktop notifications")
               .arg(error);
}

void FreedesktopNotifications::deliver(const NotificationContent &content)
{
    if (!m_bus.isConnected())
        return;
    // A repeat while the first is on its way goes out once the server's id is known.
    if (auto pending = m_pending.find(content.identifier); pending != m_pending.end()) {
        pending->next = content;
        return;
    }
    send(content, m_serverIds.value(content.identifier));
}

void FreedesktopNotifications::send(const NotificationContent &content, uint replacesId)
{
    QStringList actions{QLatin1String(Constants::defaultAction), QString()};
    for (const NotificationAction &action : content.actions)
        actions << action.identifier << action.title;
    QVariantMap hints;
    hints.insert(QStringLiteral("desktop-entry"), appId);
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue(urgencyByte(content.urgency)));
    hints.insert(QStringLiteral("category"), QStringLiteral("x-tarnwell.timer"));
    // The chime is ours; the server should not add its own sound.
    hints.insert(QStringLiteral("suppress-sound"), true);

    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Notify"));
    call << appName << replacesId << appId << content.title << content.body << actions << hints << qint32(-1);
    m_pending.insert(content.identifier, Pending{});
    const QString identifier = content.identifier;
    const QString taskID = content.taskID;
    whenFinished(m_bus.asyncCall(call), this, [this, identifier, taskID, replacesId](const QDBusPendingCall &finished) {
        const Pending pending = m_pending.take(identifier);
        QDBusPendingReply<uint> reply = finished;
        if (reply.isError()) {
            noteUnreachable(reply.error().message());
            return;
        }
        m_absenceLogged = false;
        const uint id = reply.value();
        if (replacesId != 0 && replacesId != id)
            m_shown.remove(replacesId);
        m_serverIds.insert(identifier, id);
        m_shown.insert(id, Shown{identifier, taskID});
        if (pending.closeWhenKnown) {
            m_serverIds.remove(identifier);
            close(id);
        }
        if (pending.next)
            send(*pending.next, m_serverIds.value(identifier));
    });
}

void FreedesktopNotifications::remove(const QString &identifier)
{
    if (auto pending = m_pending.find(identifier); pending != m_pending.end()) {
        pending->closeWhenKnown = true;
        pending->next.reset();
        return;
    }
    if (const uint id = m_serverIds.take(identifier))
        close(id);
}

void FreedesktopNotifications::close(uint id)
{
    m_shown.remove(id);
    m_tokens.remove(id);
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("CloseNotification"));
    call << id;
    m_bus.call(call, QDBus::NoBlock);
}

void FreedesktopNotifications::onActivationToken(uint id, const QString &token)
{
    if (m_shown.contains(id))
        m_tokens.insert(id, token.toUtf8());
}

void FreedesktopNotifications::onActionInvoked(uint id, const QString &action)
{
    // The server tells every listener; only our own notifications count.
    const auto shown = m_shown.constFind(id);
    if (shown == m_shown.cend())
        return;
    const NotificationResponse response{shown->identifier, action, shown->taskID, m_tokens.take(id)};
    Q_EMIT responded(response);
}

void FreedesktopNotifications::onNotificationClosed(uint id, uint)
{
    const auto shown = m_shown.find(id);
    if (shown == m_shown.end())
        return;
    if (m_serverIds.value(shown->identifier) == id)
        m_serverIds.remove(shown->identifier);
    m_shown.erase(shown);
    m_tokens.remove(id);
}

} // namespace tarnwell::platform
