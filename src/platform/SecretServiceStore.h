#pragma once

#include "kit/SecretStore.h"

#include <QDBusConnection>
#include <QMap>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class QDBusError;
class QDBusMessage;
class QDBusObjectPath;
class QDBusVariant;

namespace tarnwell::platform {

// Passwords in the desktop's keyring through the freedesktop Secret Service
// (GNOME Keyring, KeePassXC, KWallet's bridge, ...), spoken over the
// connection it is given. Every call is asynchronous. The session with the
// service belongs to one connection: `rebind` hands over a new one after the
// session bus came back, and the session is opened again there.
//
// Entries carry the attributes QtKeychain gave them when it kept our
// passwords, so that passwords stored by earlier versions are found.
class SecretServiceStore : public QObject, public SecretStore
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *service = "org.freedesktop.secrets";
        // The `server` attribute and the label of every entry.
        static constexpr const char *application = "org.tarnwell.Tarnwell";
        static constexpr const char *schema = "org.qt.keychain";
        // A keyring prompt nobody answers gives up after this, so sync goes on.
        static constexpr std::chrono::minutes promptWait{5};
    };

    explicit SecretServiceStore(QDBusConnection bus, QObject *parent = nullptr);
    ~SecretServiceStore() override;

    QString name() const override { return QStringLiteral("Secret Service"); }
    void read(const QString &account, Done done) override;
    void write(const QString &account, const QString &password, Done done) override;
    void remove(const QString &account, Done done) override;

    // The session bus came back: calls from now on go over `bus`.
    void rebind(QDBusConnection bus);

    // What an account's entry is filed under (`withType`: as written and read;
    // without it, every entry of the account, as removed).
    static QMap<QString, QString> attributes(const QString &account, bool withType = true);

private:
    struct Operation;
    using OperationPtr = std::shared_ptr<Operation>;
    using Paths = QList<QDBusObjectPath>;

    void run(const OperationPtr &op);
    void runRead(const OperationPtr &op);
    void runWrite(const OperationPtr &op);
    void runRemove(const OperationPtr &op);

    void call(const OperationPtr &op, const QString &path, const QString &interface, const QString &method,
              const QVariantList &arguments, std::function<void(const QDBusMessage &)> next);
    void search(const OperationPtr &op, bool withType, std::function<void(const Paths &)> next);
    void unlock(const OperationPtr &op, const Paths &objects, std::function<void(const Paths &)> next);
    void prompt(const OperationPtr &op, const QDBusObjectPath &path, std::function<void(const QDBusVariant &)> next);
    void withSession(const OperationPtr &op, std::function<void(const QString &)> next);
    void withDefaultCollection(const OperationPtr &op, std::function<void(const QDBusObjectPath &)> next);
    void deleteItems(const OperationPtr &op, Paths items);

    void fail(const OperationPtr &op, const QDBusError &error);
    void finish(const OperationPtr &op, Result result);

    struct SessionWaiter
    {
        OperationPtr op;
        std::function<void(const QString &)> next;
    };

    QDBusConnection m_bus;
    int m_generation = 0; // counts rebinds: a session opened on an older connection is not kept
    QString m_session; // the open session's object path, "" until opened
    bool m_openingSession = false;
    std::vector<SessionWaiter> m_sessionWaiters;
};

} // namespace tarnwell::platform
