#include "LinuxSessionEvents.h"

#include "kit/Logging.h"

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace tarnwell::platform {

namespace {

const QString login1 = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString screenSaverService = QStringLiteral("org.freedesktop.ScreenSaver");
const QString screenSaverInterface = QStringLiteral("org.freedesktop.ScreenSaver");

template<typename Done>
void whenFinished(const QDBusPendingCall &call, QObject *context, Done done)
{
    auto *watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, done] {
        watcher->deleteLater();
        done(*watcher);
    });
}

} // namespace

LinuxSessionEvents::LinuxSessionEvents(QDBusConnection systemBus, QDBusConnection sessionBus, QObject *parent)
    : SessionEvents(parent)
    , m_system(std::move(systemBus))
    , m_session(std::move(sessionBus))
{
    if (m_system.isConnected()) {
        m_system.connect(login1, managerPath, managerInterface, QStringLiteral("PrepareForSleep"), this,
                         SLOT(onPrepareForSleep(bool)));
        takeSleepInhibitor();
        findSession();
    } else {
        qCWarning(lcServices).noquote() << QStringLiteral(
            "No system bus; sleep, screen lock and user switches are not seen through logind");
    }
    if (m_session.isConnected())
        followScreenSaver(true);
    else
        qCWarning(lcServices).noquote() << QStringLiteral("No session bus; the screen saver is not followed");
}

LinuxSessionEvents::~LinuxSessionEvents() = default;

void LinuxSessionEvents::followScreenSaver(bool connect)
{
    // GNOME and others use the long path, KDE the short one.
    for (const QString &path : {QStringLiteral("/org/freedesktop/ScreenSaver"), QStringLiteral("/ScreenSaver")}) {
        if (connect)
            m_session.connect(screenSaverService, path, screenSaverInterface, QStringLiteral("ActiveChanged"), this,
                              SLOT(onScreenSaverActiveChanged(bool)));
        else
            m_session.disconnect(screenSaverService, path, screenSaverInterface, QStringLiteral("ActiveChanged"), this,
                                 SLOT(onScreenSaverActiveChanged(bool)));
    }
}

void LinuxSessionEvents::rebindSessionBus(QDBusConnection sessionBus)
{
    followScreenSaver(false);
    m_session = std::move(sessionBus);
    if (m_session.isConnected())
        followScreenSaver(true);
}

void LinuxSessionEvents::takeSleepInhibitor()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(login1, managerPath, managerInterface, QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep") << QStringLiteral("Tarnwell")
         << QStringLiteral("Pausing the focus timer before sleep") << QStringLiteral("delay");
    whenFinished(m_system.asyncCall(call), this, [this](const QDBusPendingCall &finished) {
        QDBusPendingReply<QDBusUnixFileDescriptor> reply = finished;
        if (reply.isError()) {
            qCWarning(lcServices).noquote()
                << QStringLiteral("logind gives no sleep delay: %1").arg(reply.error().message());
            return;
        }
        m_inhibitor = reply.value();
    });
}

void LinuxSessionEvents::findSession()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(login1, managerPath, managerInterface, QStringLiteral("GetSessionByPID"));
    call << uint(QCoreApplication::applicationPid());
    whenFinished(m_system.asyncCall(call), this, [this](const QDBusPendingCall &finished) {
        QDBusPendingReply<QDBusObjectPath> reply = finished;
        if (reply.isError() && reply.error().type() == QDBusError::ServiceUnknown) {
            qCWarning(lcServices).noquote()
                << QStringLiteral("logind is not on the system bus; sleep, screen lock and user switches are not seen");
            return;
        }
        // Outside a session (a user service), logind's "auto" is the user's display session.
        followSession(reply.isError() ? QStringLiteral("/org/freedesktop/login1/session/auto") : reply.value().path());
    });
}

void LinuxSessionEvents::followSession(const QString &path)
{
    m_sessionPath = path;
    m_system.connect(login1, path, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                     SLOT(onSessionPropertiesChanged(QString, QVariantMap, QStringList)));
    QDBusMessage call = QDBusMessage::createMethodCall(login1, path, propertiesInterface, QStringLiteral("GetAll"));
    call << sessionInterface;
    whenFinished(m_system.asyncCall(call), this, [this](const QDBusPendingCall &finished) {
        QDBusPendingReply<QVariantMap> reply = finished;
        if (reply.isError()) {
            qCWarning(lcServices).noquote()
                << QStringLiteral("logind session unreadable: %1").arg(reply.error().message());
            return;
        }
        const QVariantMap properties = reply.value();
        m_locked = properties.value(QStringLiteral("LockedHint"), false).toBool();
        m_active = properties.value(QStringLiteral("Active"), true).toBool();
        qCInfo(lcServices).noquote() << QStringLiteral("Following the logind session %1").arg(m_sessionPath);
        Q_EMIT sessionFound();
    });
}

void LinuxSessionEvents::onPrepareForSleep(bool sleeping)
{
    if (sleeping) {
        Q_EMIT wentAway(QStringLiteral("sleep"));
        // The receivers have paused and saved: the machine may sleep now.
        m_inhibitor = QDBusUnixFileDescriptor();
        return;
    }
    takeSleepInhibitor();
    Q_EMIT cameBack(QStringLiteral("wake"));
}

void LinuxSessionEvents::onSessionPropertiesChanged(const QString &interface, const QVariantMap &changed,
                                                    const QStringList &)
{
    if (interface == sessionInterface)
        applySessionState(changed);
}

void LinuxSessionEvents::applySessionState(const QVariantMap &properties)
{
    const auto locked = properties.constFind(QStringLiteral("LockedHint"));
    if (locked != properties.cend() && locked->toBool() != m_locked) {
        m_locked = locked->toBool();
        if (m_locked)
            Q_EMIT wentAway(QStringLiteral("lock"));
        else
            Q_EMIT cameBack(QStringLiteral("unlock"));
    }
    const auto active = properties.constFind(QStringLiteral("Active"));
    if (active != properties.cend() && active->toBool() != m_active) {
        m_active = active->toBool();
        if (m_active)
            Q_EMIT cameBack(QStringLiteral("active"));
        else
            Q_EMIT wentAway(QStringLiteral("inactive"));
    }
}

void LinuxSessionEvents::onScreenSaverActiveChanged(bool active)
{
    if (active == m_screenSaverActive)
        return;
    m_screenSaverActive = active;
    if (active)
        Q_EMIT wentAway(QStringLiteral("screensaver"));
    else
        Q_EMIT cameBack(QStringLiteral("screensaver"));
}

} // namespace tarnwell::platform
