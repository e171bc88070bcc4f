// What the store promises when the process dies: every save that returned is
// on disk and the file is intact; a file that is not a store is never touched.
#include "CrashTrials.h"
#include "persistence/PersistenceController.h"
#include "persistence/Day.h"
#include "persistence/Task.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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
    void killedWritersLoseNothingThatWasSaved()
    {
        // A hundred kills, alternating between plain saves and focus-engine
        // bursts; the store carries over from trial to trial, so every trial
        // also opens what the earlier kills left behind.
        QTemporaryDir dir;
        CrashTrials trials(QStringLiteral(STORE_WRITER), dir.filePath(QStringLiteral("crash.sqlite")));
        auto *random = QRandomGenerator::global();
        int walsReplayed = 0;
        for (int trial = 0; trial < 100; ++trial) {
            const CrashTrials::Outcome outcome = trials.run(trial, int(random->bounded(0, 120)));
            QVERIFY2(outcome.ok(), qPrintable(QStringLiteral("trial %1: %2").arg(trial).arg(outcome.failure)));
            walsReplayed += outcome.walLeft ? 1 : 0;
        }
        qInfo("%lld tasks promised; %d kills left a WAL to replay", qlonglong(trials.promised()), walsReplayed);
        QVERIFY(trials.promised() > 100);
        QVERIFY(walsReplayed > 0);
    }

    void unusableStoreStopsTheProcessAndStaysUntouched_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not a database") << "garbage"
                                        << "file is not a database";
        QTest::newRow("a directory") << "directory"
                                     << "is a directory";
        QTest::newRow("newer version") << "newer"
                                       << "newer than this build";
        QTest::newRow("cut off") << "truncated"
                                 << "is cut off";
        QTest::newRow("read-only folder") << "readOnlyFolder"
                                          << "is read-only";
        QTest::newRow("read-only file") << "readOnlyFile"
                                        << "is read-only";
    }

    void unusableStoreStopsTheProcessAndStaysUntouched()
    {
        QFETCH(QString, kind);
        QFETCH(QString, reason);
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("tarnwell"));
        const QString file = folder + QStringLiteral("/Tarnwell.sqlite");
        QVERIFY(QDir().mkpath(folder));
        if (kind == QLatin1String("garbage")) {
            QByteArray garbage(8192, '\0');
            for (char &byte : garbage)
                byte = char(QRandomGenerator::global()->bounded(256));
            garbage.replace(0, 16, "not a database!!");
            QFile f(file);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(garbage);
        } else if (kind == QLatin1String("directory")) {
            QVERIFY(QDir().mkpath(file + QStringLiteral("/inside")));
        } else {
            makeStore(file, kind == QLatin1String("newer") ? 999 : 0);
            if (kind == QLatin1String("truncated"))
                QVERIFY(QFile::resize(file, QFileInfo(file).size() / 2));
            else if (kind == QLatin1String("readOnlyFile"))
                QVERIFY(QFile::setPermissions(file, QFileDevice::ReadOwner));
        }
        const QByteArray before = snapshot(file);
        const QDateTime modified = QFileInfo(file).lastModified();
        if (kind == QLatin1String("readOnlyFolder"))
            QVERIFY(QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner));

        QProcess opener;
        opener.start(QStringLiteral(STORE_WRITER), {QStringLiteral("open"), file});
        QVERIFY(opener.waitForFinished());
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        QVERIFY(opener.exitStatus() == QProcess::CrashExit || opener.exitCode() != 0);
        const QString errors = QString::fromUtf8(opener.readAllStandardError());
        QVERIFY2(errors.contains(QStringLiteral("Failed to load store file://")), qPrintable(errors));
        QVERIFY2(errors.contains(QStringLiteral("Failed to load persistent store: ")), qPrintable(errors));
        QVERIFY2(errors.contains(reason), qPrintable(errors));
        const int logAt = int(errors.indexOf(QStringLiteral("Failed to load store")));
        QVERIFY(logAt < errors.indexOf(QStringLiteral("Failed to load persistent store")));
        QCOMPARE(snapshot(file), before);
        QCOMPARE(QFileInfo(file).lastModified(), modified);
    }

private:
    // A closed store with a few tasks (several pages), at `version` if given.
    static void makeStore(const QString &file, int version)
    {
        {
            PersistenceController store(file);
            StoreContext &context = store.viewContext();
            auto *day = context.insertNew<Day>();
            day->setDate(QDateTime(QDate(2026, 3, 4), QTime(0, 0)));
            for (int i = 0; i < 200; ++i) {
                auto *task = context.insertNew<Task>();
                task->setTitle(QStringLiteral("task %1 with a title long enough to fill pages").arg(i));
                task->setDay(day);
                task->setCreatedAt(day->date());
                task->setUpdatedAt(day->date());
            }
            context.save();
            if (version) {
                QSqlQuery query(context.database());
                QVERIFY(query.exec(QStringLiteral("PRAGMA user_version = %1").arg(version)));
            }
        }
        QVERIFY(!QFile::exists(file + QStringLiteral("-wal"))); // closed: the log is folded in
    }

    // The bytes of a file, or the names in a directory.
    static QByteArray snapshot(const QString &path)
    {
        if (QFileInfo(path).isDir())
            return QDir(path).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(u'/').toUtf8();
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly))
            return QByteArrayLiteral("<unreadable>");
        return f.readAll();
    }
};

QTEST_GUILESS_MAIN(CrashSafetyTest)
#include "tst_crash_safety.moc"
