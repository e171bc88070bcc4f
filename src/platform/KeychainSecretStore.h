#pragma once

#include "kit/SecretStore.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace tarnwell::platform {

// Passwords in the desktop's keyring through QtKeychain: the Secret Service
// (GNOME Keyring, KeePassXC, ...) or KWallet. The insecure fallback to a
// file is off: without a keyring every call answers `unavailable`.
class KeychainSecretStore : public QObject, public SecretStore
{
    Q_OBJECT
public:
    struct Constants
    {
        // The service name entries are filed under in the keyring.
        static constexpr const char *service = "org.tarnwell.Tarnwell";
    };

    explicit KeychainSecretStore(QString backend, QObject *parent = nullptr);
    ~KeychainSecretStore() override;

    QString name() const override { return m_backend; }
    void read(const QString &account, Done done) override;
    void write(const QString &account, const QString &password, Done done) override;
    void remove(const QString &account, Done done) override;

    // Which keyring answers on this session bus ("" for none).
    static QString reachableBackend(const QDBusConnection &bus);

private:
    void keepRunningWhenTheBusGoes();

    QString m_backend;
    void *m_gioBus = nullptr; // GDBusConnection: the session bus connection libsecret shares
};

// The keyring if the session has one, logged either way; none means sync stays off.
std::unique_ptr<SecretStore> chooseSecretStore(const QDBusConnection &bus, QObject *parent = nullptr);

} // namespace tarnwell::platform
