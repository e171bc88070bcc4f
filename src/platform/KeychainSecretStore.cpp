#include "KeychainSecretStore.h"

#include "kit/Logging.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <qt6keychain/keychain.h>

// GIO names a struct member `signals`, which Qt defines as a keyword.
#pragma push_macro("signals")
#undef signals
#include <gio/gio.h>
#pragma pop_macro("signals")

namespace tarnwell::platform {

namespace {

SecretStore::Result resultOf(const QKeychain::Job &job)
{
    SecretStore::Result result;
    result.detail = job.errorString();
    switch (job.error()) {
    case QKeychain::NoError:
        result.status = SecretStore::Result::Status::ok;
        break;
    case QKeychain::EntryNotFound:
        result.status = SecretStore::Result::Status::notFound;
        break;
    case QKeychain::AccessDeniedByUser:
    case QKeychain::AccessDenied:
        result.status = SecretStore::Result::Status::denied;
        break;
    case QKeychain::NoBackendAvailable:
    case QKeychain::NotImplemented:
        result.status = SecretStore::Result::Status::unavailable;
        break;
    case QKeychain::CouldNotDeleteEntry:
    case QKeychain::OtherError:
        result.status = SecretStore::Result::Status::failed;
        break;
    }
    return result;
}

template<typename JobType>
JobType *prepare(const QString &account, QObject *parent)
{
    auto *job = new JobType(QLatin1String(KeychainSecretStore::Constants::service), parent);
    job->setAutoDelete(true);
    job->setInsecureFallback(false);
    job->setKey(account);
    return job;
}

} // namespace

KeychainSecretStore::KeychainSecretStore(QString backend, QObject *parent)
    : QObject(parent)
    , m_backend(std::move(backend))
{
}

KeychainSecretStore::~KeychainSecretStore()
{
    if (m_gioBus)
        g_object_unref(m_gioBus);
}

// QtKeychain reaches the Secret Service through libsecret, which talks over
// GIO's shared session bus connection. GIO makes that connection end the
// program (SIGTERM) when the bus daemon goes away, which would quit the agent
// at a bus restart it otherwise survives. The shared connection is taken
// first and told not to; holding it keeps it the one libsecret is given.
void KeychainSecretStore::keepRunningWhenTheBusGoes()
{
    if (m_gioBus || m_backend != QLatin1String("Secret Service"))
        return;
    GError *error = nullptr;
    GDBusConnection *bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    if (!bus) {
        qCWarning(lcServices).noquote() << QStringLiteral("The keyring's session bus connection failed: %1")
                                               .arg(QString::fromUtf8(error ? error->message : "unknown error"));
        g_clear_error(&error);
        return;
    }
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    m_gioBus = bus;
}

void KeychainSecretStore::read(const QString &account, Done done)
{
    keepRunningWhenTheBusGoes();
    auto *job = prepare<QKeychain::ReadPasswordJob>(account, this);
    connect(job, &QKeychain::Job::finished, this, [done = std::move(done)](QKeychain::Job *finished) {
        SecretStore::Result result = resultOf(*finished);
        if (result.ok())
            result.password = static_cast<QKeychain::ReadPasswordJob *>(finished)->textData();
        done(result);
    });
    job->start();
}

void KeychainSecretStore::write(const QString &account, const QString &password, Done done)
{
    keepRunningWhenTheBusGoes();
    auto *job = prepare<QKeychain::WritePasswordJob>(account, this);
    job->setTextData(password);
    connect(job, &QKeychain::Job::finished, this,
            [done = std::move(done)](QKeychain::Job *finished) { done(resultOf(*finished)); });
    job->start();
}

void KeychainSecretStore::remove(const QString &account, Done done)
{
    keepRunningWhenTheBusGoes();
    auto *job = prepare<QKeychain::DeletePasswordJob>(account, this);
    connect(job, &QKeychain::Job::finished, this,
            [done = std::move(done)](QKeychain::Job *finished) { done(resultOf(*finished)); });
    job->start();
}

QString KeychainSecretStore::reachableBackend(const QDBusConnection &bus)
{
    QDBusConnectionInterface *interface = bus.isConnected() ? bus.interface() : nullptr;
    if (!interface)
        return {};
    const auto registered = [interface](const char *name) {
        const QDBusReply<bool> reply = interface->isServiceRegistered(QLatin1String(name));
        return reply.isValid() && reply.value();
    };
    if (registered("org.freedesktop.secrets"))
        return QStringLiteral("Secret Service");
    const QDBusReply<QStringList> activatable = interface->activatableServiceNames();
    if (activatable.isValid() && activatable.value().contains(QLatin1String("org.freedesktop.secrets")))
        return QStringLiteral("Secret Service");
    if (registered("org.kde.kwalletd6") || registered("org.kde.kwalletd5"))
        return QStringLiteral("KWallet");
    return {};
}

std::unique_ptr<SecretStore> chooseSecretStore(const QDBusConnection &bus, QObject *parent)
{
    const QString backend = KeychainSecretStore::reachableBackend(bus);
    if (backend.isEmpty()) {
        qCInfo(lcServices).noquote() << QStringLiteral(
            "No keyring on the session bus (no Secret Service, no KWallet); sync stays off");
        return nullptr;
    }
    qCInfo(lcServices).noquote() << QStringLiteral("Sync passwords in the keyring through %1").arg(backend);
    return std::make_unique<KeychainSecretStore>(backend, parent);
}

} // namespace tarnwell::platform
