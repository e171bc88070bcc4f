// What the store promises when the process dies: every save that returned is
// on disk and the file is intact; a file that is not a store is never touched.
#include "persistence/PersistenceController.h"
#include "persistence/Task.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace tarnwell;

class CrashSafetyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void killedWriterLosesNothingThatWasSaved()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("crash.sqlite"));
        QHash<QString, bool> promised; // title -> completed
        auto *random = QRandomGenerator::global();
        const int rounds = 12;
        for (int round = 0; round < rounds; ++round) {
            QProcess writer;
            writer.start(QStringLiteral(STORE_WRITER),
                         {QStringLiteral("write"), file, QStringLiteral("r%1").arg(round)});
            QVERIFY(writer.waitForStarted());
            // Let it write for a random while, then kill it mid-flight.
            QTest::qWait(int(random->bounded(40, 400)));
            ::kill(pid_t(writer.processId()), SIGKILL);
            QVERIFY(writer.waitForFinished());
            const auto lines = writer.readAllStandardOutput().split('\n');
            int created = 0;
            for (const QByteArray &line : lines) {
                if (line.startsWith("created ")) {
                    promised.insert(QString::fromUtf8(line.mid(8)), false);
                    ++created;
                } else if (line.startsWith("completed ")) {
                    promised.insert(QString::fromUtf8(line.mid(10)), true);
                }
            }

            PersistenceController store(file);
            QSqlQuery check(store.viewContext().database());
            QVERIFY(check.exec(QStringLiteral("PRAGMA integrity_check")) && check.next());
            QCOMPARE(check.value(0).toString(), QStringLiteral("ok"));
            FetchRequest all;
            QHash<QString, bool> stored;
            for (Task *task : store.viewContext().fetch<Task>(all))
                stored.insert(task->title(), task->completed());
            for (auto it = promised.cbegin(); it != promised.cend(); ++it) {
                QVERIFY2(stored.contains(it.key()), qPrintable(QStringLiteral("lost %1").arg(it.key())));
                if (it.value())
                    QVERIFY2(stored.value(it.key()), qPrintable(QStringLiteral("lost completion of %1").arg(it.key())));
            }
            qInfo("round %d: %d tasks saved before the kill, %lld in the store", round, created,
                  qlonglong(stored.size()));
        }
        QVERIFY(promised.size() > rounds); // the writer really wrote
    }

    void unreadableStoreStopsTheProcessAndStaysUntouched()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        QByteArray garbage(8192, '\0');
        for (char &byte : garbage)
            byte = char(QRandomGenerator::global()->bounded(256));
        garbage.replace(0, 16, "not a database!!");
        {
            QFile f(file);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(garbage);
        }
        QProcess opener;
        opener.start(QStringLiteral(STORE_WRITER), {QStringLiteral("open"), file});
        QVERIFY(opener.waitForFinished());
        QVERIFY(opener.exitStatus() == QProcess::CrashExit || opener.exitCode() != 0);
        const QString errors = QString::fromUtf8(opener.readAllStandardError());
        QVERIFY2(errors.contains(QStringLiteral("Failed to load store file://")), qPrintable(errors));
        QVERIFY2(errors.contains(QStringLiteral("Failed to load persistent store: ")), qPrintable(errors));
        const int logAt = int(errors.indexOf(QStringLiteral("Failed to load store")));
        QVERIFY(logAt < errors.indexOf(QStringLiteral("Failed to load persistent store")));
        QFile f(file);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), garbage);
    }
};

QTEST_GUILESS_MAIN(CrashSafetyTest)
#include "tst_crash_safety.moc"
