#pragma once

#include <QString>

#include <functional>

namespace tarnwell {

// Passwords kept by the desktop (the Secret Service), one per account name.
// Every call returns at once and answers through its callback on the main
// thread. There is never a fallback to a file: a store that cannot reach its
// service says so.
class SecretStore
{
public:
    struct Result
    {
        enum class Status {
            ok,
            notFound, // nothing is stored under this account
            denied, // the keyring stayed locked or the user refused
            unavailable, // no secret service answered
            failed,
        };
        Status status = Status::ok;
        QString password; // read: what was stored
        QString detail; // for the log
        bool ok() const { return status == Status::ok; }
    };
    using Done = std::function<void(const Result &)>;

    virtual ~SecretStore() = default;

    // What keeps the passwords, for the log and the settings ("Secret Service").
    virtual QString name() const = 0;
    virtual void read(const QString &account, Done done) = 0;
    virtual void write(const QString &account, const QString &password, Done done) = 0;
    virtual void remove(const QString &account, Done done) = 0;
};

} // namespace tarnwell
