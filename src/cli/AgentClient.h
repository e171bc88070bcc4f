#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>

#include <QObject>

#include <functional>

namespace tarnwell::cli {

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

// The command line's side of org.tarnwell.Tarnwell1 and
// org.freedesktop.Application on the session bus.
class AgentClient
{
public:
    static constexpr const char *serviceName = "org.tarnwell.Tarnwell";
    static constexpr const char *objectPath = "/org/tarnwell/Tarnwell";
    static constexpr const char *interfaceName = "org.tarnwell.Tarnwell1";

    AgentClient();

    // A session bus is reachable and an agent owns the name.
    bool agentRunning() const;
    QDBusConnection &connection() { return m_connection; }

    // Calls a method of org.tarnwell.Tarnwell1 and waits for the answer.
    QDBusMessage call(const QString &method, const QVariantList &arguments = {}, int timeoutMs = 25000);
    // Hands links to the running agent (Open), or asks it to show itself.
    bool handOver(const QStringList &links);
    // org.freedesktop.Application.ActivateAction(action). Whether the agent answered.
    bool activateAction(const QString &action);

private:
    QDBusConnection m_connection;
};

} // namespace tarnwell::cli
