#include "AgentClient.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace tarnwell::cli {

AgentClient::AgentClient()
    : m_connection(QDBusConnection::sessionBus())
{
}

bool AgentClient::agentRunning() const
{
    if (!m_connection.isConnected())
        return false;
    const QDBusReply<bool> owned = m_connection.interface()->isServiceRegistered(QLatin1String(serviceName));
    return owned.isValid() && owned.value();
}

QDBusMessage AgentClient::call(const QString &method, const QVariantList &arguments, int timeoutMs)
{
    QDBusMessage message = QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath),
                                                          QLatin1String(interfaceName), method);
    message.setArguments(arguments);
    return m_connection.call(message, QDBus::Block, timeoutMs);
}

bool AgentClient::handOver(const QStringList &links)
{
    const QString application = QStringLiteral("org.freedesktop.Application");
    QDBusMessage message;
    if (links.isEmpty()) {
        message = QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath), application,
                                                 QStringLiteral("Activate"));
        message << QVariantMap();
    } else {
        message = QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath), application,
                                                 QStringLiteral("Open"));
        message << links << QVariantMap();
    }
    return m_connection.call(message, QDBus::Block, 2000).type() == QDBusMessage::ReplyMessage;
}

bool AgentClient::activateAction(const QString &action)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath),
                                       QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
    message << action << QVariantList() << QVariantMap();
    return m_connection.call(message, QDBus::Block, 2000).type() == QDBusMessage::ReplyMessage;
}

} // namespace tarnwell::cli
