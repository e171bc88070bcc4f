#pragma once

#include "kit/SecretStore.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace tarnwell::platform {

// Which keyring answers on this session bus: "Secret Service" when
// org.freedesktop.secrets is registered or can be started, else "KWallet"
// when kwalletd runs, else "".
QString reachableKeyring(const QDBusConnection &bus);

// The keyring for the sync password, logged either way: our own Secret
// Service client over `bus` (a `SecretServiceStore`, to be rebound when the
// bus comes back), QtKeychain for KWallet, or none, and sync stays off.
std::unique_ptr<SecretStore> chooseSecretStore(const QDBusConnection &bus, QObject *parent = nullptr);

} // namespace tarnwell::platform
