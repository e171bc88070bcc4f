// The real agent while its session bus daemon dies and a new one starts at
// the same address (a crash, a session restarted under a running program):
// it keeps running, says so once, and on the new bus owns its name again,
// answers org.tarnwell.Tarnwell1 and registers its status item with the
// panel that is there now, and reads the sync password from the keyring
// there. The test runs its own bus daemon on a fixed socket in the test's
// runtime folder, since the harness's cannot be restarted.
#include "persistence/PersistenceController.h"
#include "platform/SecretServiceStore.h"
#include "services/SyncService.h"
#include "settings/SyncAccountStore.h"
#include "support/AppProcess.h"
#include "support/FakeStatusNotifierWatcher.h"
#include "support/Keyring.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace tarnwell;

namespace {

const QString agentName = QStringLiteral("org.tarnwell.Tarnwell");

// One dbus-daemon on `address`, up once it has printed the address back.
class BusDaemon
{
public:
    explicit BusDaemon(const QString &address)
    {
        m_process.start(QStringLiteral("dbus-daemon"),
                        {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                         QStringLiteral("--print-address=1"), QStringLiteral("--address=") + address});
        m_up = m_process.waitForReadyRead(5000);
    }
    ~BusDaemon() { kill(); }
    bool isUp() const { return m_up; }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    bool m_up = false;
};

// A call that lets the event loop run meanwhile (the watcher answers from here).
QDBusMessage call(QDBusConnection &bus, const QString &method, const QVariantList &arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(agentName, QStringLiteral("/org/tarnwell/Tarnwell"),
                                                          QStringLiteral("org.tarnwell.Tarnwell1"), method);
    message.setArguments(arguments);
    QDBusPendingCallWatcher pending(bus.asyncCall(message, 5000));
    if (!pending.isFinished())
        QSignalSpy(&pending, &QDBusPendingCallWatcher::finished).wait(6000);
    return pending.reply();
}

// What a sync pass run now ended with ("network": it got past the keyring).
QString syncProblem(QDBusConnection &bus)
{
    const QDBusMessage reply = call(bus, QStringLiteral("Sync"));
    return QJsonDocument::fromJson(reply.arguments().value(0).toString().toUtf8())
        .object()
        .value(QStringLiteral("error"))
        .toString(reply.errorMessage());
}

} // namespace

class BusRestartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agentComesBackOnANewSessionBus()
    {
        const QString socket = QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(QStringLiteral("session-bus"));
        const QString address = QStringLiteral("unix:path=") + socket;
        auto daemon = std::make_unique<BusDaemon>(address);
        QVERIFY(daemon->isUp());
        auto panel = std::make_unique<Panel>(address, QStringLiteral("panel-1"));
        QVERIFY(panel->isStarted());

        // A sync account whose password is in the keyring, and whose server is not there.
        QProcess keyring;
        QCOMPARE(test::startKeyring(keyring, panel->bus(), address), QString());
        QTemporaryDir home;
        {
            QDir().mkpath(home.filePath(QStringLiteral("data/tarnwell")));
            PersistenceController store(home.filePath(QStringLiteral("data/tarnwell/Tarnwell.sqlite")));
            const sync::SyncAccount account{QUrl(QStringLiteral("https://127.0.0.1:1/")), QStringLiteral("ada"),
                                            QUrl(QStringLiteral("https://127.0.0.1:1/ada/tasks/"))};
            QVERIFY(SyncAccountStore(store.viewContext()).setAccount(account, true));
            platform::SecretServiceStore secrets(panel->bus());
            const SecretStore::Result written = test::waitForSecret(
                [&](auto done) { secrets.write(SyncService::secretKey(account), QStringLiteral("pw"), done); });
            QVERIFY2(written.ok(), qPrintable(written.detail));
        }
        AppProcess app(home.path(), {QStringLiteral("--ui-test")},
                       {QStringLiteral("DBUS_SESSION_BUS_ADDRESS=") + address});
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QTRY_COMPARE_WITH_TIMEOUT(panel->registrations(), 1, 5000);
        QCOMPARE(call(panel->bus(), QStringLiteral("AddTask"), {QStringLiteral("Before"), 20, false}).type(),
                 QDBusMessage::ReplyMessage);
        QCOMPARE(syncProblem(panel->bus()), QStringLiteral("network"));

        // The daemon dies; the agent notices, says so once and goes on.
        test::stopKeyring(keyring);
        panel.reset();
        daemon->kill();
        QVERIFY2(app.waitFor(QStringLiteral("Lost the session bus")), qPrintable(app.log()));
        QFile::remove(socket); // a daemon killed outright leaves its socket behind
        QTest::qWait(700); // past the agent's first retry, which finds no bus
        QCOMPARE(app.process().state(), QProcess::Running);

        // A new daemon at the same address, with a panel on it.
        daemon = std::make_unique<BusDaemon>(address);
        QVERIFY(daemon->isUp());
        panel = std::make_unique<Panel>(address, QStringLiteral("panel-2"));
        QVERIFY(panel->isStarted());
        QCOMPARE(test::startKeyring(keyring, panel->bus(), address), QString());
        QVERIFY2(app.waitFor(QStringLiteral("Claimed org.tarnwell.Tarnwell on the new session bus"), 15000),
                 qPrintable(app.log()));
        QVERIFY(panel->bus().interface()->isServiceRegistered(agentName).value());
        QTRY_COMPARE_WITH_TIMEOUT(panel->registrations(), 1, 5000);
        QCOMPARE(panel->senders().value(0), panel->bus().interface()->serviceOwner(agentName).value());

        // The interface answers, and what it is given lands in the same store.
        const QDBusMessage added = call(panel->bus(), QStringLiteral("AddTask"), {QStringLiteral("After"), 15, false});
        QCOMPARE(added.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(added.arguments().value(0).toString(), QStringLiteral("After"));
        // The keyring (its files kept) answers the agent on the new bus too.
        QCOMPARE(syncProblem(panel->bus()), QStringLiteral("network"));
        QCOMPARE(app.log().count(QStringLiteral("Lost the session bus")), 1);
        test::stopKeyring(keyring);
        app.terminate();
        QVERIFY(app.finish());
        QCOMPARE(app.process().exitCode(), 0);
        {
            QSqlDatabase store = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
            store.setDatabaseName(home.filePath(QStringLiteral("data/tarnwell/Tarnwell.sqlite")));
            QVERIFY(store.open());
            QSqlQuery titles(QStringLiteral("SELECT title FROM tasks ORDER BY title"), store);
            QStringList stored;
            while (titles.next())
                stored << titles.value(0).toString();
            QCOMPARE(stored, (QStringList{QStringLiteral("After"), QStringLiteral("Before")}));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("check"));
    }
};

QTEST_GUILESS_MAIN(BusRestartTest)
#include "tst_bus_restart.moc"
