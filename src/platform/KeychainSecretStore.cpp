#include "KeychainSecretStore.h"

#include "kit/Logging.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QLibrary>
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

namespace {

// GIO is loaded with libsecret at the first keyring job, not at start: linked
// into the agent it would cost an idle agent about a megabyte for nothing.
struct Gio
{
    decltype(&g_bus_get_sync) busGetSync = nullptr;
    decltype(&g_dbus_connection_set_exit_on_close) setExitOnClose = nullptr;
    decltype(&g_object_unref) objectUnref = nullptr;
    decltype(&g_error_free) errorFree = nullptr;

    static const Gio &get()
    {
        static const Gio gio = [] {
            Gio loaded;
            QLibrary library(QStringLiteral("gio-2.0"), 0);
            if (!library.load())
                return loaded;
            // (The library stays loaded: QLibrary does not unload on destruction.)
            loaded.busGetSync = reinterpret_cast<decltype(busGetSync)>(library.resolve("g_bus_get_sync"));
            loaded.setExitOnClose =
                reinterpret_cast<decltype(setExitOnClose)>(library.resolve("g_dbus_connection_set_exit_on_close"));
            loaded.objectUnref = reinterpret_cast<decltype(objectUnref)>(library.resolve("g_object_unref"));
            loaded.errorFree = reinterpret_cast<decltype(errorFree)>(library.resolve("g_error_free"));
            return loaded;
        }();
        return gio;
    }
    bool usable() const { return busGetSync && setExitOnClose && objectUnref && errorFree; }
};

} // namespace

KeychainSecretStore::~KeychainSecretStore()
{
    // A held connection means GIO was loaded whole.
    if (m_gioBus && Gio::get().objectUnref)
        Gio::get().objectUnref(m_gioBus);
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
    const Gio &gio = Gio::get();
    if (!gio.usable()) {
        qCWarning(lcServices).noquote() << QStringLiteral(
            "GIO could not be loaded; a session bus restart will end Tarnwell once the keyring was used");
        return;
    }
    GError *error = nullptr;
    GDBusConnection *bus = gio.busGetSync(G_BUS_TYPE_SESSION, nullptr, &error);
    if (!bus) {
        qCWarning(lcServices).noquote() << QStringLiteral("The keyring's session bus connection failed: %1")
                                               .arg(QString::fromUtf8(error ? error->message : "unknown error"));
        if (error)
            gio.errorFree(error);
        return;
    }
    gio.setExitOnClose(bus, FALSE);
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
