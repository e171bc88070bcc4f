// A real keyring for the tests that store passwords: gnome-keyring-daemon's
// secret service on the test's private session bus, unlocked, for the run of
// one test program. Where it cannot run, the program is skipped (exit 77)
// and says why.
#pragma once

#include "kit/SecretStore.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <cstdio>
#include <functional>
#include <optional>

namespace tarnwell::test {

// Runs one keyring call and waits for its answer; a call that gets none in
// `timeoutMs` comes back as failed.
inline SecretStore::Result waitForSecret(const std::function<void(SecretStore::Done)> &call, int timeoutMs = 20000)
{
    std::optional<SecretStore::Result> result;
    call([&](const SecretStore::Result &r) { result = r; });
    if (!QTest::qWaitFor([&] { return result.has_value(); }, timeoutMs)) {
        SecretStore::Result timedOut;
        timedOut.status = SecretStore::Result::Status::failed;
        timedOut.detail = QStringLiteral("no answer in %1 s").arg(timeoutMs / 1000);
        return timedOut;
    }
    return *result;
}

inline bool secretsOnBus(const QDBusConnection &bus = QDBusConnection::sessionBus())
{
    return bus.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.secrets")).value();
}

// Starts gnome-keyring-daemon, unlocked, and waits for it on `bus` (whose
// address it is given when it is not the session bus); "" or why not.
inline QString startKeyring(QProcess &daemon, const QDBusConnection &bus = QDBusConnection::sessionBus(),
                            const QString &address = {})
{
    const QString executable = QStandardPaths::findExecutable(QStringLiteral("gnome-keyring-daemon"));
    if (executable.isEmpty())
        return QStringLiteral("gnome-keyring-daemon is not installed (scripts/setup.sh installs it)");
    if (!address.isEmpty()) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        daemon.setProcessEnvironment(env);
    }
    daemon.setProcessChannelMode(QProcess::ForwardedChannels);
    daemon.start(executable,
                 {QStringLiteral("--foreground"), QStringLiteral("--unlock"), QStringLiteral("--components=secrets")});
    if (!daemon.waitForStarted(5000))
        return QStringLiteral("gnome-keyring-daemon did not start: %1").arg(daemon.errorString());
    daemon.write("test password");
    daemon.closeWriteChannel();
    // Not before it owns its name: a call meanwhile would start a second,
    // locked keyring through the bus's activation.
    if (!QTest::qWaitFor([&bus] { return secretsOnBus(bus); }, 10000)) {
        daemon.kill();
        daemon.waitForFinished();
        return QStringLiteral("gnome-keyring-daemon did not claim org.freedesktop.secrets within 10 s");
    }
    return {};
}

inline void stopKeyring(QProcess &daemon)
{
    daemon.terminate();
    if (!daemon.waitForFinished(5000))
        daemon.kill();
}

// The same keyring (its files stay) in a new daemon process.
inline bool restartKeyring(QProcess &daemon)
{
    stopKeyring(daemon);
    if (!QTest::qWaitFor([] { return !secretsOnBus(); }, 5000))
        return false;
    return startKeyring(daemon).isEmpty();
}

// Starts the keyring, runs `tests(daemon)` and stops the keyring again;
// returns what `tests` returned, or 77 when there is no keyring to be had.
template<typename Tests>
int withKeyring(const char *program, Tests &&tests)
{
    const auto skip = [program](const QString &why) {
        std::printf("%s: SKIPPED: %s\n", program, qPrintable(why));
        return 77;
    };
    if (secretsOnBus())
        return skip(QStringLiteral("a keyring already runs on the test's bus"));
    QProcess daemon;
    if (const QString why = startKeyring(daemon); !why.isEmpty())
        return skip(why);
    const int result = tests(daemon);
    stopKeyring(daemon);
    return result;
}

} // namespace tarnwell::test
