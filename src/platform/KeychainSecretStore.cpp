#include "KeychainSecretStore.h"

#include <qt6keychain/keychain.h>

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

KeychainSecretStore::~KeychainSecretStore() = default;

void KeychainSecretStore::read(const QString &account, Done done)
{
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
    auto *job = prepare<QKeychain::WritePasswordJob>(account, this);
    job->setTextData(password);
    connect(job, &QKeychain::Job::finished, this,
            [done = std::move(done)](QKeychain::Job *finished) { done(resultOf(*finished)); });
    job->start();
}

void KeychainSecretStore::remove(const QString &account, Done done)
{
    auto *job = prepare<QKeychain::DeletePasswordJob>(account, this);
    connect(job, &QKeychain::Job::finished, this,
            [done = std::move(done)](QKeychain::Job *finished) { done(resultOf(*finished)); });
    job->start();
}

} // namespace tarnwell::platform
