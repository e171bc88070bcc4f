// Kill -9 trials against the store: a writer process saves as fast as it can
// and is killed at a random moment; then the store is opened (which replays
// the WAL) and every save the writer acknowledged must be there, with
// `integrity_check` ok. Shared by tst_crash_safety and the crash bench.
#pragma once

#include "kit/Calendar.h"
#include "persistence/Day.h"
#include "persistence/PersistenceController.h"
#include "persistence/Task.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QSqlQuery>
#include <QThread>

#include <csignal>

class CrashTrials
{
public:
    struct Outcome
    {
        QString failure; // empty when the trial passed
        int acknowledged = 0; // saves the writer acknowledged in this trial
        bool walLeft = false; // the kill left a WAL with frames to replay
        bool ok() const { return failure.isEmpty(); }
    };

    CrashTrials(QString writer, QString file)
        : m_writer(std::move(writer))
        , m_file(std::move(file))
    {
    }

    // Even trials interrupt single saves, odd ones a focus-engine burst.
    Outcome run(int trial, int killAfterMs)
    {
        const bool burst = trial % 2 == 1;
        Outcome outcome;
        QProcess writer;
        writer.start(
            m_writer,
            {burst ? QStringLiteral("burst") : QStringLiteral("write"), m_file, QStringLiteral("t%1").arg(trial)});
        if (!writer.waitForStarted())
            return fail(outcome, QStringLiteral("the writer did not start"));
        // Wait for the first acknowledged save, then let it write a while.
        QElapsedTimer waited;
        waited.start();
        while (writer.bytesAvailable() == 0 && waited.elapsed() < 5000)
            writer.waitForReadyRead(20);
        QThread::msleep(ulong(killAfterMs));
        ::kill(pid_t(writer.processId()), SIGKILL);
        writer.waitForFinished();
        outcome.walLeft = QFileInfo(m_file + QStringLiteral("-wal")).size() > 0;
        const auto lines = writer.readAllStandardOutput().split('\n');
        for (const QByteArray &line : lines) {
            if (line.isEmpty())
                continue;
            ++outcome.acknowledged;
            if (line.startsWith("created "))
                m_promised.insert(QString::fromUtf8(line.mid(8)), 0);
            else if (line.startsWith("completed "))
                m_promised.insert(QString::fromUtf8(line.mid(10)), 4);
            else if (line.size() > 2 && line.at(1) == ' ')
                m_promised.insert(QString::fromUtf8(line.mid(2)), line.at(0) - '0');
        }
        if (outcome.acknowledged == 0)
            return fail(outcome, QStringLiteral("the writer acknowledged nothing"));
        check(outcome);
        return outcome;
    }

    qsizetype promised() const { return m_promised.size(); }

private:
    static Outcome &fail(Outcome &outcome, const QString &why)
    {
        outcome.failure = why;
        return outcome;
    }

    // How far a task got: 0 created, 1 timer started, 2 paused, 3 moved to
    // tomorrow, 4 completed. The write loop only creates and completes.
    int stageOf(const tarnwell::Task &task) const
    {
        if (task.completed())
            return 4;
        if (task.day() && task.day()->date() > m_calendar.startOfDay(task.createdAt()))
            return 3;
        if (task.actualSecondsFocused())
            return 2;
        if (task.activeStartedAt())
            return 1;
        return 0;
    }

    void check(Outcome &outcome)
    {
        tarnwell::PersistenceController store(m_file);
        QSqlQuery integrity(store.viewContext().database());
        if (!integrity.exec(QStringLiteral("PRAGMA integrity_check")) || !integrity.next() ||
            integrity.value(0).toString() != QLatin1String("ok")) {
            fail(outcome, QStringLiteral("integrity_check: %1").arg(integrity.value(0).toString()));
            return;
        }
        tarnwell::FetchRequest all;
        QHash<QString, int> stored;
        for (tarnwell::Task *task : store.viewContext().fetch<tarnwell::Task>(all))
            stored.insert(task->title(), stageOf(*task));
        for (auto it = m_promised.cbegin(); it != m_promised.cend(); ++it) {
            const auto found = stored.constFind(it.key());
            if (found == stored.cend()) {
                fail(outcome, QStringLiteral("lost %1").arg(it.key()));
                return;
            }
            if (found.value() < it.value()) {
                fail(outcome,
                     QStringLiteral("%1 is at stage %2 on disk, %3 was acknowledged")
                         .arg(it.key())
                         .arg(found.value())
                         .arg(it.value()));
                return;
            }
        }
    }

    QString m_writer;
    QString m_file;
    tarnwell::Calendar m_calendar;
    QHash<QString, int> m_promised; // title -> acknowledged stage
};
