#include "SecretStoreChooser.h"

#include "KeychainSecretStore.h"
#include "SecretServiceStore.h"
#include "kit/Logging.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace tarnwell::platform {

QString reachableKeyring(const QDBusConnection &bus)
{
    QDBusConnectionInterface *interface = bus.isConnected() ? bus.interface() : nullptr;
    if (!interface)
        return {};
    const auto registered = [interface](const char *name) {
        const QDBusReply<bool> reply = interface->isServiceRegistered(QLatin1String(name));
        return reply.isValid() && reply.value();
    };
    const QLatin1String secrets(SecretServiceStore::Constants::service);
    if (registered(SecretServiceStore::Constants::service))
        return QStringLiteral("Secret Service");
    const QDBusReply<QStringList> activatable = interface->activatableServiceNames();
    if (activatable.isValid() && activatable.value().contains(secrets))
        return QStringLiteral("Secret Service");
    if (registered("org.kde.kwalletd6") || registered("org.kde.kwalletd5"))
        return QStringLiteral("KWallet");
    return {};
}

std::unique_ptr<SecretStore> chooseSecretStore(const QDBusConnection &bus, QObject *parent)
{
    const QString keyring = reachableKeyring(bus);
    if (keyring.isEmpty()) {
        qCInfo(lcServices).noquote() << QStringLiteral(
            "No keyring on the session bus (no Secret Service, no KWallet); sync stays off");
        return nullptr;
    }
    if (keyring == QLatin1String("KWallet")) {
        qCInfo(lcServices).noquote() << QStringLiteral("Sync passwords in KWallet through QtKeychain");
        return std::make_unique<KeychainSecretStore>(keyring, parent);
    }
    qCInfo(lcServices).noquote() << QStringLiteral("Sync passwords in the keyring through the Secret Service");
    return std::make_unique<SecretServiceStore>(bus, parent);
}

} // namespace tarnwell::platform
