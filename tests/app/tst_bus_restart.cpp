// The real agent while its session bus daemon dies and a new one starts at
// the same address (a crash, a session restarted under a running program):
// it keeps running, says so once, and on the new bus owns its name again,
// answers org.tarnwell.Tarnwell1 and registers its status item with the
// panel that is there now. The test runs its own bus daemon on a fixed
// socket in the test's runtime folder, since the harness's cannot be restarted.
#include "support/AppProcess.h"
#include "support/FakeStatusNotifierWatcher.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

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

        QTemporaryDir home;
        AppProcess app(home.path(), {QStringLiteral("--ui-test")},
                       {QStringLiteral("DBUS_SESSION_BUS_ADDRESS=") + address});
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QTRY_COMPARE_WITH_TIMEOUT(panel->registrations(), 1, 5000);
        QCOMPARE(call(panel->bus(), QStringLiteral("AddTask"), {QStringLiteral("Before"), 20, false}).type(),
                 QDBusMessage::ReplyMessage);

        // The daemon dies; the agent notices, says so once and goes on.
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
        QVERIFY2(app.waitFor(QStringLiteral("Claimed org.tarnwell.Tarnwell on the new session bus"), 15000),
                 qPrintable(app.log()));
        QVERIFY(panel->bus().interface()->isServiceRegistered(agentName).value());
        QTRY_COMPARE_WITH_TIMEOUT(panel->registrations(), 1, 5000);
        QCOMPARE(panel->senders().value(0), panel->bus().interface()->serviceOwner(agentName).value());

        // The interface answers, and what it is given lands in the same store.
        const QDBusMessage added = call(panel->bus(), QStringLiteral("AddTask"), {QStringLiteral("After"), 15, false});
        QCOMPARE(added.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(added.arguments().value(0).toString(), QStringLiteral("After"));
        QCOMPARE(app.log().count(QStringLiteral("Lost the session bus")), 1);
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
