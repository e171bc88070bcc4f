#pragma once

#include "kit/SecretStore.h"

#include <QObject>

namespace tarnwell::platform {

// Passwords through QtKeychain, for sessions whose keyring is KWallet
// without the Secret Service (QtKeychain's KWallet back end speaks Qt's
// D-Bus). The insecure fallback to a file is off: without a keyring every
// call answers `unavailable`. Where the Secret Service runs,
// `SecretServiceStore` is used instead; it files entries the same way
// QtKeychain's Secret Service back end did.
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

private:
    QString m_backend;
};

} // namespace tarnwell::platform
