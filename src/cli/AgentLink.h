#pragma once

#include "ical/IcsWriter.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

#include <functional>
#include <memory>
#include <optional>

namespace tarnwell::cli {

// An answer of the agent, or the bus's reason why there is none.
struct AgentReply
{
    bool ok = false;
    QString errorName;
    QString errorMessage;
    QVariantList arguments;
};

// The command line's side of org.tarnwell.Tarnwell1 and
// org.freedesktop.Application on the session bus. The bus (Qt DBus, libdbus
// and what they pull in) costs more to load than a whole `tarnwell add` on the
// store, so it lives in a module of its own that is loaded only when a command
// needs it: see open().
class AgentLink
{
public:
    static constexpr const char *serviceName = "org.tarnwell.Tarnwell";
    static constexpr const char *objectPath = "/org/tarnwell/Tarnwell";
    static constexpr const char *interfaceName = "org.tarnwell.Tarnwell1";

    virtual ~AgentLink() = default;

    // A session bus is reachable and an agent owns the name.
    virtual bool agentRunning() = 0;
    // Calls a method of org.tarnwell.Tarnwell1 and waits for the answer.
    virtual AgentReply call(const QString &method, const QVariantList &arguments, int timeoutMs) = 0;
    // Hands links to the running agent (Open), or asks it to show itself.
    virtual bool handOver(const QStringList &links) = 0;
    // org.freedesktop.Application.ActivateAction(action). Whether the agent answered.
    virtual bool activateAction(const QString &action) = 0;
    // Runs onChanged at each Changed signal and onGone when the agent leaves
    // the bus, from the event loop. False when the signal cannot be followed.
    virtual bool follow(std::function<void()> onChanged, std::function<void()> onGone) = 0;
    // The bus's last error, for messages.
    virtual QString lastError() const = 0;

    // Loads the module; nothing (and why in `error`) when it cannot be loaded.
    static std::unique_ptr<AgentLink> open(QString *error);
};

// The iCalendar export, from the same module (libical stays out of the other commands).
std::optional<QByteArray> writeIcs(const QList<IcsWriter::Todo> &todos, const QDateTime &now, QString *error);

} // namespace tarnwell::cli
