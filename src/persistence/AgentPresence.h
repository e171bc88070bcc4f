#pragma once

#include <QString>

namespace tarnwell {

// Whether an agent has a store open, answered without the session bus: the
// agent holds a shared flock on `agent.lock` beside the store file for as long
// as it runs, and the kernel drops it with the process, however it ends. The
// command line tries the lock exclusively: when it gets it, no agent has the
// store and it can work on the file directly.
class AgentPresence
{
public:
    enum class State {
        none, // no agent holds the store
        held, // an agent holds it
        unknown, // the lock file could not be read: ask the bus
    };

    AgentPresence() = default;
    ~AgentPresence();
    AgentPresence(const AgentPresence &) = delete;
    AgentPresence &operator=(const AgentPresence &) = delete;

    static QString lockPath(const QString &storePath);
    static State probe(const QString &storePath);

    // The agent's side: creates the lock file (0600) and holds it shared until
    // destroyed. False when the file cannot be created or locked.
    bool hold(const QString &storePath);

private:
    int m_fd = -1;
};

} // namespace tarnwell
