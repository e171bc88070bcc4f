// `tarnwell sync` against an agent on a private bus: the agent's side (the
// bus object and the sync service over a stand-in pass) runs in this
// process, the command line as a process of its own.
#include "kit/Translations.h"
#include "persistence/AgentPresence.h"
#include "persistence/PersistenceController.h"
#include "platform/AutomationBus.h"
#include "services/SyncService.h"
#include "settings/SyncAccountStore.h"
#include "support/FakeSync.h"
#include "support/ManualClock.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;
using sync::CalDavError;

namespace {

struct Result
{
    int code = -1;
    QString out;
    QString err;
};

struct Agent
{
    ManualClock time;
    PersistenceController store{true};
    SyncAccountStore accounts{store.viewContext()};
    FakePass pass;
    FakeSecrets secrets;
    SyncService service{{accounts, &secrets, &pass, time.clock()}};
    platform::AutomationBus bus{QDBusConnection::sessionBus()};
    AgentPresence presence; // as the agent marks the store the command line opens

    explicit Agent(const QString &home)
    {
        bus.setSync(&service);
        service.start();
        presence.hold(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"));
    }
    void setUp()
    {
        service.setAccount({QUrl(QStringLiteral("https://dav.example/")), QStringLiteral("ada"),
                            QUrl(QStringLiteral("https://dav.example/ada/tasks/"))},
                           QStringLiteral("pw"), {});
        pass.answer(); // the pass that setting up starts
    }
};

class Command
{
public:
    Command(const QString &home, const QStringList &arguments)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
        env.insert(QStringLiteral("LANGUAGE"), QStringLiteral("en"));
        m_process.setProcessEnvironment(env);
        m_process.start(QStringLiteral(TARNWELL_BINARY), arguments);
    }
    // Serves the bus from this thread's loop until the command ends.
    Result finish()
    {
        if (!QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, 20000))
            return {-2, {}, QStringLiteral("still running after 20 s")};
        return {m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1,
                QString::fromUtf8(m_process.readAllStandardOutput()),
                QString::fromUtf8(m_process.readAllStandardError())};
    }
    bool running() const { return m_process.state() != QProcess::NotRunning; }

private:
    QProcess m_process;
};

Result run(const QString &home, const QStringList &arguments)
{
    Command command(home, arguments);
    return command.finish();
}

} // namespace

class SyncCliTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

private Q_SLOTS:
    void initTestCase()
    {
        static Translations translations;
        translations.install(QStringLiteral("en"));
    }

    void withoutAnAgent()
    {
        Result r = run(m_home.path(), {QStringLiteral("sync")});
        QCOMPARE(r.code, 5);
        QVERIFY2(r.err.contains(QLatin1String("not running")), qPrintable(r.err));
        r = run(m_home.path(), {QStringLiteral("sync"), QStringLiteral("--status")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("State: Tarnwell is not running\nLast sync: never\n"));
    }

    void syncWaitsForThePassAndTellsItsOutcome()
    {
        Agent agent(m_home.path());
        QCOMPARE(agent.bus.claim(), platform::ApplicationBus::Role::primary);

        // Sync off: refused at once.
        Result r = run(m_home.path(), {QStringLiteral("sync")});
        QCOMPARE(r.code, 7);
        QCOMPARE(r.err, QStringLiteral("tarnwell: Sync is off. Set it up in Settings, Sync.\n"));

        agent.setUp();
        {
            Command sync(m_home.path(), {QStringLiteral("sync")});
            QTRY_VERIFY(agent.pass.running());
            QTest::qWait(200);
            QVERIFY(sync.running()); // still waiting for the pass
            agent.pass.answer(CalDavError::none, 2, 1);
            r = sync.finish();
        }
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("Synced: 2 in, 1 out, 0 removed.\n"));

        {
            Command sync(m_home.path(), {QStringLiteral("sync"), QStringLiteral("--json")});
            QTRY_VERIFY(agent.pass.running());
            agent.pass.answer(CalDavError::network);
            r = sync.finish();
        }
        QCOMPARE(r.code, 7);
        const QJsonObject report = QJsonDocument::fromJson(r.out.toUtf8()).object();
        QCOMPARE(report.value(QStringLiteral("ok")).toBool(true), false);
        QCOMPARE(report.value(QStringLiteral("error")).toString(), QStringLiteral("network"));
        QVERIFY2(r.err.contains(QLatin1String("cannot be reached")), qPrintable(r.err));

        r = run(m_home.path(), {QStringLiteral("sync"), QStringLiteral("--status")});
        QCOMPARE(r.code, 0);
        QVERIFY2(r.out.startsWith(QStringLiteral("Server: https://dav.example/ (as ada)\n"
                                                 "Calendar: https://dav.example/ada/tasks/\n"
                                                 "State: the last sync failed\nLast sync: ")),
                 qPrintable(r.out));
        QVERIFY(
            r.out.endsWith(QStringLiteral("Last error: The server cannot be reached. Tarnwell tries again later.\n")));
        r = run(m_home.path(), {QStringLiteral("sync"), QStringLiteral("--status"), QStringLiteral("--json")});
        const QJsonObject status = QJsonDocument::fromJson(r.out.toUtf8()).object();
        QCOMPARE(status.value(QStringLiteral("state")).toString(), QStringLiteral("error"));
        QCOMPARE(status.value(QStringLiteral("lastSync")).toString(), agent.time.now.toString(Qt::ISODate));

        // The agent quitting during the pass still answers the waiting command.
        {
            Command sync(m_home.path(), {QStringLiteral("sync")});
            QTRY_VERIFY(agent.pass.running());
            agent.service.shutdown();
            r = sync.finish();
        }
        QCOMPARE(r.code, 7);
        QCOMPARE(agent.pass.cancels, 1);
        QVERIFY2(r.err.contains(QLatin1String("stopped before it finished")), qPrintable(r.err));
    }
};

QTEST_GUILESS_MAIN(SyncCliTest)
#include "tst_sync_cli.moc"
