// Sync passwords in a real keyring: gnome-keyring-daemon on the test's
// private session bus, unlocked with a test password. Where the daemon
// cannot start, the test is skipped (exit 77) and says why.
#include "platform/KeychainSecretStore.h"
#include "platform/SecretServiceStore.h"
#include "platform/SecretStoreChooser.h"
#include "support/Keyring.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QProcess>
#include <QTest>

using namespace tarnwell;
using Status = SecretStore::Result::Status;

namespace {

const QString account = QStringLiteral("ada@https://dav.example/");

QDBusMessage secretServiceCall(const QString &path, const QString &interface, const QString &method,
                               const QVariantList &arguments = {})
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.secrets"), path, interface, method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call);
}

// Every entry of the account, locked or not.
QList<QDBusObjectPath> entriesOf(const QString &user)
{
    const QDBusMessage reply = secretServiceCall(
        QStringLiteral("/org/freedesktop/secrets"), QStringLiteral("org.freedesktop.Secret.Service"),
        QStringLiteral("SearchItems"), {QVariant::fromValue(QMap<QString, QString>{{QStringLiteral("user"), user}})});
    return qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0)) +
        qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(1));
}

} // namespace

class KeychainTest : public QObject
{
    Q_OBJECT

public:
    QProcess *daemon = nullptr;

private:
    SecretStore::Result call(const std::function<void(SecretStore::Done)> &call) { return test::waitForSecret(call); }

private Q_SLOTS:
    void initTestCase() { qDBusRegisterMetaType<QMap<QString, QString>>(); }

    void passwordsGoInAndOut()
    {
        auto store = platform::chooseSecretStore(QDBusConnection::sessionBus());
        QVERIFY(store);
        QCOMPARE(store->name(), QStringLiteral("Secret Service"));

        SecretStore::Result r = call([&](auto done) { store->read(account, done); });
        QCOMPARE(r.status, Status::notFound);
        r = call([&](auto done) { store->write(account, QStringLiteral("first"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = call([&](auto done) { store->write(account, QStringLiteral("s3cret ünïcode"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = call([&](auto done) { store->read(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        QCOMPARE(r.password, QStringLiteral("s3cret ünïcode"));
        QCOMPARE(entriesOf(account).size(), 1); // overwritten, not added beside
        // Another account is another entry.
        r = call([&](auto done) { store->read(QStringLiteral("bob@https://dav.example/"), done); });
        QCOMPARE(r.status, Status::notFound);
        r = call([&](auto done) { store->remove(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = call([&](auto done) { store->read(account, done); });
        QCOMPARE(r.status, Status::notFound);
        // Removing what is not there is what removing wants.
        r = call([&](auto done) { store->remove(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
    }

    // Passwords kept by earlier versions through QtKeychain are found, and
    // replaced in place: the entry keeps QtKeychain's attributes.
    void passwordsFromQtKeychainAreFound()
    {
        platform::KeychainSecretStore earlier(QStringLiteral("Secret Service"));
        platform::SecretServiceStore store(QDBusConnection::sessionBus());
        SecretStore::Result r = call([&](auto done) { earlier.write(account, QStringLiteral("from before"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = call([&](auto done) { store.read(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        QCOMPARE(r.password, QStringLiteral("from before"));

        r = call([&](auto done) { store.write(account, QStringLiteral("changed"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        const QList<QDBusObjectPath> entries = entriesOf(account);
        QCOMPARE(entries.size(), 1);
        const QDBusMessage attributes = secretServiceCall(
            entries.first().path(), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
            {QStringLiteral("org.freedesktop.Secret.Item"), QStringLiteral("Attributes")});
        const auto filed =
            qdbus_cast<QMap<QString, QString>>(attributes.arguments().value(0).value<QDBusVariant>().variant());
        QCOMPARE(filed,
                 (QMap<QString, QString>{{QStringLiteral("user"), account},
                                         {QStringLiteral("server"), QStringLiteral("org.tarnwell.Tarnwell")},
                                         {QStringLiteral("type"), QStringLiteral("plaintext")},
                                         {QStringLiteral("xdg:schema"), QStringLiteral("org.qt.keychain")}}));
        r = call([&](auto done) { earlier.read(account, done); });
        QCOMPARE(r.password, QStringLiteral("changed"));
    }

    // A keyring daemon that restarts forgets our session: it is opened again.
    void aRestartedKeyringIsAskedAgain()
    {
        platform::SecretServiceStore store(QDBusConnection::sessionBus());
        SecretStore::Result r = call([&](auto done) { store.write(account, QStringLiteral("kept"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        QVERIFY(test::restartKeyring(*daemon));
        r = call([&](auto done) { store.read(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        QCOMPARE(r.password, QStringLiteral("kept"));
    }

    // Last: the keyring stays locked from here on.
    void aLockedKeyringIsNotReadPastItsPrompt()
    {
        platform::SecretServiceStore store(QDBusConnection::sessionBus());
        const QDBusMessage locked = secretServiceCall(
            QStringLiteral("/org/freedesktop/secrets"), QStringLiteral("org.freedesktop.Secret.Service"),
            QStringLiteral("Lock"),
            {QVariant::fromValue(QList<QDBusObjectPath>{QDBusObjectPath("/org/freedesktop/secrets/aliases/default")})});
        QCOMPARE(locked.type(), QDBusMessage::ReplyMessage);
        // Headless, gnome-keyring's prompt cannot be shown and counts as dismissed.
        SecretStore::Result r = call([&](auto done) { store.read(account, done); });
        QCOMPARE(r.status, Status::denied);
        r = call([&](auto done) { store.write(account, QStringLiteral("new"), done); });
        QCOMPARE(r.status, Status::denied);
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
