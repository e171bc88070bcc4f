// Sync passwords in a real keyring: gnome-keyring-daemon on the test's
// private session bus, unlocked with a test password. Where the daemon
// cannot start, the test is skipped (exit 77) and says why.
#include "platform/KeychainSecretStore.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <cstdio>

using namespace tarnwell;

namespace {

SecretStore::Result waitFor(const std::function<void(SecretStore::Done)> &call)
{
    std::optional<SecretStore::Result> result;
    call([&](const SecretStore::Result &r) { result = r; });
    if (!QTest::qWaitFor([&] { return result.has_value(); }, 15000)) {
        SecretStore::Result timedOut;
        timedOut.status = SecretStore::Result::Status::failed;
        timedOut.detail = QStringLiteral("no answer in 15 s");
        return timedOut;
    }
    return *result;
}

} // namespace

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

        SecretStore::Result r = waitFor([&](auto done) { store->read(account, done); });
        QCOMPARE(r.status, SecretStore::Result::Status::notFound);
        r = waitFor([&](auto done) { store->write(account, QStringLiteral("s3cret ünïcode"), done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = waitFor([&](auto done) { store->read(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        QCOMPARE(r.password, QStringLiteral("s3cret ünïcode"));
        // Another account is another entry.
        r = waitFor([&](auto done) { store->read(QStringLiteral("bob@https://dav.example/"), done); });
        QCOMPARE(r.status, SecretStore::Result::Status::notFound);
        r = waitFor([&](auto done) { store->remove(account, done); });
        QVERIFY2(r.ok(), qPrintable(r.detail));
        r = waitFor([&](auto done) { store->read(account, done); });
        QCOMPARE(r.status, SecretStore::Result::Status::notFound);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const auto skip = [](const QString &why) {
        std::printf("tst_keychain: SKIPPED: %s\n", qPrintable(why));
        return 77;
    };
    if (QDBusConnection::sessionBus().interface()->isServiceRegistered(QStringLiteral("org.freedesktop.secrets")))
        return skip(QStringLiteral("a keyring already runs on the test's bus"));
    const QString program = QStandardPaths::findExecutable(QStringLiteral("gnome-keyring-daemon"));
    if (program.isEmpty())
        return skip(QStringLiteral("gnome-keyring-daemon is not installed (scripts/setup.sh installs it)"));
    QProcess daemon;
    daemon.setProcessChannelMode(QProcess::ForwardedChannels);
    daemon.start(program,
                 {QStringLiteral("--foreground"), QStringLiteral("--unlock"), QStringLiteral("--components=secrets")});
    if (!daemon.waitForStarted(5000))
        return skip(QStringLiteral("gnome-keyring-daemon did not start: %1").arg(daemon.errorString()));
    daemon.write("test password");
    daemon.closeWriteChannel();
    const bool up = QTest::qWaitFor(
        [] {
            return QDBusConnection::sessionBus().interface()->isServiceRegistered(
                QStringLiteral("org.freedesktop.secrets"));
        },
        10000);
    if (!up) {
        daemon.kill();
        daemon.waitForFinished();
        return skip(QStringLiteral("gnome-keyring-daemon did not claim org.freedesktop.secrets within 10 s"));
    }
    KeychainTest test;
    test.daemon = &daemon;
    const int result = QTest::qExec(&test, argc, argv);
    daemon.terminate();
    if (!daemon.waitForFinished(5000))
        daemon.kill();
    return result;
}

#include "tst_keychain.moc"
