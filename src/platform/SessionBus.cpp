#include "SessionBus.h"

#include "kit/Logging.h"

#include <algorithm>
#include <utility>

namespace tarnwell::platform {

namespace {

// libdbus tells every connection that lost its bus with this local signal.
const QString localPath = QStringLiteral("/org/freedesktop/DBus/Local");
const QString localInterface = QStringLiteral("org.freedesktop.DBus.Local");

QString nameFor(int generation)
{
    return QStringLiteral("%1-%2").arg(QLatin1String(SessionBus::Constants::connectionName)).arg(generation);
}

} // namespace

SessionBus::SessionBus(QObject *parent)
    : QObject(parent)
    , m_connection(QString())
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &SessionBus::retry);
    // Without a bus at start the agent runs alone, as its users report; only a
    // bus that was there and went away is waited for.
    connectNext();
}

SessionBus::~SessionBus()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
}

bool SessionBus::connectNext()
{
    const int generation = m_generation + 1;
    const QString name = nameFor(generation);
    QDBusConnection next = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    if (!next.isConnected()) {
        if (m_generation == 0)
            m_connection = next; // kept, so that its users can say why there is none
        else
            QDBusConnection::disconnectFromBus(name);
        return false;
    }
    next.connect(QString(), localPath, localInterface, QStringLiteral("Disconnected"), this, SLOT(onDisconnected()));
    const QDBusConnection previous = std::exchange(m_connection, next);
    m_generation = generation;
    if (generation > 1) {
        qCInfo(lcServices).noquote()
            << QStringLiteral("The session bus is back; reconnected as %1").arg(next.baseService());
        Q_EMIT connectionChanged(next);
    }
    if (!previous.name().isEmpty())
        QDBusConnection::disconnectFromBus(previous.name());
    return true;
}

void SessionBus::onDisconnected()
{
    // Only the connection in use is followed; it is told once.
    if (m_connection.isConnected() || m_retry.isActive())
        return;
    qCWarning(lcServices).noquote() << QStringLiteral(
        "Lost the session bus; the timer and the store go on, and the bus is tried again until it is back");
    m_retryDelay = Constants::firstRetry;
    m_retry.start(m_retryDelay);
    Q_EMIT lost();
}

void SessionBus::retry()
{
    if (connectNext())
        return;
    m_retryDelay = std::min(m_retryDelay * 2, Constants::longestRetry);
    m_retry.start(m_retryDelay);
}

} // namespace tarnwell::platform
