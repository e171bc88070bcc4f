// Sync passwords in a real keyring: gnome-keyring-daemon on the test's
// private session bus, unlocked with a test password. Where the daemon
// cannot start, the test is skipped (exit 77) and says why.
#include "platform/KeychainSecretStore.h"
#include "support/Keyring.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QProcess>
#include <QTest>

using namespace tarnwell;

class KeychainTest : public QObject
{
    Q_OBJECT

public:
    QProcess *daemon = nullptr;

private Q_SLOTS:
    void passwordsGoInAndOut()
    {
        QVERIFY(daemon);
        const QDBusConnection bus = QDBusConnection::sessionBus();
        auto store = platform::chooseSecretStore(bus);
        QVERIFY(store);
        QCOMPARE(store->name(), QStringLiteral("Secret Service"));
        const QString account = QStringLiteral("ada@https://dav.example/");

        SecretStore::Result r = test::waitForSecret([&](auto done) { store->read(account, done); });
        QCOMPARE(r.status, SecretStore::Result::Status::notFound);
        r = test::waitForSecret([&](auto done) { store->write(account, QStringLiteral("s3cret ünïcode"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = test::waitForSecret([&](auto done) { store->read(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        QCOMPARE(r.password, QStringLiteral("s3cret ünïcode"));
        // Another account is another entry.
        r = test::waitForSecret([&](auto done) { store->read(QStringLiteral("bob@https://dav.example/"), done); });
        QCOMPARE(r.status, SecretStore::Result::Status::notFound);
        r = test::waitForSecret([&](auto done) { store->remove(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = test::waitForSecret([&](auto done) { store->read(account, done); });
        QCOMPARE(r.status, SecretStore::Result::Status::notFound);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    return tarnwell::test::withKeyring("tst_keychain", [&](QProcess &daemon) {
        KeychainTest test;
        test.daemon = &daemon;
        return QTest::qExec(&test, argc, argv);
    });
}

#include "tst_keychain.moc"
