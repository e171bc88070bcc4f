// The real `tarnwell` program as a child process with its own data and
// config folders, and its log read as it comes (no fixed sleeps).
// TARNWELL_BINARY is the `tarnwell` command: without a subcommand it execs
// tarnwell-agent in the same process, so pid() and terminate() reach the agent.
#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>

#include <csignal>

class AppProcess
{
public:
    explicit AppProcess(const QString &home, const QStringList &arguments = {QStringLiteral("--ui-test")},
                        const QStringList &extraEnvironment = {})
    {
        m_process.setProcessEnvironment(
            environment(home, QStringList{QStringLiteral("QT_MESSAGE_PATTERN=%{message}")} + extraEnvironment));
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QStringLiteral(TARNWELL_BINARY), arguments);
    }
    ~AppProcess()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    // The environment of a program with its data and config folders below
    // `home`; an entry "NAME=value" sets a variable, a bare "NAME" removes it.
    static QProcessEnvironment environment(const QString &home, const QStringList &extra = {})
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
        for (const QString &entry : extra) {
            if (entry.contains(QLatin1Char('=')))
                env.insert(entry.section(QLatin1Char('='), 0, 0), entry.section(QLatin1Char('='), 1));
            else
                env.remove(entry);
        }
        return env;
    }

    AppProcess(const AppProcess &) = delete;
    AppProcess &operator=(const AppProcess &) = delete;

    // Waits until the log holds `line` `times` times.
    bool waitFor(const QString &line, int timeoutMs = 10000, int times = 1)
    {
        QElapsedTimer timer;
        timer.start();
        while (log().count(line) < times) {
            if (timer.elapsed() > timeoutMs || m_process.state() == QProcess::NotRunning)
                return log().count(line) >= times;
            m_process.waitForReadyRead(20);
        }
        return true;
    }
    QString log()
    {
        m_log += QString::fromUtf8(m_process.readAll());
        return m_log;
    }
    QStringList lines() { return log().split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
    qint64 pid() const { return m_process.processId(); }
    void terminate() { ::kill(pid_t(m_process.processId()), SIGTERM); }
    bool finish(int timeoutMs = 10000)
    {
        const bool done = m_process.waitForFinished(timeoutMs);
        log();
        return done;
    }
    QProcess &process() { return m_process; }

private:
    QProcess m_process;
    QString m_log;
};
