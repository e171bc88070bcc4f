// Two real agents syncing through one Radicale collection, driven only
// through the command line. Each has its own data and config folders; they
// run one after the other on the test's private bus (one agent per bus), with
// gnome-keyring-daemon on that bus holding the password. Where the keyring
// cannot start, the test is skipped (exit 77) and says why.
#include "persistence/PersistenceController.h"
#include "platform/SecretStoreChooser.h"
#include "support/Keyring.h"
#include "services/SyncService.h"
#include "settings/SyncAccountStore.h"
#include "support/AppProcess.h"
#include "support/Radicale.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

using namespace tarnwell;

namespace {

struct Result
{
    int code = -1;
    QString out;
    QString err;
};

// One side: its own folders, its account row written before its agent starts.
class Side
{
public:
    explicit Side(const sync::SyncAccount &account)
    {
        QDir().mkpath(m_home.filePath(QStringLiteral("data/tarnwell")));
        PersistenceController store(m_home.filePath(QStringLiteral("data/tarnwell/Tarnwell.sqlite")));
        SyncAccountStore accounts(store.viewContext());
        m_written = accounts.setAccount(account, true);
    }
    bool written() const { return m_written; }
    QString storePath() const { return m_home.filePath(QStringLiteral("data/tarnwell/Tarnwell.sqlite")); }

    bool start(QString *why)
    {
        m_agent = std::make_unique<AppProcess>(m_home.path(), QStringList{QStringLiteral("--ui-test")},
                                               QStringList{QStringLiteral("LANGUAGE=en")});
        const bool up = m_agent->waitFor(QStringLiteral("Interface installed"), 15000);
        if (!up)
            *why = m_agent->log();
        return up;
    }
    bool stop()
    {
        m_agent->terminate();
        const bool done = m_agent->finish() && m_agent->process().exitCode() == 0;
        m_agent.reset();
        return done;
    }
    QString log() const { return m_agent ? m_agent->log() : QString(); }

    Result run(const QStringList &arguments) const
    {
        QProcess command;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("LANGUAGE"), QStringLiteral("en"));
        command.setProcessEnvironment(env);
        command.start(QStringLiteral(TARNWELL_BINARY), arguments);
        if (!command.waitForFinished(30000))
            return {-2, {}, QStringLiteral("still running after 30 s")};
        return {command.exitStatus() == QProcess::NormalExit ? command.exitCode() : -1,
                QString::fromUtf8(command.readAllStandardOutput()), QString::fromUtf8(command.readAllStandardError())};
    }
    QJsonArray tasks() const
    {
        return QJsonDocument::fromJson(run({QStringLiteral("list"), QStringLiteral("--json")}).out.toUtf8()).array();
    }

private:
    QTemporaryDir m_home;
    std::unique_ptr<AppProcess> m_agent;
    bool m_written = false;
};

SecretStore::Result writeSecret(const QString &key, const QString &password)
{
    auto store = platform::chooseSecretStore(QDBusConnection::sessionBus());
    std::optional<SecretStore::Result> result;
    store->write(key, password, [&](const SecretStore::Result &r) { result = r; });
    if (!QTest::qWaitFor([&] { return result.has_value(); }, 15000)) {
        SecretStore::Result timedOut;
        timedOut.status = SecretStore::Result::Status::failed;
        timedOut.detail = QStringLiteral("no answer in 15 s");
        return timedOut;
    }
    return *result;
}

QString describe(const Result &r)
{
    return QStringLiteral("exit %1\nout: %2\nerr: %3").arg(r.code).arg(r.out, r.err);
}

} // namespace

class SyncE2eTest : public QObject
{
    Q_OBJECT

    test::Radicale m_radicale;
    QNetworkAccessManager m_network;
    sync::SyncAccount m_account;

private Q_SLOTS:
    void initTestCase()
    {
        QString why;
        QVERIFY2(m_radicale.start(&why), qPrintable(why));
        QCOMPARE(m_radicale.makeCalendar(m_network, QStringLiteral("/alice/tasks/"), QStringLiteral("Tasks"),
                                         QStringLiteral("VTODO")),
                 201);
        m_account = {m_radicale.base(), m_radicale.user, m_radicale.url(QStringLiteral("/alice/tasks/"))};
        const SecretStore::Result written = writeSecret(SyncService::secretKey(m_account), m_radicale.password);
        QVERIFY2(written.ok(), qPrintable(written.detail));
    }

