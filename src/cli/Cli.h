#pragma once

#include <QStringList>
#include <QTextStream>

#include <memory>

class QCommandLineParser;
class QJsonObject;

namespace tarnwell::cli {

class AgentLink;
struct AgentReply;
struct LocalStore;

// The subcommands of `tarnwell`. With an agent on the session bus every
// command goes through it (one writer); without one, reading, `add`, export
// and import work on the store file directly through the same repositories.
class Cli
{
public:
    enum Exit {
        ok = 0,
        failure = 1, // the agent did not answer, or another failure
        usage = 2, // wrong options or arguments
        invalid = 3, // a title rule, a malformed argument or import file
        storeFailed = 4, // the store could not be opened, read or written
        noAgent = 5, // the command needs the running agent
        noTask = 6, // no task in hand, or no open task with that id
        syncFailed = 7, // the sync pass did not go through, or sync is off
    };

    Cli(QTextStream &out, QTextStream &err);
    ~Cli();

    static const QStringList &subcommands();
    // arguments[0] is the subcommand.
    int run(const QStringList &arguments);

private:
    int add(const QStringList &arguments);
    int status(const QStringList &arguments);
    int list(const QStringList &arguments);
    int drive(const QString &command, const QStringList &arguments);
    int exportData(const QStringList &arguments);
    int importFile(const QStringList &arguments);
    int backups(const QStringList &arguments);
    int restore(const QStringList &arguments);
    int syncCommand(const QStringList &arguments);
    void printSyncStatus(const QJsonObject &status);

    // -1: go on; otherwise the exit code (usage error, or --help shown).
    int parse(QCommandLineParser &parser, const QStringList &arguments);
    int follow(bool json);
    void printStatus(const QByteArray &json, bool asJson);
    int fail(int code, const QString &message);
    int busFailure(const AgentReply &reply);
    // Asks the agent's lock, and the bus only when needed.
    bool agentRunning(const QStringList &arguments);
    LocalStore &store();

    QTextStream &m_out;
    QTextStream &m_err;
    std::unique_ptr<AgentLink> m_agent;
    std::unique_ptr<LocalStore> m_store;
    bool m_agentRunning = false;
};

} // namespace tarnwell::cli
