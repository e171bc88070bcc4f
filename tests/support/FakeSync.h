// Stand-ins for the sync engine's pass and the desktop's secret service.
#pragma once

#include "kit/SecretStore.h"
#include "sync/SyncTypes.h"

#include <QHash>
#include <QStringList>

// A pass that holds on to its `done` until the test answers it.
struct FakePass : tarnwell::sync::SyncPass
{
    struct Run
    {
        tarnwell::sync::SyncAccount account;
        QString password;
    };
    QList<Run> runs;
    Done pending;
    int cancels = 0;
    QList<bool> forgotten; // removeLocalCopies of each forget()
    // Answer each pass at once with this, instead of holding it.
    std::optional<tarnwell::sync::CalDavError> answerAtOnce;

    void run(const tarnwell::sync::SyncAccount &account, const QString &password, Done done) override
    {
        runs.append({account, password});
        if (answerAtOnce)
            done(outcome(*answerAtOnce));
        else
            pending = std::move(done);
    }
    void cancel() override
    {
        ++cancels;
        pending = nullptr;
    }
    void forget(bool removeLocalCopies) override { forgotten.append(removeLocalCopies); }

    static tarnwell::sync::SyncOutcome outcome(tarnwell::sync::CalDavError error, int pulled = 0, int pushed = 0)
    {
        tarnwell::sync::SyncOutcome o;
        o.status.error = error;
        o.pulled = pulled;
        o.pushed = pushed;
        return o;
    }
    bool running() const { return bool(pending); }
    // Ends the held pass.
    void answer(tarnwell::sync::CalDavError error = tarnwell::sync::CalDavError::none, int pulled = 0, int pushed = 0)
    {
        Done done = std::exchange(pending, nullptr);
        if (done)
            done(outcome(error, pulled, pushed));
    }
};

// Passwords in memory, answered at once.
struct FakeSecrets : tarnwell::SecretStore
{
    QHash<QString, QString> passwords;
    Result::Status failWith = Result::Status::ok;

    QString name() const override { return QStringLiteral("test keyring"); }
    void read(const QString &account, Done done) override
    {
        Result r;
        r.status = failWith != Result::Status::ok ? failWith
            : passwords.contains(account)         ? Result::Status::ok
                                                  : Result::Status::notFound;
        r.password = passwords.value(account);
        done(r);
    }
    void write(const QString &account, const QString &password, Done done) override
    {
        Result r;
        r.status = failWith;
        if (r.ok())
            passwords.insert(account, password);
        done(r);
    }
    void remove(const QString &account, Done done) override
    {
        passwords.remove(account);
        done(Result());
    }
};
