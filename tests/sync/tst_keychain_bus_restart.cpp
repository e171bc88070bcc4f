// The keyring while the session bus daemon dies and a new one starts at the
// same address: a program that has used the keyring keeps running (nothing
// of GIO ends it with SIGTERM) and, given the new connection, is answered
// there. The test runs its own bus daemon and gnome-keyring-daemon
// on a socket in the test's runtime folder; where either is missing it is
// skipped (exit 77) and says why.
#include "platform/SecretServiceStore.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include "support/Keyring.h"

#include <csignal>
#include <cstdio>

using namespace tarnwell;

namespace {

volatile std::sig_atomic_t terminated = 0;

// A bus daemon at `address` with an unlocked keyring on it.
class BusWithKeyring
{
public:
    explicit BusWithKeyring(const QString &address)
    {
        m_bus.start(QStringLiteral("dbus-daemon"),
                    {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                     QStringLiteral("--print-address=1"), QStringLiteral("--address=") + address});
        if (!m_bus.waitForReadyRead(5000))
            return;
        {
            const QDBusConnection probe = QDBusConnection::connectToBus(address, QStringLiteral("probe"));
            m_up = test::startKeyring(m_keyring, probe, address).isEmpty();
        }
        QDBusConnection::disconnectFromBus(QStringLiteral("probe"));
    }
    ~BusWithKeyring()
    {
        for (QProcess *p : {&m_keyring, &m_bus}) {
            p->kill();
            p->waitForFinished();
        }
    }
    bool isUp() const { return m_up; }

private:
    QProcess m_bus;
    QProcess m_keyring;
    bool m_up = false;
};

} // namespace

class KeychainBusRestartTest : public QObject
{
    Q_OBJECT

public:
    QString address;

private Q_SLOTS:
    void keyringUsersOutliveTheirBus()
    {
        auto bus = std::make_unique<BusWithKeyring>(address);
        QVERIFY(bus->isUp());
        platform::SecretServiceStore store(QDBusConnection::connectToBus(address, QStringLiteral("before")));
        const QString account = QStringLiteral("ada@https://dav.example/");
        SecretStore::Result r =
            test::waitForSecret([&](auto done) { store.write(account, QStringLiteral("s3cret"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = test::waitForSecret([&](auto done) { store.read(account, done); });
        QCOMPARE(r.password, QStringLiteral("s3cret"));

        bus.reset();
        QTest::qWait(1000);
        QVERIFY2(!terminated, "the bus going away ended the program");
        r = test::waitForSecret([&](auto done) { store.read(account, done); });
        QCOMPARE(r.status, SecretStore::Result::Status::unavailable);

        bus = std::make_unique<BusWithKeyring>(address);
        QVERIFY(bus->isUp());
        store.rebind(QDBusConnection::connectToBus(address, QStringLiteral("after")));
        r = test::waitForSecret([&](auto done) { store.write(account, QStringLiteral("after the restart"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = test::waitForSecret([&](auto done) { store.read(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        QCOMPARE(r.password, QStringLiteral("after the restart"));
        QVERIFY(!terminated);
    }
};

int main(int argc, char *argv[])
{
    for (const char *tool : {"dbus-daemon", "gnome-keyring-daemon"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) {
            std::printf("tst_keychain_bus_restart: SKIPPED: %s is not installed\n", tool);
            return 77;
        }
    std::signal(SIGTERM, [](int) { terminated = 1; });
    // Before anything connects: GIO and Qt read the address once.
    const QString address = QStringLiteral("unix:path=") +
        QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(QStringLiteral("keychain-bus"));
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    QCoreApplication app(argc, argv);
    KeychainBusRestartTest test;
    test.address = address;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keychain_bus_restart.moc"