    void aTaskAndItsCompletionTravelBetweenTwoAgents()
    {
        Side a(m_account), b(m_account);
        QVERIFY(a.written() && b.written());
        QString why;

        QVERIFY2(a.start(&why), qPrintable(why));
        Result r = a.run({QStringLiteral("add"), QStringLiteral("Write the report · 45m")});
        QVERIFY2(r.code == 0, qPrintable(describe(r)));
        r = a.run({QStringLiteral("sync")});
        QVERIFY2(r.code == 0, qPrintable(describe(r) + a.log()));
        QVERIFY2(r.out.startsWith(QLatin1String("Synced: ")), qPrintable(r.out));
        QVERIFY(a.stop());

        QVERIFY2(b.start(&why), qPrintable(why));
        r = b.run({QStringLiteral("sync")});
        QVERIFY2(r.code == 0, qPrintable(describe(r) + b.log()));
        QJsonArray tasks = b.tasks();
        QCOMPARE(tasks.size(), 1);
        QJsonObject task = tasks.at(0).toObject();
        QCOMPARE(task.value(QStringLiteral("title")).toString(), QStringLiteral("Write the report"));
        QCOMPARE(task.value(QStringLiteral("durationMinutes")).toInt(), 45);
        QCOMPARE(task.value(QStringLiteral("completed")).toBool(), false);
        r = b.run({QStringLiteral("done"), task.value(QStringLiteral("id")).toString()});
        QVERIFY2(r.code == 0, qPrintable(describe(r)));
        r = b.run({QStringLiteral("sync")});
        QVERIFY2(r.code == 0, qPrintable(describe(r) + b.log()));
        QVERIFY(b.stop());

        QVERIFY2(a.start(&why), qPrintable(why));
        r = a.run({QStringLiteral("sync")});
        QVERIFY2(r.code == 0, qPrintable(describe(r) + a.log()));
        tasks = a.tasks();
        QCOMPARE(tasks.size(), 1);
        task = tasks.at(0).toObject();
        QCOMPARE(task.value(QStringLiteral("title")).toString(), QStringLiteral("Write the report"));
        QCOMPARE(task.value(QStringLiteral("completed")).toBool(), true);

        r = a.run({QStringLiteral("sync"), QStringLiteral("--status"), QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonObject status = QJsonDocument::fromJson(r.out.toUtf8()).object();
        QCOMPARE(status.value(QStringLiteral("state")).toString(), QStringLiteral("idle"));
        const QDateTime last = QDateTime::fromString(status.value(QStringLiteral("lastSync")).toString(), Qt::ISODate);
        QVERIFY2(last.isValid() && qAbs(last.secsTo(QDateTime::currentDateTimeUtc())) < 120, qPrintable(r.out));
        QVERIFY2(!status.contains(QStringLiteral("lastError")), qPrintable(r.out));

        // The keyring now holds another password: the pass is refused and the tasks stay as they were.
        const QJsonArray before = a.tasks();
        const SecretStore::Result written =
            writeSecret(SyncService::secretKey(m_account), QStringLiteral("not the password"));
        QVERIFY2(written.ok(), qPrintable(written.detail));
        r = a.run({QStringLiteral("sync")});
        QCOMPARE(r.code, 7);
        QVERIFY2(r.err.contains(QLatin1String("The server did not accept the user name or password.")),
                 qPrintable(describe(r)));
        QCOMPARE(a.tasks(), before);
        r = a.run({QStringLiteral("sync"), QStringLiteral("--status"), QStringLiteral("--json")});
        QCOMPARE(QJsonDocument::fromJson(r.out.toUtf8()).object().value(QStringLiteral("state")).toString(),
                 QStringLiteral("error"));
        QVERIFY(a.stop());
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    return tarnwell::test::withKeyring("tst_sync_e2e", [&](QProcess &) {
        SyncE2eTest test;
        return QTest::qExec(&test, argc, argv);
    });
}

#include "tst_sync_e2e.moc"
