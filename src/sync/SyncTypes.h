#pragma once

#include "sync/CalDavClient.h"

#include <QDateTime>
#include <QString>
#include <QUrl>

#include <functional>

namespace tarnwell::sync {

// The account a store syncs with: the address the user typed, the name the
// server knows them by, and the one collection they chose. The password is
// never part of it: it lives in the desktop's secret service.
struct SyncAccount
{
    QUrl server;
    QString user;
    QUrl collection;

    bool isComplete() const { return server.isValid() && !user.isEmpty() && collection.isValid(); }
};

// What one sync pass did.
struct SyncOutcome
{
    CalDavStatus status;
    int pulled = 0; // tasks created or changed here from the server's copies
    int pushed = 0; // resources written to the server
    int removed = 0; // deletions carried over, in either direction
    QDateTime finishedAt;
};

// One sync pass over an account: pull what the server changed, merge it with
// what changed here, push the result. A pass runs on the main loop without
// blocking it and answers exactly once through `done`, unless it is
// cancelled. The sync service decides when passes run; the engine decides
// what a pass does.
class SyncPass
{
public:
    using Done = std::function<void(const SyncOutcome &)>;

    virtual ~SyncPass() = default;

    virtual void run(const SyncAccount &account, const QString &password, Done done) = 0;

    // Abandons a running pass at once; its `done` is not called. What the
    // pass already wrote to the store stays consistent: the next pass picks
    // up where this one stopped.
    virtual void cancel() = 0;

    // Sync is turned off: forgets the collection's token and what was known
    // of each resource, so nothing is queued for a server any more. With
    // `removeLocalCopies` the tasks that came from or went to the server are
    // deleted here too (never on the server); otherwise they stay as local
    // tasks.
    virtual void forget(bool removeLocalCopies) = 0;

    // True while the store announces changes the pass itself is saving: the
    // server's copies taken in. They are not changes made here, and call for
    // no pass of their own.
    virtual bool isSavingServerChanges() const { return false; }
};

} // namespace tarnwell::sync
