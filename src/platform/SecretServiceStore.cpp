#include "SecretServiceStore.h"

#include "kit/Logging.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QPointer>
#include <QTimer>

#include <optional>
#include <utility>

namespace tarnwell::platform {

namespace {

const QString servicePath = QStringLiteral("/org/freedesktop/secrets");
const QString serviceInterface = QStringLiteral("org.freedesktop.Secret.Service");
const QString collectionInterface = QStringLiteral("org.freedesktop.Secret.Collection");
const QString itemInterface = QStringLiteral("org.freedesktop.Secret.Item");
const QString promptInterface = QStringLiteral("org.freedesktop.Secret.Prompt");
const QString noSessionError = QStringLiteral("org.freedesktop.Secret.Error.NoSession");

using Status = SecretStore::Result::Status;

SecretStore::Result resultOf(Status status, QString detail)
{
    SecretStore::Result result;
    result.status = status;
    result.detail = std::move(detail);
    return result;
}

// Nobody to ask → unavailable; a locked keyring → denied; anything else failed.
Status statusOf(const QDBusError &error)
{
    const QString name = error.name();
    if (name == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
        name == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner") ||
        name == QLatin1String("org.freedesktop.DBus.Error.NoServer") ||
        name == QLatin1String("org.freedesktop.DBus.Error.Disconnected") ||
        name.startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn.")))
        return Status::unavailable;
    if (name == QLatin1String("org.freedesktop.Secret.Error.IsLocked"))
        return Status::denied;
    return Status::failed;
}

QList<QDBusObjectPath> pathsIn(const QVariant &value)
{
    return qdbus_cast<QList<QDBusObjectPath>>(value);
}

QDBusObjectPath pathIn(const QVariant &value)
{
    return qdbus_cast<QDBusObjectPath>(value);
}

// "/" stands for no object: no prompt needed, no collection there.
bool isNone(const QDBusObjectPath &path)
{
    return path.path().isEmpty() || path.path() == QLatin1String("/");
}

// The first secret of a GetSecrets answer, a{o(oayays)}: item → (session,
// parameters, value, content type).
std::optional<QByteArray> firstSecret(const QDBusMessage &reply)
{
    // Every begin has its end: each one makes a reader that its end deletes.
    const auto secrets = reply.arguments().value(0).value<QDBusArgument>();
    std::optional<QByteArray> value;
    secrets.beginMap();
    if (!secrets.atEnd()) {
        QDBusObjectPath item;
        QDBusObjectPath session;
        QByteArray parameters;
        QByteArray secret;
        QString contentType;
        secrets.beginMapEntry();
        secrets >> item;
        secrets.beginStructure();
        secrets >> session >> parameters >> secret >> contentType;
        secrets.endStructure();
        secrets.endMapEntry();
        value = secret;
    }
    secrets.endMap();
    return value;
}

// Waits for one prompt's Completed signal.
class PromptWaiter : public QObject
{
    Q_OBJECT
public:
    std::function<void(bool dismissed, const QDBusVariant &result)> completed;

public Q_SLOTS:
    void onCompleted(bool dismissed, const QDBusVariant &result)
    {
        if (auto done = std::exchange(completed, nullptr))
            done(dismissed, result);
    }
};

} // namespace

struct SecretServiceStore::Operation
{
    enum class Kind { read, write, remove };
    Operation(Kind what, QString forAccount, QString secret, Done answer)
        : kind(what)
        , account(std::move(forAccount))
        , password(std::move(secret))
        , done(std::move(answer))
    {
    }
    Kind kind;
    QString account;
    QString password;
    Done done;
    bool retried = false; // after the service forgot our session
    bool finished = false;
    QPointer<PromptWaiter> promptWaiter;
};

SecretServiceStore::SecretServiceStore(QDBusConnection bus, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
{
    qDBusRegisterMetaType<QMap<QString, QString>>();
}

SecretServiceStore::~SecretServiceStore() = default;

QMap<QString, QString> SecretServiceStore::attributes(const QString &account, bool withType)
{
    QMap<QString, QString> attributes{{QStringLiteral("user"), account},
                                      {QStringLiteral("server"), QLatin1String(Constants::application)}};
    if (withType)
        attributes.insert(QStringLiteral("type"), QStringLiteral("plaintext"));
    return attributes;
}

void SecretServiceStore::read(const QString &account, Done done)
{
    run(std::make_shared<Operation>(Operation::Kind::read, account, QString(), std::move(done)));
}

void SecretServiceStore::write(const QString &account, const QString &password, Done done)
{
    run(std::make_shared<Operation>(Operation::Kind::write, account, password, std::move(done)));
}

void SecretServiceStore::remove(const QString &account, Done done)
{
    run(std::make_shared<Operation>(Operation::Kind::remove, account, QString(), std::move(done)));
}

void SecretServiceStore::rebind(QDBusConnection bus)
{
    m_bus = std::move(bus);
    ++m_generation;
    m_session.clear();
    // A session being opened on the old connection is opened on the new one instead.
    m_openingSession = false;
    for (SessionWaiter &waiter : std::exchange(m_sessionWaiters, {}))
        withSession(waiter.op, std::move(waiter.next));
}

void SecretServiceStore::run(const OperationPtr &op)
{
    switch (op->kind) {
    case Operation::Kind::read:
        return runRead(op);
    case Operation::Kind::write:
        return runWrite(op);
    case Operation::Kind::remove:
        return runRemove(op);
    }
}

void SecretServiceStore::runRead(const OperationPtr &op)
{
    search(op, true, [this, op](const Paths &items) {
        if (items.isEmpty())
            return finish(op, resultOf(Status::notFound, QStringLiteral("No entry in the keyring")));
        withSession(op, [this, op, item = items.first()](const QString &session) {
            call(op, servicePath, serviceInterface, QStringLiteral("GetSecrets"),
                 {QVariant::fromValue(Paths{item}), QVariant::fromValue(QDBusObjectPath(session))},
                 [this, op](const QDBusMessage &reply) {
                     if (reply.signature() != QLatin1String("a{o(oayays)}"))
                         return finish(
                             op,
                             resultOf(Status::failed,
                                      QStringLiteral("Unexpected answer to GetSecrets: %1").arg(reply.signature())));
                     const std::optional<QByteArray> secret = firstSecret(reply);
                     if (!secret)
                         return finish(op, resultOf(Status::denied, QStringLiteral("The keyring gave out no secret")));
                     Result result;
                     result.password = QString::fromUtf8(*secret);
                     finish(op, std::move(result));
                 });
        });
    });
}

void SecretServiceStore::runWrite(const OperationPtr &op)
{
    withDefaultCollection(op, [this, op](const QDBusObjectPath &collection) {
        unlock(op, {collection}, [this, op, collection](const Paths &) {
            withSession(op, [this, op, collection](const QString &session) {
                // Searches leave the schema out, as QtKeychain's did; entries carry it.
                QMap<QString, QString> filed = attributes(op->account);
                filed.insert(QStringLiteral("xdg:schema"), QLatin1String(Constants::schema));
                const QVariantMap properties{
                    {QStringLiteral("org.freedesktop.Secret.Item.Label"), QLatin1String(Constants::application)},
                    {QStringLiteral("org.freedesktop.Secret.Item.Attributes"), QVariant::fromValue(filed)}};
                QDBusArgument secret;
                secret.beginStructure();
                secret << QDBusObjectPath(session) << QByteArray() << op->password.toUtf8()
                       << QStringLiteral("text/plain");
                secret.endStructure();
                call(op, collection.path(), collectionInterface, QStringLiteral("CreateItem"),
                     {properties, QVariant::fromValue(secret), true}, [this, op](const QDBusMessage &reply) {
                         prompt(op, pathIn(reply.arguments().value(1)),
                                [this, op](const QDBusVariant &) { finish(op, Result()); });
                     });
            });
        });
    });
}

void SecretServiceStore::runRemove(const OperationPtr &op)
{
    // Nothing stored is what removing wants: that answers ok.
    search(op, false, [this, op](const Paths &items) { deleteItems(op, items); });
}

void SecretServiceStore::deleteItems(const OperationPtr &op, Paths items)
{
    if (items.isEmpty())
        return finish(op, Result());
    const QDBusObjectPath item = items.takeFirst();
    call(op, item.path(), itemInterface, QStringLiteral("Delete"), {},
         [this, op, rest = std::move(items)](const QDBusMessage &reply) {
             prompt(op, pathIn(reply.arguments().value(0)),
                    [this, op, rest](const QDBusVariant &) { deleteItems(op, rest); });
         });
}

// The account's entries, unlocked: those the service has unlocked, else the
// locked ones once unlocked (through a prompt if the service asks for one).
void SecretServiceStore::search(const OperationPtr &op, bool withType, std::function<void(const Paths &)> next)
{
    call(op, servicePath, serviceInterface, QStringLiteral("SearchItems"),
         {QVariant::fromValue(attributes(op->account, withType))},
         [this, op, next = std::move(next)](const QDBusMessage &reply) {
             const Paths unlocked = pathsIn(reply.arguments().value(0));
             const Paths locked = pathsIn(reply.arguments().value(1));
             if (!unlocked.isEmpty() || locked.isEmpty())
                 return next(unlocked);
             unlock(op, locked, next);
         });
}

void SecretServiceStore::unlock(const OperationPtr &op, const Paths &objects, std::function<void(const Paths &)> next)
{
    call(op, servicePath, serviceInterface, QStringLiteral("Unlock"), {QVariant::fromValue(objects)},
         [this, op, next = std::move(next)](const QDBusMessage &reply) {
             const QDBusObjectPath promptPath = pathIn(reply.arguments().value(1));
             if (isNone(promptPath))
                 return next(pathsIn(reply.arguments().value(0)));
             prompt(op, promptPath, [this, op, next](const QDBusVariant &result) {
                 const Paths unlocked = pathsIn(result.variant());
                 if (unlocked.isEmpty())
                     return finish(op, resultOf(Status::denied, QStringLiteral("The keyring stayed locked")));
                 next(unlocked);
             });
         });
}

void SecretServiceStore::prompt(const OperationPtr &op, const QDBusObjectPath &path,
                                std::function<void(const QDBusVariant &)> next)
{
    if (isNone(path))
        return next(QDBusVariant());
    // (A receiver that is deleted leaves the bus's signal table by itself.)
    auto *waiter = new PromptWaiter;
    waiter->setParent(this);
    op->promptWaiter = waiter;
    waiter->completed = [this, op, waiter, next = std::move(next)](bool dismissed, const QDBusVariant &result) {
        waiter->deleteLater();
        if (op->finished)
            return;
        if (dismissed)
            return finish(op, resultOf(Status::denied, QStringLiteral("The keyring's prompt was dismissed")));
        next(result);
    };
    if (!m_bus.connect(QLatin1String(Constants::service), path.path(), promptInterface, QStringLiteral("Completed"),
                       waiter, SLOT(onCompleted(bool, QDBusVariant))))
        return fail(op, m_bus.lastError());
    QTimer::singleShot(Constants::promptWait, waiter, [this, op] {
        finish(op, resultOf(Status::failed, QStringLiteral("The keyring's prompt got no answer")));
    });
    // The window the prompt belongs to: none of ours (""), the prompt stands alone.
    call(op, path.path(), promptInterface, QStringLiteral("Prompt"), {QString()}, [](const QDBusMessage &) {});
}

// The collection new entries go to: the service's default, made if there is none.
void SecretServiceStore::withDefaultCollection(const OperationPtr &op,
                                               std::function<void(const QDBusObjectPath &)> next)
{
    call(op, servicePath, serviceInterface, QStringLiteral("ReadAlias"), {QStringLiteral("default")},
         [this, op, next = std::move(next)](const QDBusMessage &reply) {
             const QDBusObjectPath collection = pathIn(reply.arguments().value(0));
             if (!isNone(collection))
                 return next(collection);
             //: Name of the keyring Tarnwell makes when the desktop has none yet (as the desktop's own login keyring)
             //% "Login"
             const QVariantMap properties{
                 {QStringLiteral("org.freedesktop.Secret.Collection.Label"), qtTrId("sync.keyring.defaultCollection")}};
             call(op, servicePath, serviceInterface, QStringLiteral("CreateCollection"),
                  {properties, QStringLiteral("default")}, [this, op, next](const QDBusMessage &created) {
                      const QDBusObjectPath made = pathIn(created.arguments().value(0));
                      if (!isNone(made))
                          return next(made);
                      prompt(op, pathIn(created.arguments().value(1)), [this, op, next](const QDBusVariant &result) {
                          const QDBusObjectPath prompted = pathIn(result.variant());
                          if (isNone(prompted))
                              return finish(op, resultOf(Status::denied, QStringLiteral("No keyring was made")));
                          next(prompted);
                      });
                  });
         });
}

// The session is per connection: opened at the first call that needs one,
// shared by the calls that wait for it meanwhile.
void SecretServiceStore::withSession(const OperationPtr &op, std::function<void(const QString &)> next)
{
    if (!m_session.isEmpty())
        return next(m_session);
    m_sessionWaiters.push_back({op, std::move(next)});
    if (m_openingSession)
        return;
    m_openingSession = true;
    const int generation = m_generation;
    const QDBusMessage message = QDBusMessage::createMethodCall(QLatin1String(Constants::service), servicePath,
                                                                serviceInterface, QStringLiteral("OpenSession"))
        << QStringLiteral("plain") << QVariant::fromValue(QDBusVariant(QString()));
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, generation] {
        watcher->deleteLater();
        if (generation != m_generation)
            return; // answered on a connection given up since
        m_openingSession = false;
        const std::vector<SessionWaiter> waiters = std::exchange(m_sessionWaiters, {});
        const QDBusMessage reply = watcher->reply();
        if (reply.type() == QDBusMessage::ErrorMessage) {
            for (const SessionWaiter &waiter : waiters)
                fail(waiter.op, QDBusError(reply));
            return;
        }
        m_session = pathIn(reply.arguments().value(1)).path();
        for (const SessionWaiter &waiter : waiters)
            waiter.next(m_session);
    });
}

void SecretServiceStore::call(const OperationPtr &op, const QString &path, const QString &interface,
                              const QString &method, const QVariantList &arguments,
                              std::function<void(const QDBusMessage &)> next)
{
    QDBusMessage message = QDBusMessage::createMethodCall(QLatin1String(Constants::service), path, interface, method);
    message.setArguments(arguments);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, op, watcher, next = std::move(next)] {
        watcher->deleteLater();
        if (op->finished)
            return;
        const QDBusMessage reply = watcher->reply();
        if (reply.type() == QDBusMessage::ErrorMessage)
            return fail(op, QDBusError(reply));
        next(reply);
    });
}

void SecretServiceStore::fail(const OperationPtr &op, const QDBusError &error)
{
    if (op->finished)
        return;
    // The service forgot our session (it restarted): open a new one, once.
    if (error.name() == noSessionError && !op->retried) {
        op->retried = true;
        m_session.clear();
        qCInfo(lcServices).noquote() << QStringLiteral("The keyring forgot its session; asking again");
        return run(op);
    }
    finish(op, resultOf(statusOf(error), QStringLiteral("%1: %2").arg(error.name(), error.message())));
}

void SecretServiceStore::finish(const OperationPtr &op, Result result)
{
    if (std::exchange(op->finished, true))
        return;
    if (op->promptWaiter) {
        op->promptWaiter->completed = nullptr;
        op->promptWaiter->deleteLater();
    }
    if (op->done)
        std::exchange(op->done, nullptr)(result);
}

} // namespace tarnwell::platform

#include "SecretServiceStore.moc"
