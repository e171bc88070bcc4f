// The command line's on-demand module: the session bus and the iCalendar
// writer, which `tarnwell add` and the other store commands do without.
#include "Extras.h"
#include "cli/AgentLink.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QObject>

namespace tarnwell::cli {

namespace {

// Calls a function for each arrival of an argument-less bus signal.
class ChangeRelay : public QObject
{
    Q_OBJECT
public:
    explicit ChangeRelay(std::function<void()> onChanged)
        : m_onChanged(std::move(onChanged))
    {
    }
public Q_SLOTS:
    void changed() { m_onChanged(); }

private:
    std::function<void()> m_onChanged;
};

class DBusAgentLink final : public AgentLink
{
public:
    DBusAgentLink()
        : m_connection(QDBusConnection::sessionBus())
    {
    }

    bool agentRunning() override
    {
        if (!m_connection.isConnected())
            return false;
        const QDBusReply<bool> owned = m_connection.interface()->isServiceRegistered(QLatin1String(serviceName));
        return owned.isValid() && owned.value();
    }

    AgentReply call(const QString &method, const QVariantList &arguments, int timeoutMs) override
    {
        QDBusMessage message = QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath),
                                                              QLatin1String(interfaceName), method);
        message.setArguments(arguments);
        const QDBusMessage reply = m_connection.call(message, QDBus::Block, timeoutMs);
        if (reply.type() == QDBusMessage::ReplyMessage)
            return {true, {}, {}, reply.arguments()};
        return {false, reply.errorName(), reply.errorMessage(), {}};
    }

    bool handOver(const QStringList &links) override
    {
        QDBusMessage message = application(links.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
        if (!links.isEmpty())
            message << links;
        message << QVariantMap();
        return m_connection.call(message, QDBus::Block, 2000).type() == QDBusMessage::ReplyMessage;
    }

    bool activateAction(const QString &action) override
    {
        QDBusMessage message = application(QStringLiteral("ActivateAction"));
        message << action << QVariantList() << QVariantMap();
        return m_connection.call(message, QDBus::Block, 2000).type() == QDBusMessage::ReplyMessage;
    }

    bool follow(std::function<void()> onChanged, std::function<void()> onGone) override
    {
        m_watcher = std::make_unique<QDBusServiceWatcher>(QLatin1String(serviceName), m_connection,
                                                          QDBusServiceWatcher::WatchForUnregistration);
        QObject::connect(m_watcher.get(), &QDBusServiceWatcher::serviceUnregistered, m_watcher.get(),
                         [onGone = std::move(onGone)] { onGone(); });
        // The signal carries no arguments; each one means "read the status again".
        m_relay = std::make_unique<ChangeRelay>(std::move(onChanged));
        return m_connection.connect(QLatin1String(serviceName), QLatin1String(objectPath), QLatin1String(interfaceName),
                                    QStringLiteral("Changed"), m_relay.get(), SLOT(changed()));
    }

    QString lastError() const override { return m_connection.lastError().message(); }

private:
    static QDBusMessage application(const QString &method)
    {
        return QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath),
                                              QStringLiteral("org.freedesktop.Application"), method);
    }

    QDBusConnection m_connection;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    std::unique_ptr<ChangeRelay> m_relay;
};

} // namespace

} // namespace tarnwell::cli

extern "C" Q_DECL_EXPORT tarnwell::cli::AgentLink *tarnwell_extras_agent_link()
{
    return new tarnwell::cli::DBusAgentLink;
}

extern "C" Q_DECL_EXPORT void tarnwell_extras_write_ics(const QList<tarnwell::IcsWriter::Todo> *todos,
                                                        const QDateTime *now, QByteArray *out)
{
    *out = tarnwell::IcsWriter::write(*todos, *now);
}

#include "DBusAgentLink.moc"
